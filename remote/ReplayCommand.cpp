#include "ReplayCommand.h"

#include <chrono>

ReplayCommand::ReplayCommand(Session &session)
    : Command(session)
    , m_printer(session.output(), session.options().patterns(), session.options().json)
{
}

QString ReplayCommand::readInput() { return m_recording.read(options().arguments[0]); }

void ReplayCommand::start()
{
    m_clock.start();
    showNext();
}

void ReplayCommand::showNext()
{
    if (m_next == m_recording.frames().size() || !output().isOpen())
        return end(ExitCode::Fine);
    const qint64 due = m_recording.dueMs(m_next, options().speed);
    QTimer::singleShot(std::chrono::milliseconds(qMax(qint64(0), due - m_clock.elapsed())), this, [this] {
        const RecordedFrame &frame = m_recording.frames().at(m_next++);
        if (frame.fromHead)
            m_printer.print(m_recording.start().addMSecs(frame.microseconds / 1000), frame.link, frame.frame);
        showNext();
    });
}
