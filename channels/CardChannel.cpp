#include "channels/CardChannel.h"

#include "link/ChannelLink.h"

#include <algorithm>

CardChannel::CardChannel(QObject *parent, const QString &channel, const QString &address, ChannelLink *link,
                         Catalogue::Table catalogue)
    : QObject(parent)
    , m_link(link)
    , m_channel(channel)
    , m_address(address)
    , m_cache(catalogue)
{
}

QString CardChannel::previousValue(QLatin1StringView mnemonic) const
{
    const int row = Catalogue::find(catalogue(), mnemonic);
    return row >= 0 ? m_cache.previous(row) : QString();
}

void CardChannel::requestSettings(StandardCommand::Priority priority)
{
    for (int row = 0; row < static_cast<int>(catalogue().size()); ++row) {
        if (flagsOf(row).testFlag(Catalogue::Queried))
            sendQuery(row, priority);
    }
}

bool CardChannel::isReporting() const
{
    return std::ranges::any_of(catalogue(), [](const Catalogue::Row &row) { return row.flags & Catalogue::ToStatus; });
}

void CardChannel::sendQuery(int row, StandardCommand::Priority priority)
{
    const Request request = queryOf(row);
    if (!request.mnemonic.isEmpty())
        sendQuery(request, priority);
}

const StandardCommand &CardChannel::sendQuery(const Request &request, StandardCommand::Priority priority)
{
    auto *const command =
        new StandardCommand(StandardCommand::query(this, request.address, request.mnemonic, request.data));
    command->setPriority(priority);
    m_link->AddCmdToTxmtCmdQueue(command);
    return *command;
}

CardChannel::Request CardChannel::queryOf(int row) const { return { m_address, m_cache.row(row).name, {} }; }

CardChannel::Request CardChannel::setOf(int row, const QString &value) const
{
    return { m_address, m_cache.row(row).name, value };
}

bool CardChannel::isWrittenWhole(int row) const
{
    Q_UNUSED(row)
    return true;
}

void CardChannel::submit(int row, const QString &value, bool evenIfHeld)
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

bool CardChannel::isInDoubt(const QString &mnemonic) const
{
    const int row = rowOf(mnemonic);
    return row != kNoRow && isInDoubt(row, valueOf(row));
}

bool CardChannel::mayCardDiffer(int row, const QString &value) const
{
    return m_link->isStale() || isInDoubt(row, value);
}

bool CardChannel::isInDoubt(int row, const QString &value) const
{
    const Request request = setOf(row, value);
    return m_link->isInDoubt(StandardCommand::set(nullptr, request.address, request.mnemonic, request.data));
}

void CardChannel::write(int row, const QString &value)
{
    const Request request = setOf(row, value);
    if (request.mnemonic.isEmpty())
        return;
    const StandardCommand &command = sendSet(row, request);
    if (flagsOf(row).testFlag(Catalogue::ToSlaves))
        SlavingHandler(command);
}

/// The neighbouring bits are known now, or the value cannot be written.
void CardChannel::writeWanted(const Wanted &wanted, bool isKnown)
{
    if (isKnown) {
        write(wanted.row, wanted.value);
    } else {
        Q_EMIT SettingChanged(m_address, m_cache.row(wanted.row).name, valueOf(wanted.row));
        mirror(wanted.row, valueOf(wanted.row), false);
    }
}

const StandardCommand &CardChannel::sendSet(int row, const Request &request)
{
    auto *const command =
        new StandardCommand(StandardCommand::set(ownerOfSets(), request.address, request.mnemonic, request.data));
    command->setLatin1(request.isLatin1);
    m_pendingSets.insert(command, row);
    m_link->AddCmdToTxmtCmdQueue(command);
    return *command;
}

bool CardChannel::isSetPending(const QString &mnemonic) const
{
    const int row = rowOf(mnemonic);
    return row >= 0 && hasPendingSet(row);
}

bool CardChannel::hasPendingSet(int row) const
{
    return std::ranges::find(m_pendingSets, row) != m_pendingSets.end() ||
           std::ranges::find(m_wanted, row, &Wanted::row) != m_wanted.end();
}

void CardChannel::ProcessCmd(const StandardCommand &command)
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

void CardChannel::endSet(const StandardCommand &command)
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

void CardChannel::CheckForSupportedCmd(const QString &address, const QString &mnemonic, const QString &data,
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

void CardChannel::processReport(int row, const Report &report)
{
    switch (m_cache.row(row).kind) {
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

void CardChannel::applySetting(int row, const Report &report)
{
    takeSetting(row, report);
    if (m_cache.row(row).kind != Catalogue::Kind::Silent)
        Q_EMIT SettingChanged(report.address, report.mnemonic, valueOf(row));
    mirror(row, valueOf(row), report.isAnswer);
}

void CardChannel::takeSetting(int row, const Report &report)
{
    const QString value = normalized(row, report.data);
    if (report.refused || value == valueOf(row))
        return;
    store(row, value);
    settingStored(row);
}

bool CardChannel::isSameValue(int row, const QString &value, const QString &held) const
{
    Q_UNUSED(row)
    return value == held;
}

QString CardChannel::normalized(int row, const QString &value) const
{
    Q_UNUSED(row)
    return value;
}

void CardChannel::processSpecial(int row, const Report &report)
{
    Q_UNUSED(row)
    Q_UNUSED(report)
}

void CardChannel::processUnknown(const Report &report) { Q_UNUSED(report) }

void CardChannel::settingStored(int row) { Q_UNUSED(row) }
