#pragma once

#include "remote/commands/Command.h"
#include "remote/wire/SettingsReader.h"

#include <QDateTime>

namespace remote {

/// Saves every known setting of every channel.
class DumpCommand : public Command
{
    Q_OBJECT

public:
    explicit DumpCommand(Session &session);
    void start() override;
    [[nodiscard]] bool needsReader() const override { return true; }

private:
    void write(const SettingsReader::Values &values);

    SettingsReader m_reader;
    QByteArrayList m_channels;
};

} // namespace remote
