#include "SetCommand.h"

#include "Escaping.h"

using namespace Qt::StringLiterals;

SetCommand::SetCommand(Session &session) : Command(session), m_change(session.requester(), session.options().confirmMs)
{
    connect(&m_change, &SettingChange::finished, this, &SetCommand::tell);
}

void SetCommand::start() { m_change.start(options().arguments[0].toLocal8Bit(), options().arguments[1].toLocal8Bit()); }

void SetCommand::tell(SettingChange::Outcome outcome, const QByteArray &inForce)
{
    using Outcome = SettingChange::Outcome;
    const QString &key = options().arguments[0];
    switch (outcome) {
    case Outcome::Confirmed:
        return tellTaken(u"confirmed"_s, Output::Colour::Green);
    case Outcome::Unconfirmed:
        return tellTaken(options().confirmMs == 0 ? u"acknowledged"_s : u"acknowledged, not confirmed"_s,
                         Output::Colour::Yellow);
    case Outcome::RefusedByHead:
        output().error(u"%1: refused"_s.arg(key));
        return end(ExitCode::Refused);
    case Outcome::RefusedByCard:
        output().error(
            u"%1: refused by the card, still %2"_s.arg(key, QString::fromLocal8Bit(Escaping::printable(inForce))));
        return end(ExitCode::Refused);
    case Outcome::Silent:
        return endSilent(key);
    }
}

void SetCommand::tellTaken(const QString &how, Output::Colour colour)
{
    if (!options().quiet)
        output().line(options().arguments.join(u' ').toLocal8Bit() + ' ' + output().painted(how.toLocal8Bit(), colour));
    end(ExitCode::Fine);
}
