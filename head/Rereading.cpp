#include "head/Rereading.h"

#include "channels/UniversalChan.h"
#include "link/ChannelLink.h"

#include <utility>

namespace {

constexpr int kSilenceCheckMs = 1000;

} // namespace

Rereading::Rereading(ChannelLink &link, const Clock &clock, std::function<bool()> isReporting)
    : m_link(link)
    , m_isReporting(std::move(isReporting))
    , m_check(link, clock, this)
    , m_reading(clock)
    , m_silence(clock)
{
    m_silenceTmr.setInterval(kSilenceCheckMs);
    connect(&m_silenceTmr, &QTimer::timeout, this, &Rereading::watchReports);
}

void Rereading::begin()
{
    m_silence.beginReading();
    m_reading.begin();
}

void Rereading::giveUp()
{
    m_silenceTmr.stop();
    m_reading.giveUp();
    m_check.setActive(false);
}

void Rereading::watchReports()
{
    const bool isSilent = m_silence.isOver(m_isReporting());
    if (isSilent || m_reading.isDue())
        Q_EMIT everythingDue();
}

bool Rereading::noteEnd(const StandardCommand &command, bool isIdentified)
{
    using Commands = UniversalChan::Commands;
    const bool isCheck = m_check.noteEnd(command, m_reading.isProbe(command));
    if (command.status() == StandardCommand::TimedOut)
        m_silence.noteTimeOut();
    if (!isIdentified)
        return false;
    const bool isAnswered = command.status() == StandardCommand::Completed;
    if (command.mnemonic() == Commands::VERTSKB && !isAnswered && !isCheck)
        m_check.addMissing(command); // queried together with the version, whose answer ends these queries
    if (command.mnemonic() == Commands::TRON && m_reading.isRunning()) {
        endPass(isAnswered);
        return true;
    }
    if (command.mnemonic() == Commands::CLST) {
        if (isAnswered)
            m_reading.note(command);
    } else if (command.type() == StandardCommand::Query && m_reading.isRunning()) {
        m_reading.note(command);
    } else {
        follow(m_reading.noteProbe(command));
    }
    return false;
}

void Rereading::endPass(bool isAcknowledged)
{
    m_silenceTmr.start();
    m_silence.endReading(isAcknowledged);
    follow(m_reading.end());
    m_check.setActive(true);
}

void Rereading::follow(const SettingsReading::Advice &advice)
{
    if (advice.everything)
        Q_EMIT everythingDue();
    for (const StandardCommand &query : advice.missing)
        m_check.addMissing(query);
    for (const StandardCommand &ended : advice.queries) {
        auto query = StandardCommand::query(ended.owner(), ended.address(), ended.mnemonic(), ended.data());
        query.setPriority(StandardCommand::Priority::Background);
        m_link.AddCmdToTxmtCmdQueue(new StandardCommand(query));
    }
}
