#include "remote/wire/SettingsReader.h"

namespace remote {

void SettingsReader::read(const QByteArrayList &keys)
{
    m_values.clear();
    m_done = 0;
    m_all = keys.size();
    if (keys.isEmpty())
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT finished(m_values); }, Qt::QueuedConnection);
    for (const QByteArray &key : keys)
        m_requester.query(key, [this, key](const Requester::Answer &answer) { take(key, answer); });
}

void SettingsReader::take(const QByteArray &key, const Requester::Answer &answer)
{
    using State = Requester::Answer::State;
    if (answer.state == State::Silent) {
        Q_EMIT silent(m_done, m_all);
        return;
    }
    if (answer.state == State::Acknowledged)
        m_values.insert(key, answer.data);
    Q_EMIT progressed(++m_done, m_all);
    if (m_done == m_all)
        Q_EMIT finished(m_values);
}

} // namespace remote
