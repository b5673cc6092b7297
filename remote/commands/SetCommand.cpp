#include "remote/commands/SetCommand.h"

#include "remote/wire/Catalogue.h"
#include "remote/wire/Escaping.h"

using namespace Qt::StringLiterals;

namespace remote {

SetCommand::SetCommand(Session &session) : Command(session), m_change(session.requester(), session.options().confirmMs)
{
    connect(&m_change, &SettingChange::finished, this, &SetCommand::report);
}

/// Only a setting can be confirmed: a query of an order or a list returns something else.
void SetCommand::start()
{
    const QByteArray key = options().arguments[0].toLocal8Bit();
    const QByteArray value = options().arguments[1].toLocal8Bit();
    const qsizetype colon = key.indexOf(':');
    if (Catalogue::isSetting(key.left(colon), key.sliced(colon + 1)))
        m_change.start(key, value);
    else
        m_change.startOrder(key, value);
}

void SetCommand::report(SettingChange::Outcome outcome, const QByteArray &inForce)
{
    using Outcome = SettingChange::Outcome;
    const QString &key = options().arguments[0];
    switch (outcome) {
    case Outcome::Confirmed:
        return reportAccepted(u"confirmed"_s, Output::Colour::Green);
    case Outcome::Unconfirmed:
        return reportAccepted(options().confirmMs == 0 ? u"acknowledged"_s : u"acknowledged, not confirmed"_s,
                              Output::Colour::Yellow);
    case Outcome::RefusedByHead:
        output().error(u"%1: refused"_s.arg(key));
        return end(ExitCode::Refused);
    case Outcome::RefusedByCard:
        output().error(
            u"%1: not taken by the card, still %2"_s.arg(key, QString::fromLocal8Bit(Escaping::printable(inForce))));
        return end(ExitCode::Refused);
    case Outcome::Silent:
        return endSilent(key);
    }
}

void SetCommand::reportAccepted(const QString &how, Output::Colour colour)
{
    if (!options().quiet)
        output().line(options().arguments.join(u' ').toLocal8Bit() + ' ' + output().painted(how.toLocal8Bit(), colour));
    end(ExitCode::Fine);
}

} // namespace remote
