#include "remote/commands/GetCommand.h"

#include "remote/wire/Escaping.h"

using namespace Qt::StringLiterals;

namespace remote {

void GetCommand::start()
{
    for (const QString &argument : options().arguments)
        m_keys.append(argument.toLocal8Bit());
    m_answers.resize(m_keys.size());
    for (qsizetype i = 0; i < m_keys.size(); ++i) {
        session().requester().query(m_keys[i], [this, i](const Requester::Answer &answer) {
            m_answers[i] = answer;
            if (answer.state == Requester::Answer::State::Silent)
                endSilent(QString::fromLocal8Bit(m_keys[i]));
            else
                printAnswered();
        });
    }
}

/// Prints in the order of the arguments, not of the answers.
void GetCommand::printAnswered()
{
    for (; m_printed < m_keys.size() && m_answers[m_printed]; ++m_printed)
        print(m_keys[m_printed], *m_answers[m_printed]);
    if (m_printed == m_keys.size())
        end(m_exitCode);
}

void GetCommand::print(const QByteArray &key, const Requester::Answer &answer)
{
    if (answer.state == Requester::Answer::State::Refused) {
        output().error(u"%1: refused"_s.arg(QString::fromLocal8Bit(key)));
        m_exitCode = ExitCode::Refused;
    } else {
        output().line((options().raw ? QByteArray() : key + ' ') + Escaping::printable(answer.data));
    }
}

} // namespace remote
