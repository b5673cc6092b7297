#include "RecordingWriter.h"

#include "ClientLink.h"
#include "EndSignals.h"
#include "Recording.h"

#include <QDateTime>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace {

QString fault(const QString &path, int error)
{
    return u"%1: %2"_s.arg(path, QString::fromLocal8Bit(std::strerror(error)));
}

} // namespace

QString RecordingWriter::open(const QString &path)
{
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return u"%1: %2"_s.arg(path, m_file.errorString());
    m_clock.start();
    return put(Recording::header(QDateTime::currentDateTimeUtc())) ? QString() : fault(path, m_fault);
}

bool RecordingWriter::put(const QByteArray &line)
{
    m_fault = EndSignals::write(m_file.handle(), line + '\n');
    return m_fault == 0;
}

void RecordingWriter::attach(const ClientLink &link)
{
    const QByteArray name = link.name();
    connect(&link, &ClientLink::received, this, [this, name](const QByteArray &frame) { write(name, '<', frame); });
    connect(&link, &ClientLink::sent, this, [this, name](const QByteArray &frame) { write(name, '>', frame); });
}

void RecordingWriter::write(const QByteArray &link, char direction, const QByteArray &frame)
{
    if (m_fault != 0 || !m_file.isOpen())
        return;
    const RecordedFrame line{ m_clock.nsecsElapsed() / 1000, link, direction == '<', frame };
    if (put(Recording::line(line)))
        Q_EMIT recorded();
    else if (m_fault != EINTR)
        Q_EMIT failed(fault(m_file.fileName(), m_fault));
}
