#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

namespace sim {

/// Reads lines from standard input inside the event loop. The end of input is not an error.
class LineReader : public QObject
{
    Q_OBJECT

public:
    explicit LineReader(QObject *parent = nullptr);

Q_SIGNALS:
    void lineRead(const QByteArray &line);

private:
    void readInput();

    QSocketNotifier m_notifier;
    QByteArray m_buffer;
};

} // namespace sim
