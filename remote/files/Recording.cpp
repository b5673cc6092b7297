#include "remote/files/Recording.h"

#include "common/EndSignals.h"
#include "remote/wire/Escaping.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

const QByteArray kHeader = "zirvo-recording 1 ";
constexpr qint64 kMicroseconds = 1'000'000;
constexpr qint64 kLongestLine = 300'000; // four characters for each byte of the longest frame, and some to spare
constexpr qint64 kMaxThroughPipe = 64 * InputFile::kMebibyte;
constexpr double kLatestMs = 1e15; // beyond any wait

} // namespace

QByteArray Recording::header(const QDateTime &start) { return kHeader + start.toString(Qt::ISODateWithMs).toLatin1(); }

QByteArray Recording::line(const RecordedFrame &frame)
{
    const QByteArray fraction = QByteArray::number(frame.microseconds % kMicroseconds).rightJustified(6, '0');
    return QByteArray::number(frame.microseconds / kMicroseconds) + '.' + fraction + ' ' + frame.link +
           (frame.fromHead ? " < " : " > ") + Escaping::escaped(frame.frame);
}

QString Recording::open(const QString &path)
{
    if (QString wrong = m_file.open(path, kMaxThroughPipe); !wrong.isEmpty())
        return wrong;
    const QByteArray header = readLine().trimmed();
    m_start = QDateTime::fromString(QString::fromLatin1(header.mid(kHeader.size())), Qt::ISODateWithMs);
    if (!header.startsWith(kHeader) || !m_start.isValid())
        return u"%1: not a recording, or of another version"_s.arg(path);
    const qint64 behindHeader = m_file.content().pos();
    QString wrong = check(path);
    m_file.content().seek(behindHeader);
    return wrong;
}

/// The next line with its line end, cut at the greatest valid length.
QByteArray Recording::readLine()
{
    m_buffer.resize(kLongestLine);
    const qint64 size = m_file.content().readLine(m_buffer.data(), m_buffer.size());
    return m_buffer.first(std::max<qint64>(size, 0));
}

/// Checks all frames and counts them.
QString Recording::check(const QString &path)
{
    qint64 microseconds = 0;
    for (QByteArray text; !(text = readLine()).isEmpty();) {
        m_cutOff = !text.endsWith('\n') && text.size() < kLongestLine - 1;
        if (m_cutOff)
            break;
        const auto frame = parse(text);
        if (!frame || frame->microseconds < microseconds || EndSignals::haveArrived())
            return u"%1: line %2 is no frame of a recording"_s.arg(path).arg(m_left + 2);
        microseconds = frame->microseconds;
        ++m_left;
    }
    return {};
}

std::optional<RecordedFrame> Recording::next()
{
    if (atEnd())
        return {};
    auto frame = parse(readLine());
    m_left -= frame ? 1 : 0;
    return frame;
}

qint64 Recording::dueMs(const RecordedFrame &frame, double speed)
{
    const double due = speed > 0 ? double(frame.microseconds) / 1000 / speed : 0;
    return qint64(std::min(due, kLatestMs));
}

std::optional<RecordedFrame> Recording::parse(const QByteArray &line)
{
    if (!line.endsWith('\n'))
        return {};
    const QByteArrayList parts = line.chopped(1).split(' ');
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

} // namespace remote
