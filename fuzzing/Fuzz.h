#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What the fuzz targets share.
namespace Fuzz {

/// Ends the run with a finding unless @p holds.
inline void require(bool holds, const char *promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}

inline QByteArray bytes(const std::uint8_t *data, std::size_t size)
{
    return { reinterpret_cast<const char *>(data), static_cast<qsizetype>(size) };
}

/// Takes the first @p size bytes off @p input; missing ones are zero.
inline QByteArray take(QByteArrayView &input, qsizetype size)
{
    const QByteArrayView head = input.first(qMin(size, input.size()));
    input = input.sliced(head.size());
    return head.toByteArray().leftJustified(size, '\0');
}

/// Calls @p feed with the pieces of @p stream whose sizes @p cuts names, over and over.
template <typename Feed>
void feedInPieces(QByteArrayView stream, const QByteArray &cuts, Feed feed)
{
    for (qsizetype i = 0; !stream.isEmpty(); ++i) {
        const auto cut = static_cast<std::uint8_t>(cuts[i % cuts.size()]);
        const qsizetype size = qMin<qsizetype>(cut == 0 ? 1 : cut, stream.size());
        feed(stream.first(size));
        stream = stream.sliced(size);
    }
}

} // namespace Fuzz
