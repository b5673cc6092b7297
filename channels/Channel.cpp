#include "channels/Channel.h"

#include "link/ChannelLink.h"
#include "link/RemoteCommand.h"

#include <QtNumeric>

#include <algorithm>

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
    : QObject(parent)
    , m_link(link)
    , m_channel(channel)
    , m_address(address)
    , m_catalogue(catalogue)
    , m_nameRow(Catalogue::find(catalogue, Commands::NAME))
    , m_slaveRow(Catalogue::find(catalogue, Commands::SLAVE))
{
    m_values.reserve(static_cast<qsizetype>(catalogue.size()));
    for (const Catalogue::Row &row : catalogue)
        m_values.append({ row.initial, row.initialPrevious });
}

QString Channel::previousValue(QLatin1StringView mnemonic) const
{
    const int row = Catalogue::find(m_catalogue, mnemonic);
    return row >= 0 ? m_values[row].previous : QString();
}

void Channel::SetSlaveChanList(const ChannelLink *link, const QString &className)
{
    std::ranges::copy_if(
        link->channels(), std::back_inserter(m_slaveChannels), [this, &className](const Channel *other) {
            return QLatin1StringView(other->metaObject()->className()) == className && other->getChannel() != m_channel;
        });
}

void Channel::requestSettings(StandardCommand::Priority priority)
{
    for (std::size_t row = 0; row < m_catalogue.size(); ++row) {
        if (m_catalogue[row].flags.testFlag(Catalogue::Queried))
            sendQuery(static_cast<int>(row), priority);
    }
}

bool Channel::isReporting() const
{
    return std::ranges::any_of(m_catalogue, [](const Catalogue::Row &row) { return row.flags & Catalogue::ToStatus; });
}

void Channel::sendQuery(int row, StandardCommand::Priority priority)
{
    const Request request = queryOf(row);
    if (!request.mnemonic.isEmpty())
        sendQuery(request, priority);
}

const StandardCommand &Channel::sendQuery(const Request &request, StandardCommand::Priority priority)
{
    auto *const command =
        new StandardCommand(StandardCommand::query(this, request.address, request.mnemonic, request.data));
    command->setPriority(priority);
    m_link->AddCmdToTxmtCmdQueue(command);
    return *command;
}

Channel::Request Channel::queryOf(int row) const { return { m_address, m_catalogue[std::size_t(row)].name, {} }; }

Channel::Request Channel::setOf(int row, const QString &value) const
{
    return { m_address, m_catalogue[std::size_t(row)].name, value };
}

bool Channel::isWrittenWhole(int row) const
{
    Q_UNUSED(row)
    return true;
}

int Channel::rowOf(const QString &mnemonic) const
{
    const auto row = std::find_if(m_catalogue.begin(), m_catalogue.end(),
                                  [&mnemonic](const Catalogue::Row &candidate) { return mnemonic == candidate.name; });
    return row != m_catalogue.end() ? static_cast<int>(row - m_catalogue.begin()) : kNoRow;
}

Catalogue::Flags Channel::flagsOf(int row) const
{
    return row == kNoRow ? Catalogue::Flags() : m_catalogue[std::size_t(row)].flags;
}

void Channel::submit(int row, const QString &value, bool evenIfHeld)
{
    const Catalogue::Flags flags = flagsOf(row);
    // While a set is unanswered, going back to the current value is a change like any other.
    const bool isHeld = isSameValue(row, value, valueOf(row)) && !hasPendingSet(row);
    if (isHeld && !evenIfHeld && !flags.testFlag(Catalogue::AlwaysSent))
        return;
    if (!isWrittenWhole(row) && mayCardDiffer(row, value))
        m_wanted.insert(&sendQuery(queryOf(row)), { row, value });
    else
        write(row, value);
}

bool Channel::isInDoubt(const QString &mnemonic) const
{
    const int row = rowOf(mnemonic);
    return row != kNoRow && isInDoubt(row, valueOf(row));
}

/// Whether the card may hold something else for @p row than the cache does.
bool Channel::mayCardDiffer(int row, const QString &value) const { return m_link->isStale() || isInDoubt(row, value); }

bool Channel::isInDoubt(int row, const QString &value) const
{
    const Request request = setOf(row, value);
    return m_link->isInDoubt(StandardCommand::set(nullptr, request.address, request.mnemonic, request.data));
}

void Channel::write(int row, const QString &value)
{
    const Request request = setOf(row, value);
    if (request.mnemonic.isEmpty())
        return;
    const StandardCommand &command = sendSet(row, request);
    if (flagsOf(row).testFlag(Catalogue::ToSlaves))
        SlavingHandler(command);
}

/// The neighbouring bits are known now, or the value cannot be written.
void Channel::writeWanted(const Wanted &wanted, bool isKnown)
{
    if (isKnown) {
        write(wanted.row, wanted.value);
    } else {
        Q_EMIT SettingChanged(m_address, m_catalogue[std::size_t(wanted.row)].name, valueOf(wanted.row));
        mirror(wanted.row, valueOf(wanted.row), false);
    }
}

const StandardCommand &Channel::sendSet(int row, const Request &request)
{
    auto *const command =
        new StandardCommand(StandardCommand::set(ownerOfSets(), request.address, request.mnemonic, request.data));
    command->setLatin1(request.isLatin1);
    m_pendingSets.insert(command, row);
    m_link->AddCmdToTxmtCmdQueue(command);
    return *command;
}

bool Channel::isSetPending(const QString &mnemonic) const
{
    const int row = rowOf(mnemonic);
    return row >= 0 && hasPendingSet(row);
}

