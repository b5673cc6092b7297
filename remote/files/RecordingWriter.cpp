#include "remote/files/RecordingWriter.h"

#include "common/EndSignals.h"
#include "remote/files/Recording.h"
#include "remote/wire/ClientLink.h"

#include <QDateTime>

namespace remote {

bool RecordingWriter::open(const QString &path)
{
    m_clock.start();
    return m_file.create(path, Recording::header(QDateTime::currentDateTimeUtc()) + '\n');
}

void RecordingWriter::attach(const ClientLink &link)
{
    const QByteArray name = link.name();
    connect(&link, &ClientLink::received, this, [this, name](const QByteArray &frame) { write(name, '<', frame); });
    connect(&link, &ClientLink::sent, this, [this, name](const QByteArray &frame) { write(name, '>', frame); });
}

bool RecordingWriter::close() { return !m_file.isOpen() || m_failed || m_file.close(); }

void RecordingWriter::write(const QByteArray &link, char direction, const QByteArray &frame)
{
    if (m_failed || !m_file.isOpen())
        return;
    const RecordedFrame line{ m_clock.nsecsElapsed() / 1000, link, direction == '<', frame };
    m_failed = !m_file.append(Recording::line(line) + '\n');
    if (!m_failed)
        Q_EMIT recorded();
    else if (!EndSignals::haveArrived())
        Q_EMIT failed(m_file.problem());
}

} // namespace remote
