#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

namespace sim {

class Unit;

/// Announces a change of many settings at once: a busy message, every changed setting, and a done message.
class ChangeAnnouncer : public QObject
{
    Q_OBJECT

public:
    struct Change
    {
        Unit *unit;
        QByteArray mnemonic;
    };

    /// Shortest duration of a change.
    static constexpr int kBusyMs = 1500;

    using QObject::QObject;

    /// `mnemonic` is sent with "0" at the start and "1" at the end. The first message leaves with the next step, after
    /// the answer to the request. Must not be called while busy.
    void start(const QByteArray &mnemonic, const QList<Change> &changes);
    /// Stops; nothing more is sent.
    void abort();
    [[nodiscard]] bool isBusy() const { return !m_mnemonic.isEmpty(); }
    /// Advances simulated time; each step sends one setting.
    void step(int ms);

Q_SIGNALS:
    void announced(const QByteArray &text);

private:
    QByteArray m_mnemonic;
    QList<Change> m_changes;
    int m_elapsedMs = 0;
};

} // namespace sim
