#include "channels/BistChan.h"

#include "link/ChannelLink.h"
#include "link/RemoteCommand.h"

namespace {

constexpr int kRegularMs = 5000; ///< slower readings do not count as periodic

bool isReading(const QString &mnemonic) { return mnemonic.startsWith(u'R', Qt::CaseInsensitive); }

} // namespace

void BistChan::ProcessCmd(const StandardCommand &command)
{
    if (command.status() == StandardCommand::Received && isReading(command.responseMnemonic()))
        noteReading(command.responseMnemonic());
    Channel::ProcessCmd(command);
}

/// One reading is watched; the others come as often.
void BistChan::noteReading(const QString &mnemonic)
{
    const bool isSame = mnemonic == m_reading;
    const bool isSoon = m_sinceReading.isValid() && !m_sinceReading.hasExpired(kRegularMs);
    if (isSame || !isSoon) {
        m_isReporting = isSame && isSoon;
        m_reading = mnemonic;
        m_sinceReading.start();
    }
    if (m_isReporting)
        link()->noteReport();
}

void BistChan::processSpecial(int row, const Report &report)
{
    if (row == at(Commands::SLAVE))
        return;
    if (row == at(Commands::NAME) && !report.refused && report.data != getNAME())
        store(row, report.data);
    processUnknown(report);
}

void BistChan::processUnknown(const Report &report)
{
    if (!report.refused)
        m_values.report(report.mnemonic, report.data, report.isLatin1);
    else if (!m_values.contains(report.mnemonic))
        return; // there is no value in force
    if (report.isAnswer && isSetPending(report.mnemonic))
        return; // older than what the client has just set
    auto message = std::make_unique<RemoteCommand>(this, address(), report.mnemonic,
                                                   report.refused ? value(report.mnemonic) : report.data,
                                                   RemoteCommand::kPushTimeOutMs, RemoteCommand::Forwarded, true);
    message->setLatin1(report.isLatin1);
    message->setReplaceable(m_values.contains(report.mnemonic)); // unknown ones are bounded as a series
    if (isReading(report.mnemonic))
        pushToStatus(std::move(message));
    else
        pushToRemote(std::move(message));
}

std::optional<QString> BistChan::answerToQuery(const QString &mnemonic)
{
    return m_values.contains(mnemonic) ? std::optional(value(mnemonic)) : std::nullopt;
}

bool BistChan::takesSet(const QString &mnemonic, const QString &data) const
{
    return !mnemonic.isEmpty() && !data.isEmpty(); // a set without data would be a query on the wire
}

void BistChan::carryOutSet(const RemoteCommand &set)
{
    if (isSettable(set.mnemonic()))
        Channel::carryOutSet(set);
    else
        sendSet(rowOf(set.mnemonic()), { address(), set.mnemonic(), set.data(), set.isLatin1() });
}
