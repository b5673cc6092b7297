#pragma once

#include "remote/commands/Command.h"
#include "remote/wire/SettingChange.h"

namespace remote {

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

} // namespace remote
