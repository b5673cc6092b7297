#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>

#include <optional>

/// One frame that went over a link.
struct RecordedFrame
{
    qint64 microseconds = 0; ///< since the recording began
    QByteArray link;         ///< "remote" or "status"
    bool fromHead = false;
    QByteArray frame; ///< without start and end byte
};

/// The traffic of both links in a file: a header, then a line a frame,
/// `12.345678 remote < R1:FREQ:2250.5\x06`.
class Recording
{
public:
    [[nodiscard]] static QByteArray header(const QDateTime &start);
    [[nodiscard]] static QByteArray line(const RecordedFrame &frame);

    /// Reads a recording. @return what is wrong, with the line number; empty if all was read
    [[nodiscard]] QString read(const QString &path);
    [[nodiscard]] const QList<RecordedFrame> &frames() const { return m_frames; }
    [[nodiscard]] QDateTime start() const { return m_start; }
    /// When a frame is due after the start of a replay, in ms. @param speed times the recorded pace; 0 for at once
    [[nodiscard]] qint64 dueMs(qsizetype frame, double speed) const;

private:
    [[nodiscard]] static std::optional<RecordedFrame> parse(const QByteArray &line);

    QDateTime m_start;
    QList<RecordedFrame> m_frames;
};
