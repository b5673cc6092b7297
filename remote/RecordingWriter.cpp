#include "RecordingWriter.h"

#include "ClientLink.h"
#include "Recording.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

QString RecordingWriter::open(const QString &path)
{
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return u"%1: %2"_s.arg(path, m_file.errorString());
    m_clock.start();
    m_file.write(Recording::header(QDateTime::currentDateTimeUtc()) + '\n');
    return m_file.flush() ? QString() : u"%1: %2"_s.arg(path, m_file.errorString());
}

void RecordingWriter::attach(const ClientLink &link)
{
    const QByteArray name = link.name();
    connect(&link, &ClientLink::received, this, [this, name](const QByteArray &frame) { write(name, '<', frame); });
    connect(&link, &ClientLink::sent, this, [this, name](const QByteArray &frame) { write(name, '>', frame); });
}

void RecordingWriter::write(const QByteArray &link, char direction, const QByteArray &frame)
{
    const RecordedFrame line{ m_clock.nsecsElapsed() / 1000, link, direction == '<', frame };
    if (m_file.write(Recording::line(line) + '\n') < 0 || !m_file.flush())
        Q_EMIT failed(u"%1: %2"_s.arg(m_file.fileName(), m_file.errorString()));
    Q_EMIT recorded();
}
