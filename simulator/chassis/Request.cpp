#include "simulator/chassis/Request.h"

namespace sim {

std::optional<Request> Request::read(const QByteArray &text)
{
    const qsizetype first = text.indexOf(':');
    if (first < 0)
        return std::nullopt;
    const qsizetype second = text.indexOf(':', first + 1);
    if (second < 0)
        return Request{ text.first(first), text.sliced(first + 1), std::nullopt };
    return Request{ text.first(first), text.sliced(first + 1, second - first - 1), text.sliced(second + 1) };
}

} // namespace sim
