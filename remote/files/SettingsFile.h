#pragma once

#include "remote/wire/SettingsReader.h"

#include <QDateTime>

namespace remote {

/// The settings of a chassis as a file: what `dump` writes and `apply` reads.
class SettingsFile
{
public:
    /// The text of the file: identity and every known value of @p channels, in catalogue order.
    [[nodiscard]] static QByteArray text(const QByteArrayList &channels, const SettingsReader::Values &values,
                                         const QDateTime &taken);
    /// The keys whose values text() needs for @p channels.
    [[nodiscard]] static QByteArrayList keys(const QByteArrayList &channels);

    /// Reads the settings of a file, by key; none of a faulty file.
    /// @return what is wrong, with channel and mnemonic; empty if all was read
    [[nodiscard]] QString read(const QString &path);
    [[nodiscard]] const SettingsReader::Values &settings() const { return m_settings; }

private:
    [[nodiscard]] QString readChannel(const QString &address, const QJsonValue &channel);

    SettingsReader::Values m_settings;
};

} // namespace remote
