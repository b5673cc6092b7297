#include "Recording.h"

#include "Escaping.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

const QByteArray kHeader = "zirvo-recording 1 ";
constexpr qint64 kMicroseconds = 1'000'000;

} // namespace

QByteArray Recording::header(const QDateTime &start) { return kHeader + start.toString(Qt::ISODateWithMs).toLatin1(); }

QByteArray Recording::line(const RecordedFrame &frame)
{
    const QByteArray fraction = QByteArray::number(frame.microseconds % kMicroseconds).rightJustified(6, '0');
    return QByteArray::number(frame.microseconds / kMicroseconds) + '.' + fraction + ' ' + frame.link +
           (frame.fromHead ? " < " : " > ") + Escaping::escaped(frame.frame);
}

QString Recording::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return u"%1: %2"_s.arg(path, file.errorString());
    const QByteArray header = file.readLine().trimmed();
    m_start = QDateTime::fromString(QString::fromLatin1(header.mid(kHeader.size())), Qt::ISODateWithMs);
    if (!header.startsWith(kHeader) || !m_start.isValid())
        return u"%1: not a recording, or of another version"_s.arg(path);
    for (int number = 2; !file.atEnd(); ++number) {
        QByteArray text = file.readLine();
        if (text.endsWith('\n'))
            text.chop(1);
        const auto frame = parse(text);
        if (!frame || (!m_frames.isEmpty() && frame->microseconds < m_frames.constLast().microseconds))
            return u"%1: line %2 is no frame of a recording"_s.arg(path).arg(number);
        m_frames.append(*frame);
    }
    return {};
}

qint64 Recording::dueMs(qsizetype frame, double speed) const
{
    return speed > 0 ? qint64(double(m_frames[frame].microseconds) / 1000 / speed) : 0;
}

std::optional<RecordedFrame> Recording::parse(const QByteArray &line)
{
    const QByteArrayList parts = line.split(' ');
    const QByteArrayList time = parts[0].split('.');
    if (parts.size() < 4 || time.size() != 2 || time[1].size() != 6)
        return {};
    bool secondsRead = false;
    bool fractionRead = false;
    const qint64 seconds = time[0].toUInt(&secondsRead);
    const qint64 fraction = time[1].toUInt(&fractionRead);
    const bool linkKnown = parts[1] == "remote" || parts[1] == "status";
    const bool directionKnown = parts[2] == "<" || parts[2] == ">";
    const auto frame = Escaping::unescaped(parts.sliced(3).join(' '));
    if (!secondsRead || !fractionRead || !linkKnown || !directionKnown || !frame)
        return {};
    return RecordedFrame{ seconds * kMicroseconds + fraction, parts[1], parts[2] == "<", *frame };
}
