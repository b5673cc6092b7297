#pragma once

#include "remote/commands/Command.h"
#include "remote/wire/SettingChange.h"

namespace remote {

/// Sets one value and reports the outcome.
class SetCommand : public Command
{
    Q_OBJECT

public:
    explicit SetCommand(Session &session);
    void start() override;

private:
    void report(SettingChange::Outcome outcome, const QByteArray &inForce);
    void reportAccepted(const QString &how, Output::Colour colour);

    SettingChange m_change;
};

} // namespace remote
