#pragma once

#include "remote/files/InputFile.h"

#include <QByteArray>
#include <QDateTime>

#include <optional>

namespace remote {

/// One frame that went over a link.
struct RecordedFrame
{
    qint64 microseconds = 0; ///< since the recording began
    QByteArray link;         ///< "remote" or "status"
    bool fromHead = false;
    QByteArray frame; ///< without start and end byte
};

/// The traffic of both links in a file: a header, then one line per frame,
/// `12.345678 remote < R1:FREQ:2250.5\x06`.
class Recording
{
public:
    [[nodiscard]] static QByteArray header(const QDateTime &start);
    [[nodiscard]] static QByteArray line(const RecordedFrame &frame);

    /// Opens a recording of any length and checks all of it. @return what is wrong, with the line number; empty if
    /// nothing is
    [[nodiscard]] QString open(const QString &path);
    [[nodiscard]] QDateTime start() const { return m_start; }
    /// Whether the last line is incomplete; it is left out then.
    [[nodiscard]] bool isCutOff() const { return m_cutOff; }
    /// The next frame; nothing at the end, or if the file has changed since it was opened.
    [[nodiscard]] std::optional<RecordedFrame> next();
    /// Whether all frames were returned.
    [[nodiscard]] bool atEnd() const { return m_left == 0; }
    /// When a frame is due after the start of a replay, in ms. @param speed factor on the recorded pace; 0 for at once
    [[nodiscard]] static qint64 dueMs(const RecordedFrame &frame, double speed);

private:
    [[nodiscard]] static std::optional<RecordedFrame> parse(const QByteArray &line);
    [[nodiscard]] QString check(const QString &path);
    [[nodiscard]] QByteArray readLine();

    InputFile m_file;
    QByteArray m_buffer; ///< for a line
    QDateTime m_start;
    bool m_cutOff = false;
    qint64 m_left = 0; ///< frames
};

} // namespace remote
