#include "remote/wire/SettingChange.h"

#include "remote/wire/Message.h"
#include "remote/wire/Requester.h"

#include <utility>

namespace remote {

namespace {

constexpr int kAskEveryMs = 200;

} // namespace

SettingChange::SettingChange(Requester &requester, int confirmMs) : m_requester(requester), m_confirmMs(confirmMs)
{
    m_askTimer.setSingleShot(true);
    connect(&m_askTimer, &QTimer::timeout, this, &SettingChange::ask);
    connect(&requester, &Requester::pushed, this, &SettingChange::takePushed);
}

void SettingChange::start(const QByteArray &key, const QByteArray &value) { send(key, value, m_confirmMs); }

void SettingChange::startOrder(const QByteArray &key, const QByteArray &value) { send(key, value, 0); }

void SettingChange::send(const QByteArray &key, const QByteArray &value, int confirmMs)
{
    m_key = key;
    m_wanted = value;
    m_requester.set(key, value, [this, confirmMs](const Requester::Answer &answer) {
        using State = Requester::Answer::State;
        if (answer.state == State::Silent)
            return finish(Outcome::Silent);
        if (answer.state == State::Refused)
            return finish(Outcome::RefusedByHead);
        if (confirmMs == 0)
            return finish(Outcome::Unconfirmed);
        m_awaitsVerdict = true;
        m_deadline.setRemainingTime(confirmMs);
        m_askTimer.start(qMin(kAskEveryMs, confirmMs));
    });
}

void SettingChange::ask()
{
    m_asking = true;
    m_requester.query(m_key, [this](const Requester::Answer &answer) {
        using State = Requester::Answer::State;
        m_asking = false;
        if (answer.state == State::Silent)
            return finish(Outcome::Silent);
        judgeAnswer(answer.state == State::Acknowledged, answer.data);
    });
}

void SettingChange::takePushed(const QByteArray &key, const QByteArray &value)
{
    if (!m_awaitsVerdict || key != m_key)
        return;
    // Its answer would be taken for that of a later query.
    if (m_asking)
        m_verdict = value;
    else
        judge(value);
}

void SettingChange::judge(const QByteArray &value)
{
    if (Message::sameValue(value, m_wanted))
        finish(Outcome::Confirmed);
    else
        finish(Outcome::RefusedByCard, value);
}

void SettingChange::judgeAnswer(bool answered, const QByteArray &value)
{
    if (m_verdict)
        judge(std::exchange(m_verdict, {}).value());
    else if (answered && Message::sameValue(value, m_wanted))
        finish(Outcome::Confirmed);
    else if (const qint64 left = m_deadline.remainingTime(); left > 0)
        m_askTimer.start(int(qMin(qint64(kAskEveryMs), left)));
    else if (answered && Message::isKnown(value))
        finish(Outcome::RefusedByCard, value);
    else
        finish(Outcome::Unconfirmed);
}

void SettingChange::finish(Outcome outcome, const QByteArray &inForce)
{
    m_askTimer.stop();
    m_awaitsVerdict = false;
    m_verdict.reset();
    Q_EMIT finished(outcome, inForce);
}

} // namespace remote
