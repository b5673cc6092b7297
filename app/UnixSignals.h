#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

/// Brings SIGTERM and SIGINT into the event loop.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    /// Only one may exist at a time.
    UnixSignals();
    /// The signals are ignored from here on: the program is ending.
    ~UnixSignals() override;

Q_SIGNALS:
    void terminationRequested();

private:
    void read();

    std::unique_ptr<QSocketNotifier> m_notifier;
};
