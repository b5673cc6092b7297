#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>

/// Writes every frame on the links to a file, one line each: seconds since the start, "<" (received) or ">" (sent),
/// link, text. Each line is on disk before the next, so the file can be read while the chassis runs.
class Trace
{
public:
    enum class Direction : char { Received = '<', Sent = '>' };

    /// False if the file cannot be written.
    [[nodiscard]] bool open(const QString &path);
    /// Does nothing when no file is open.
    void write(Direction direction, const QString &link, const QByteArray &text);

    /// `text` with control bytes spelt out: <STX>, <ACK>, <0x1B>.
    [[nodiscard]] static QByteArray readable(const QByteArray &text);

private:
    QFile m_file;
    QElapsedTimer m_clock;
};
