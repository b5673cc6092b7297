#pragma once

#include "Command.h"
#include "SettingChange.h"

/// Sets one value and tells what became of it.
class SetCommand : public Command
{
    Q_OBJECT

public:
    explicit SetCommand(Session &session);
    void start() override;

private:
    void tell(SettingChange::Outcome outcome, const QByteArray &inForce);
    void tellTaken(const QString &how, Output::Colour colour);

    SettingChange m_change;
};
