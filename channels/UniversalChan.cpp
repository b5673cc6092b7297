#include "channels/UniversalChan.h"

#include "link/ChannelLink.h"
#include "link/RemoteCommand.h"

#include <QCoreApplication>

#include <utility>

namespace {

constexpr int kFirstRemoteStatusMs = 5000;
constexpr int kRemoteStatusMs = 2000;

} // namespace

UniversalChan::UniversalChan(QObject *parent, const QString &number, ChannelLink *link)
    : Channel(parent, ChanType, number, link, kCatalogue)
{
    connect(&m_remoteStatusTmr, &QTimer::timeout, this, &UniversalChan::RemoteStatusTimeOut);
}

void UniversalChan::processSpecial(int row, const Report &report)
{
    if (report.refused)
        return;
    if (row == at(Commands::CLST))
        processCardList(report.data);
    else if (row == at(Commands::TLST))
        processTmoipList(report.data);
    mirror(row, report.data, report.isAnswer);
}

/// A later list does not change the channels.
void UniversalChan::processCardList(const QString &cardList)
{
    if (!std::exchange(m_cardListReceived, true))
        store(at(Commands::CLST), cardList);
    Q_EMIT cardListReceived(cardList);
}

void UniversalChan::processTmoipList(const QString &list)
{
    if (!m_tmoipList.isEmpty())
        return;
    store(at(Commands::TLST), list);
    QStringList entries;
    for (const QString &item : list.split(u','))
        entries.append(item.trimmed());
    Q_EMIT tmoipListReceived(entries);
}

// Remote client

void UniversalChan::setSPCRemote(ChannelLink *link)
{
    Channel::setSPCRemote(link);
    m_remoteStatusTmr.start(kFirstRemoteStatusMs);
}

void UniversalChan::RemoteStatusTimeOut()
{
    if (!remoteLink())
        return;
    m_remoteStatusTmr.start(kRemoteStatusMs);
    // A client that waits for answers is there, and the query would delay them.
    if (remoteLink()->isClientAwaitingAnswers())
        return;
    if (std::exchange(m_isRemoteAsked, true))
        setRemotePresent(false);
    else
        SendToRemoteConnection(Address, Commands::REMOTE);
}

void UniversalChan::SendToRemoteConnection(const QString &address, const QString &mnemonic)
{
    pushToRemote(std::make_unique<RemoteCommand>(this, address, mnemonic, true));
}

void UniversalChan::requestSettings(StandardCommand::Priority priority)
{
    Channel::requestSettings(priority);
    if (m_remoteStatus == QLatin1StringView("1"))
        setREMOTE(m_remoteStatus); // a restarted chassis has lost it
}

void UniversalChan::setREMOTE(const QString &value)
{
    link()->AddCmdToTxmtCmdQueue(
        new StandardCommand(StandardCommand::set(nullptr, address(), Commands::REMOTE, value)));
}

void UniversalChan::setRemotePresent(bool isPresent)
{
    const QString status = isPresent ? QStringLiteral("1") : QStringLiteral("0");
    if (std::exchange(m_remoteStatus, status) != status)
        setREMOTE(status);
}

void UniversalChan::ProcessCmd(const RemoteCommand &message)
{
    const bool isOwnQuestion = message.type() == RemoteCommand::Query && message.status() != RemoteCommand::Received;
    if (!isOwnQuestion) {
        Channel::ProcessCmd(message);
        return;
    }
    m_isRemoteAsked = false;
    const bool isAnswered = message.status() != RemoteCommand::TimedOut;
    if (isAnswered || !remoteLink()->isClientHeldBack()) // otherwise its answer may be unread
        setRemotePresent(isAnswered);
}

std::optional<QString> UniversalChan::answerToQuery(const QString &mnemonic)
{
    if (mnemonic == RemoteCommands::STYPE)
        return getSTYPE();
    if (mnemonic == RemoteCommands::VERS)
        return QCoreApplication::applicationVersion();
    if (mnemonic == RemoteCommands::VERTSMAIN)
        return m_mainVersion;
    if (mnemonic == RemoteCommands::SYSID)
        return m_systemIdentifier;
    if (mnemonic == RemoteCommands::REMOTE)
        return m_remoteStatus;
    if (mnemonic == RemoteCommands::CHANS)
        return remoteAddresses();
    if (mnemonic == RemoteCommands::CARDS)
        return m_cardInfo.join(u',');
    return Channel::answerToQuery(mnemonic);
}

QString UniversalChan::remoteAddresses() const
{
    QStringList all;
    for (const Channel *channel : remoteLink() ? remoteLink()->channels() : QList<Channel *>())
        all += channel->addresses();
    return all.join(u',');
}
