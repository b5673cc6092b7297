#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <optional>

namespace remote {

class Requester;

/// Sets one setting and determines whether the card accepted it.
///
/// The card's verdict is the value that the head pushes. Some settings are never pushed, and a value already in force
/// is not sent to the card, so the value is also queried until it is the wanted one or the time is up.
class SettingChange : public QObject
{
    Q_OBJECT

public:
    enum class Outcome { Confirmed, Unconfirmed, RefusedByHead, RefusedByCard, Silent };

    /// @param confirmMs time for the card's verdict; 0 to accept the head's answer
    SettingChange(Requester &requester, int confirmMs);

    /// Starts a change, one at a time; finished() reports its end.
    void start(const QByteArray &key, const QByteArray &value);
    /// As start(), without waiting for the card: for an order, which has no value to confirm.
    void startOrder(const QByteArray &key, const QByteArray &value);

Q_SIGNALS:
    /// @param inForce the value that the card kept, for RefusedByCard
    void finished(SettingChange::Outcome outcome, const QByteArray &inForce);

private:
    void send(const QByteArray &key, const QByteArray &value, int confirmMs);
    void ask();
    void takePushed(const QByteArray &key, const QByteArray &value);
    void judge(const QByteArray &value);
    void judgeAnswer(bool answered, const QByteArray &value);
    void finish(Outcome outcome, const QByteArray &inForce = {});

    Requester &m_requester;
    int m_confirmMs;
    QByteArray m_key;
    QByteArray m_wanted;
    bool m_awaitsVerdict = false;
    bool m_asking = false;
    std::optional<QByteArray> m_verdict; ///< pushed while a query was unanswered
    QDeadlineTimer m_deadline;
    QTimer m_askTimer;
};

} // namespace remote
