#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

namespace sim {

/// Lets bytes out as slowly as the serial line would: a byte leaves when its last bit has been clocked out. What does
/// not fit the transmit buffer is dropped whole.
class PacedWriter : public QObject
{
    Q_OBJECT

public:
    /// Takes bytes and returns how many it took.
    using Sink = std::function<qsizetype(QByteArrayView)>;

    static constexpr int kBytesPerSecond = 92160; ///< 921600 baud, 8N1
    static constexpr qsizetype kBufferSize = qsizetype(64) * 1024;

    explicit PacedWriter(Sink sink, QObject *parent = nullptr);

    /// False if the transmit buffer had no room for all of it.
    bool write(const QByteArray &bytes);
    /// Drops what has not left yet.
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
