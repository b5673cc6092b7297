#include "remote/commands/RecordCommand.h"

using namespace Qt::StringLiterals;

namespace remote {

/// The session writes the file; this only decides when to end.
void RecordCommand::start()
{
    connect(&session().recorder(), &RecordingWriter::recorded, this, [this] {
        if (++m_frames == options().count)
            end(ExitCode::Fine);
    });
    endInTime();
}

QString RecordCommand::progress() const { return u"%1 frames recorded"_s.arg(m_frames); }

} // namespace remote
