#include "remote/commands/WatchCommand.h"

namespace remote {

WatchCommand::WatchCommand(Session &session)
    : Command(session)
    , m_printer(session.output(), session.options().patterns(), session.options().json)
{
}

void WatchCommand::start()
{
    for (const ClientLink *link : session().links()) {
        const QByteArray name = link->name();
        connect(link, &ClientLink::received, this, [this, name](const QByteArray &frame) { show(name, frame); });
    }
    endInTime();
}

void WatchCommand::show(const QByteArray &link, const QByteArray &frame)
{
    if (hasEnded() || !m_printer.print(QDateTime::currentDateTime(), link, frame))
        return;
    ++m_shown;
    if (m_shown == options().count || !output().isOpen())
        end(ExitCode::Fine);
}

} // namespace remote
