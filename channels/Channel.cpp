#include "channels/Channel.h"

#include "link/SerialPortController.h"

#include <algorithm>

Channel::Channel(QObject *parent, QLatin1StringView chanType, const QString &channel, SerialPortController *link,
                 Catalogue::Table catalogue)
    : Channel(parent, channel, chanType + channel, link, catalogue)
{
}

Channel::Channel(QObject *parent, const QString &channel, const QString &address, SerialPortController *link,
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

void Channel::SetSlaveChanList(const SerialPortController *link, const QString &className)
{
    std::copy_if(link->ChanList_begin(), link->ChanList_end(), std::back_inserter(m_slaveChannels),
                 [this, &className](const Channel *other) {
                     return QLatin1StringView(other->metaObject()->className()) == className &&
                            other->getChannel() != m_channel;
                 });
}

void Channel::RequestSettings()
{
    for (std::size_t row = 0; row < m_catalogue.size(); ++row) {
        if (m_catalogue[row].flags.testFlag(Catalogue::Queried))
            sendQuery(static_cast<int>(row));
    }
}

void Channel::sendQuery(int row)
{
    const Request request = queryOf(row);
    if (!request.mnemonic.isEmpty())
        m_link->AddCmdToTxmtCmdQueue(new StandardCommand(this, request.address, request.mnemonic, request.data,
                                                         StandardCommand::Queued, StandardCommand::Query,
                                                         StandardCommand::kTimeOutMs));
}

Channel::Request Channel::queryOf(int row) const { return { m_address, m_catalogue[std::size_t(row)].name, {} }; }

Channel::Request Channel::setOf(int row, const QString &value) const
{
    return { m_address, m_catalogue[std::size_t(row)].name, value };
}

int Channel::rowOf(const QString &mnemonic) const
{
    const auto row = std::find_if(m_catalogue.begin(), m_catalogue.end(),
                                  [&mnemonic](const Catalogue::Row &candidate) { return mnemonic == candidate.name; });
    return row != m_catalogue.end() ? static_cast<int>(row - m_catalogue.begin()) : -1;
}

void Channel::submit(int row, const QString &value)
{
    const Catalogue::Flags flags = m_catalogue[std::size_t(row)].flags;
    // While a set is unanswered, going back to the value held is a change like any other.
    const bool isHeld = normalized(row, value) == valueOf(row) && !hasPendingSet(row);
    if (isHeld && !flags.testFlag(Catalogue::AlwaysSent))
        return;
    const Request request = setOf(row, value);
    if (request.mnemonic.isEmpty())
        return;
    const StandardCommand &command = sendSet(row, request);
    if (flags.testFlag(Catalogue::ToSlaves))
        SlavingHandler(command);
}

const StandardCommand &Channel::sendSet(int row, const Request &request)
{
    auto *const command =
        new StandardCommand(ownerOfSets(), request.address, request.mnemonic, request.data, StandardCommand::Queued,
                            StandardCommand::Set, StandardCommand::kTimeOutMs);
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
    return std::find(m_pendingSets.begin(), m_pendingSets.end(), row) != m_pendingSets.end();
}

void Channel::SlavingHandler(const StandardCommand &command)
{
    if (!isSlaving())
        return;
    for (Channel *slave : std::as_const(m_slaveChannels)) // of the same class, so with the same rows
        slave->sendSet(m_pendingSets.value(&command), { slave->address(), command.mnemonic(), command.data() });
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

    if (isReport)
        CheckForSupportedCmd(command.responseAddress(), command.responseMnemonic(), command.responseData(), status,
                             type);
    if (isSetFinished) {
        m_pendingSets.remove(&command);
        CheckForSupportedCmd(command.address(), command.mnemonic(), command.data(), status, type);
    }
}

void Channel::CheckForSupportedCmd(const QString &address, const QString &mnemonic, const QString &data,
                                   StandardCommand::CommandStatus status, StandardCommand::CommandType type)
{
    const bool refused =
        type == StandardCommand::Set && (status == StandardCommand::Failed || status == StandardCommand::TimedOut);
    const Report report{ address, mnemonic, data, refused };
    if (const int row = rowOf(mnemonic); row >= 0)
        processReport(row, report);
    else
        processUnknown(report);
}

void Channel::processReport(int row, const Report &report)
{
    const bool onlyDifferent = m_catalogue[std::size_t(row)].flags.testFlag(Catalogue::OnlyDifferent);
    switch (m_catalogue[std::size_t(row)].kind) {
    case Catalogue::Kind::Status:
        if (!report.refused && (report.data != valueOf(row) || !onlyDifferent))
            store(row, report.data);
        break;
    case Catalogue::Kind::Setting:
    case Catalogue::Kind::Silent:
        applySetting(row, report);
        break;
    case Catalogue::Kind::Event:
        if (!report.refused)
            Q_EMIT SettingChanged(report.address, report.mnemonic, report.data);
        break;
    case Catalogue::Kind::Special:
        processSpecial(row, report);
        break;
    }
}

void Channel::applySetting(int row, const Report &report)
{
    const QString value = normalized(row, report.data);
    if (!report.refused && value != valueOf(row)) {
        store(row, value);
        settingStored(row);
    }
    if (m_catalogue[std::size_t(row)].kind != Catalogue::Kind::Silent)
        Q_EMIT SettingChanged(report.address, report.mnemonic, valueOf(row));
}

void Channel::store(int row, const QString &value)
{
    Value &held = m_values[row];
    if (!m_catalogue[std::size_t(row)].flags.testFlag(Catalogue::NoPrevious))
        held.previous = held.current;
    held.current = value;
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
