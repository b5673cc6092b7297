#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>

#include <utility>

namespace sim {

/// Writes every frame on the links to a file, one line each: seconds since the start, "<" (received) or ">" (sent),
/// link, text. Each line is flushed, so the file can be read while the chassis runs. If a line does not fit, it is
/// removed and the trace ends.
class Trace
{
public:
    enum class Direction : char { Received = '<', Sent = '>' };

    /// False if the file cannot be written.
    [[nodiscard]] bool open(const QString &path);
    /// Does nothing when no file is open.
    void write(Direction direction, const QString &link, const QByteArray &text);
    /// Why the trace has ended; reported once.
    [[nodiscard]] QString takeProblem() { return std::exchange(m_problem, {}); }

    /// `text` with control bytes spelt out: <STX>, <ACK>, <0x1B>.
    [[nodiscard]] static QByteArray readable(const QByteArray &text);

private:
    QFile m_file;
    QElapsedTimer m_clock;
    qint64 m_wholeSize = 0; // bytes of whole lines
    QString m_problem;
};

} // namespace sim
