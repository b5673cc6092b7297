#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace sim {

/// Brings SIGINT and SIGTERM into the event loop, so that the links are removed before the program ends.
class EndSignals : public QObject
{
    Q_OBJECT

public:
    /// Only one may exist at a time.
    explicit EndSignals(QObject *parent = nullptr);
    ~EndSignals() override;
    Q_DISABLE_COPY_MOVE(EndSignals)

Q_SIGNALS:
    void received(int signalNumber);

private:
    void read();

    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace sim
