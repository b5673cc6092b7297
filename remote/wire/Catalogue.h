#pragma once

#include <QByteArray>

#include <span>
#include <string_view>

/// The mnemonics of the remote protocol, by kind of channel.
namespace remote::Catalogue {

/// The mnemonics of one kind of channel.
struct Rows
{
    /// Settings, in the order in which they are restored: those that others depend on come first.
    std::span<const std::string_view> settings;
    /// Read-only: lists, versions, status.
    std::span<const std::string_view> info;
};

/// The rows for a channel address such as "R1" or "TM1-2"; empty rows if no kind of channel has such an address.
[[nodiscard]] Rows of(const QByteArray &address);
[[nodiscard]] bool isSetting(const QByteArray &address, const QByteArray &mnemonic);
/// Mnemonics that identify a chassis, queried on "U0".
[[nodiscard]] std::span<const std::string_view> identity();
/// Whether @p mnemonic of a TMoIP card takes effect only when the network settings are committed.
[[nodiscard]] bool needsCommit(const QByteArray &address, const QByteArray &mnemonic);

[[nodiscard]] QByteArray key(const QByteArray &address, std::string_view mnemonic);

} // namespace remote::Catalogue
