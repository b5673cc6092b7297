#include "channels/Channel.h"

#include "link/ChannelLink.h"
#include "link/RemoteCommand.h"

#include <QtNumeric>

#include <algorithm>
#include <utility>

namespace {

constexpr double kPercentPerUnit = 100;

} // namespace

Channel::Channel(QObject *parent, QLatin1StringView chanType, const QString &channel, ChannelLink *link,
                 Catalogue::Table catalogue)
    : Channel(parent, channel, chanType + channel, link, catalogue)
{
}

Channel::Channel(QObject *parent, const QString &channel, const QString &address, ChannelLink *link,
                 Catalogue::Table catalogue)
    : CardChannel(parent, channel, address, link, catalogue)
    , m_nameRow(Catalogue::find(catalogue, Commands::NAME))
    , m_slaveRow(Catalogue::find(catalogue, Commands::SLAVE))
{
}

// Slaving

void Channel::SetSlaveChanList(const ChannelLink *link, const QString &className)
{
    std::ranges::copy_if(link->channels(), std::back_inserter(m_slaveChannels),
                         [this, &className](const Channel *other) {
                             return QLatin1StringView(other->metaObject()->className()) == className &&
                                    other->getChannel() != getChannel();
                         });
}

void Channel::SlavingHandler(const StandardCommand &command)
{
    if (!isSlaving())
        return;
    for (Channel *slave : std::as_const(m_slaveChannels)) // of the same class, so with the same rows
        slave->sendSet(pendingRow(command),
                       { slave->address(), command.mnemonic(), command.data(), command.isLatin1() });
}

// Remote client

void Channel::mirror(int row, const QString &data, bool isAnswer, bool isLatin1)
{
    if (isAnswer && hasPendingSet(row))
        return; // the client that has just set another value would take it for the answer
    const Catalogue::Row &entry = catalogue()[std::size_t(row)];
    const bool isForRemote = entry.flags.testFlag(Catalogue::ToRemote);
    if (!isForRemote && !entry.flags.testFlag(Catalogue::ToStatus))
        return;
    auto message = std::make_unique<RemoteCommand>(this, address(), entry.name, forClient(row, data),
                                                   RemoteCommand::kPushTimeOutMs, RemoteCommand::Forwarded, true);
    message->setReplaceable(!entry.flags.testFlag(Catalogue::Series));
    message->setLatin1(isLatin1);
    if (isForRemote)
        pushToRemote(std::move(message));
    else
        pushToStatus(std::move(message));
}

void Channel::pushToRemote(std::unique_ptr<RemoteCommand> message) const
{
    if (m_remoteLink)
        m_remoteLink->queueForClient(message.release());
}

void Channel::pushToStatus(std::unique_ptr<RemoteCommand> message) const
{
    if (m_remoteEyeAndStatusLink)
        m_remoteEyeAndStatusLink->queueForClient(message.release());
}

void Channel::ProcessCmd(const RemoteCommand &message)
{
    if (message.status() != RemoteCommand::Received)
        return;
    const auto answer = [this, &message](const QString &data, bool isSupported) {
        auto reply =
            std::make_unique<RemoteCommand>(this, message.address(), message.mnemonic(), data, isSupported, true);
        reply->setLatin1(message.isLatin1() || isHeldInLatin1(message.mnemonic()));
        pushToRemote(std::move(reply));
    };
    if (message.type() == RemoteCommand::Query) {
        const std::optional<QString> value = answerToQuery(message.mnemonic());
        answer(value.value_or(QString()), value.has_value());
    } else if (message.type() == RemoteCommand::Value) {
        const bool isTaken = takesSet(message.mnemonic(), message.data());
        answer(message.data(), isTaken);
        if (isTaken)
            carryOutSet(message);
    }
}

std::optional<QString> Channel::answerToQuery(const QString &mnemonic)
{
    if (!isServed(mnemonic))
        return std::nullopt;
    const int row = rowOf(mnemonic);
    return forClient(row, valueOf(row));
}

bool Channel::isHeldInLatin1(const QString &mnemonic) const
{
    Q_UNUSED(mnemonic)
    return false;
}

bool Channel::takesSet(const QString &mnemonic, const QString &data) const
{
    const int row = rowOf(mnemonic);
    const Catalogue::Flags flags = flagsOf(row);
    if (flags.testFlag(Catalogue::PassedOn))
        return true;
    // A set without data would be a query on the wire.
    return flags.testFlag(Catalogue::Served) && flags.testFlag(Catalogue::Settable) && !data.isEmpty() &&
           fromClient(row, data).has_value();
}

void Channel::carryOutSet(const RemoteCommand &set)
{
    const int row = rowOf(set.mnemonic());
    const QString value = fromClient(row, set.data()).value_or(set.data());
    if (flagsOf(row).testFlag(Catalogue::PassedOn))
        sendSet(row, { address(), set.mnemonic(), set.data(), set.isLatin1() });
    else
        submit(row, value, mayCardDiffer(row, value));
}

/// The text that the client gets for a value. A text that is no number is not changed.
QString Channel::forClient(int row, const QString &value) const
{
    if (!flagsOf(row).testFlag(Catalogue::InPercent))
        return value;
    bool isNumber = false;
    const double fraction = value.toDouble(&isNumber);
    return isNumber ? QString::number(fraction * kPercentPerUnit, 'g', 6) : value;
}

/// The value that the client's text stands for; none if it should be a number and is not.
std::optional<QString> Channel::fromClient(int row, const QString &text) const
{
    if (!flagsOf(row).testFlag(Catalogue::InPercent))
        return text;
    bool isNumber = false;
    const double percent = text.toDouble(&isNumber);
    if (!isNumber || !qIsFinite(percent))
        return std::nullopt;
    return QString::number(percent / kPercentPerUnit, 'g', 6);
}
