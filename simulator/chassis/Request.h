#pragma once

#include <QByteArray>

#include <optional>

namespace sim {

/// One request of a client, "address:mnemonic" or "address:mnemonic:data". The data may contain colons.
struct Request
{
    QByteArray address;
    QByteArray mnemonic;
    std::optional<QByteArray> data; ///< nothing: a query

    /// Nothing if the text has no colon.
    [[nodiscard]] static std::optional<Request> read(const QByteArray &text);
};

} // namespace sim
