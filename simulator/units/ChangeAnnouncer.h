#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

namespace sim {

class Unit;

/// Tells the clients of a change of many settings at once: a message that the chassis is busy, every changed setting,
/// and the message that it is done.
class ChangeAnnouncer : public QObject
{
    Q_OBJECT

public:
    struct Change
    {
        Unit *unit;
        QByteArray mnemonic;
    };

    /// How long a change takes at least.
    static constexpr int kBusyMs = 1500;

    using QObject::QObject;

    /// `mnemonic` is the one that announces begin ("0") and end ("1"). Begins with the next step, so that the answer
    /// to the request leaves first. Not to be called while busy.
    void start(const QByteArray &mnemonic, const QList<Change> &changes);
    /// Ends without a word.
    void abort();
    [[nodiscard]] bool isBusy() const { return !m_mnemonic.isEmpty(); }
    /// Passes simulated time; one setting leaves a step.
    void step(int ms);

Q_SIGNALS:
    void announced(const QByteArray &text);

private:
    QByteArray m_mnemonic;
    QList<Change> m_changes;
    int m_elapsedMs = 0;
};

} // namespace sim