bool Channel::hasPendingSet(int row) const
{
    return std::ranges::find(m_pendingSets, row) != m_pendingSets.end() ||
           std::ranges::find(m_wanted, row, &Wanted::row) != m_wanted.end();
}

void Channel::SlavingHandler(const StandardCommand &command)
{
    if (!isSlaving())
        return;
    for (Channel *slave : std::as_const(m_slaveChannels)) // of the same class, so with the same rows
        slave->sendSet(m_pendingSets.value(&command, kNoRow),
                       { slave->address(), command.mnemonic(), command.data(), command.isLatin1() });
}

void Channel::ProcessCmd(const StandardCommand &command)
{
    const auto status = command.status();
    const auto type = command.type();
    const bool isReport = (type == StandardCommand::Query && status == StandardCommand::Completed) ||
                          (type == StandardCommand::Set && status == StandardCommand::Received);
    const bool isSetFinished =
        type == StandardCommand::Set && (status == StandardCommand::Completed || status == StandardCommand::Failed ||
                                         status == StandardCommand::TimedOut);

    if (status == StandardCommand::Received && isReport && hasFlag(command.responseMnemonic(), Catalogue::ToStatus))
        link()->noteReport();
    if (isReport)
        CheckForSupportedCmd(command.responseAddress(), command.responseMnemonic(), command.responseData(), status,
                             type, command.isLatin1());
    if (isSetFinished)
        endSet(command);
    if (m_wanted.contains(&command))
        writeWanted(m_wanted.take(&command), status == StandardCommand::Completed);
}

void Channel::endSet(const StandardCommand &command)
{
    const auto pending = m_pendingSets.constFind(&command);
    const bool isOwn = pending != m_pendingSets.cend();
    const int row = isOwn ? *pending : kNoRow;
    if (isOwn)
        m_pendingSets.erase(pending);
    CheckForSupportedCmd(command.address(), command.mnemonic(), command.data(), command.status(), command.type(),
                         command.isLatin1());
    if (isOwn && !(flagsOf(row) & (Catalogue::PassedOn | Catalogue::Order)))
        m_link->noteSet(command);
}

void Channel::CheckForSupportedCmd(const QString &address, const QString &mnemonic, const QString &data,
                                   StandardCommand::CommandStatus status, StandardCommand::CommandType type,
                                   bool isLatin1)
{
    const bool refused =
        type == StandardCommand::Set && (status == StandardCommand::Failed || status == StandardCommand::TimedOut);
    const Report report{ address, mnemonic, data, refused, type == StandardCommand::Query, isLatin1 };
    if (const int row = rowOf(mnemonic); row >= 0)
        processReport(row, report);
    else
        processUnknown(report);
}

void Channel::processReport(int row, const Report &report)
{
    switch (m_catalogue[std::size_t(row)].kind) {
    case Catalogue::Kind::Status:
        if (!report.refused && (report.data != valueOf(row) || !flagsOf(row).testFlag(Catalogue::OnlyDifferent)))
            store(row, report.data);
        mirror(row, valueOf(row), report.isAnswer, report.isLatin1);
        break;
    case Catalogue::Kind::Setting:
    case Catalogue::Kind::Silent:
        applySetting(row, report);
        break;
    case Catalogue::Kind::Event:
        if (!report.refused)
            Q_EMIT SettingChanged(report.address, report.mnemonic, report.data);
        mirror(row, report.data, report.isAnswer, report.isLatin1);
        break;
    case Catalogue::Kind::Relayed:
        mirror(row, report.data, report.isAnswer, report.isLatin1);
        break;
    case Catalogue::Kind::Special:
        processSpecial(row, report);
        break;
    }
}

void Channel::applySetting(int row, const Report &report)
{
    takeSetting(row, report);
    if (m_catalogue[std::size_t(row)].kind != Catalogue::Kind::Silent)
        Q_EMIT SettingChanged(report.address, report.mnemonic, valueOf(row));
    mirror(row, valueOf(row), report.isAnswer);
}

void Channel::takeSetting(int row, const Report &report)
{
    const QString value = normalized(row, report.data);
    if (report.refused || value == valueOf(row))
        return;
    store(row, value);
    settingStored(row);
}

void Channel::store(int row, const QString &value)
{
    Value &held = m_values[row];
    if (!flagsOf(row).testFlag(Catalogue::NoPrevious))
        held.previous = held.current;
    held.current = value;
}

bool Channel::isSameValue(int row, const QString &value, const QString &held) const
{
    Q_UNUSED(row)
    return value == held;
}

QString Channel::normalized(int row, const QString &value) const
{
    Q_UNUSED(row)
    return value;
}

void Channel::processSpecial(int row, const Report &report)
{
    Q_UNUSED(row)
    Q_UNUSED(report)
}

void Channel::processUnknown(const Report &report) { Q_UNUSED(report) }

void Channel::settingStored(int row) { Q_UNUSED(row) }

// Remote client

void Channel::mirror(int row, const QString &data, bool isAnswer, bool isLatin1)
{
    if (isAnswer && hasPendingSet(row))
        return; // the client that has just set another value would take it for the answer
    const Catalogue::Row &entry = m_catalogue[std::size_t(row)];
    const bool isForRemote = entry.flags.testFlag(Catalogue::ToRemote);
    if (!isForRemote && !entry.flags.testFlag(Catalogue::ToStatus))
        return;
    auto message = std::make_unique<RemoteCommand>(this, m_address, entry.name, forClient(row, data),
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
        sendSet(row, { m_address, set.mnemonic(), set.data(), set.isLatin1() });
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
