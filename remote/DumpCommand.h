#pragma once

#include "Command.h"
#include "SettingsReader.h"

#include <QDateTime>

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
