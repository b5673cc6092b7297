#include "remote/commands/RecordCommand.h"

#include <chrono>

using namespace Qt::StringLiterals;

namespace remote {

/// The session writes the file; what is left is when to end.
void RecordCommand::start()
{
    connect(&session().recorder(), &RecordingWriter::recorded, this, [this] {
        if (++m_frames == options().count)
            end(ExitCode::Fine);
    });
    if (options().seconds > 0)
        QTimer::singleShot(std::chrono::milliseconds(qint64(options().seconds * 1000)), this,
                           [this] { end(ExitCode::Fine); });
}

QString RecordCommand::progress() const { return u"%1 frames recorded"_s.arg(m_frames); }

} // namespace remote
