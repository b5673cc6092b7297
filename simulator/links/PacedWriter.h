#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

namespace sim {

/// Sends bytes at the speed of the serial line: a byte leaves when its last bit has been clocked out. A message that
/// does not fit the transmit buffer is dropped whole.
class PacedWriter : public QObject
{
    Q_OBJECT

public:
    /// Accepts bytes and returns how many it accepted.
    using Sink = std::function<qsizetype(QByteArrayView)>;

    static constexpr int kBytesPerSecond = 92160; ///< 921600 baud, 8N1
    static constexpr qsizetype kBufferSize = qsizetype(64) * 1024;

    explicit PacedWriter(Sink sink, QObject *parent = nullptr);

    /// False if the transmit buffer had no room for the message.
    bool write(const QByteArray &bytes);
    /// Discards what has not been sent.
    void clear();
    [[nodiscard]] qsizetype pending() const { return m_buffer.size(); }

private:
    void startBurst();
    void letOut();

    Sink m_sink;
    QByteArray m_buffer;
    QElapsedTimer m_burst;
    qint64 m_burstBytes = 0;
    QTimer m_timer;
};

} // namespace sim
