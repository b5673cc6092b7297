#include "remote/commands/ReplayCommand.h"

using namespace Qt::StringLiterals;

namespace remote {

ReplayCommand::ReplayCommand(Session &session)
    : Command(session)
    , m_printer(session.output(), session.options().patterns(), session.options().json)
{
}

QString ReplayCommand::readInput() { return openInput(m_recording); }

void ReplayCommand::start()
{
    m_pace.start();
    showNext();
}

void ReplayCommand::showNext()
{
    const auto frame = output().isOpen() ? m_recording.next() : std::nullopt;
    if (!frame && output().isOpen() && !m_recording.atEnd()) {
        output().error(u"%1: it has changed meanwhile"_s.arg(options().arguments[0]));
        return end(ExitCode::Usage);
    }
    if (!frame)
        return end(ExitCode::Fine);
    m_pace.await(Recording::dueMs(*frame, options().speed), this, [this, frame = *frame] {
        if (frame.fromHead)
            m_printer.print(m_recording.start().addMSecs(frame.microseconds / 1000), frame.link, frame.frame);
        showNext();
    });
}

} // namespace remote
