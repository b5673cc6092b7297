#include "channels/Channel.h"

#include "link/SerialPortController.h"

#include <algorithm>

Channel::Channel(QObject *parent, QLatin1StringView chanType, const QString &channel, SerialPortController *link,
                 Catalogue::Table catalogue)
    : QObject(parent)
    , m_link(link)
    , m_channel(channel)
    , m_address(chanType + channel)
    , m_catalogue(catalogue)
    , m_nameRow(Catalogue::find(catalogue, Commands::NAME))
    , m_slaveRow(Catalogue::find(catalogue, Commands::SLAVE))
{
    m_values.reserve(static_cast<qsizetype>(catalogue.size()));
    for (const Catalogue::Row &row : catalogue)
        m_values.append({ row.initial, row.initial });
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
    for (const Catalogue::Row &row : m_catalogue) {
        if (row.flags.testFlag(Catalogue::Queried))
            sendQuery(row.name);
    }
}

void Channel::sendQuery(QLatin1StringView mnemonic)
{
    m_link->AddCmdToTxmtCmdQueue(new StandardCommand(this, m_address, mnemonic, {}, StandardCommand::Queued,
                                                     StandardCommand::Query, StandardCommand::kTimeOutMs));
}

int Channel::rowOf(const QString &mnemonic) const
{
    const auto row = std::find_if(m_catalogue.begin(), m_catalogue.end(),
                                  [&mnemonic](const Catalogue::Row &candidate) { return mnemonic == candidate.name; });
    return row != m_catalogue.end() ? static_cast<int>(row - m_catalogue.begin()) : -1;
}

void Channel::submit(int row, const QString &value)
{
    if (value == valueOf(row))
        return;
    const StandardCommand &command = queueSet(row, value);
    if (m_catalogue[std::size_t(row)].flags.testFlag(Catalogue::ToSlaves))
        SlavingHandler(command);
}

const StandardCommand &Channel::queueSet(int row, const QString &value)
{
    auto *const command =
        new StandardCommand(ownerOfSets(), m_address, m_catalogue[std::size_t(row)].name, value,
                            StandardCommand::Queued, StandardCommand::Set, StandardCommand::kTimeOutMs);
    ++m_values[row].pendingSets;
    m_link->AddCmdToTxmtCmdQueue(command);
    return *command;
}

void Channel::setFinished(const StandardCommand &command)
{
    const int row = rowOf(command.mnemonic());
    if (row >= 0 && command.address() == m_address && m_values[row].pendingSets > 0)
        --m_values[row].pendingSets;
}

bool Channel::isSetPending(const QString &mnemonic) const
{
    const int row = rowOf(mnemonic);
    return row >= 0 && m_values[row].pendingSets > 0;
}

void Channel::SlavingHandler(const StandardCommand &command)
{
    if (!isSlaving())
        return;
    for (Channel *slave : std::as_const(m_slaveChannels))
        slave->queueSet(slave->rowOf(command.mnemonic()), command.data());
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
        setFinished(command);
        CheckForSupportedCmd(command.address(), command.mnemonic(), command.data(), status, type);
    }
}

void Channel::CheckForSupportedCmd(const QString &address, const QString &mnemonic, const QString &data,
                                   StandardCommand::CommandStatus status, StandardCommand::CommandType type)
{
    const int row = rowOf(mnemonic);
    if (row < 0)
        return;
    const bool refused =
        type == StandardCommand::Set && (status == StandardCommand::Failed || status == StandardCommand::TimedOut);
    processReport(row, address, data, refused);
}

void Channel::processReport(int row, const QString &address, const QString &data, bool refused)
{
    const Catalogue::Row &known = m_catalogue[std::size_t(row)];
    switch (known.kind) {
    case Catalogue::Kind::Status:
        if (!refused)
            store(row, data);
        break;
    case Catalogue::Kind::Setting:
    case Catalogue::Kind::Silent:
        if (!refused && data != valueOf(row)) {
            store(row, data);
            settingStored(row);
        }
        if (known.kind == Catalogue::Kind::Setting)
            Q_EMIT SettingChanged(address, known.name, valueOf(row));
        break;
    case Catalogue::Kind::Event:
        if (!refused)
            Q_EMIT SettingChanged(address, known.name, data);
        break;
    case Catalogue::Kind::Special:
        if (!refused)
            processSpecial(row, data);
        break;
    }
}

void Channel::store(int row, const QString &value)
{
    Value &held = m_values[row];
    if (!m_catalogue[std::size_t(row)].flags.testFlag(Catalogue::NoPrevious))
        held.previous = held.current;
    held.current = value;
}

void Channel::processSpecial(int row, const QString &data)
{
    Q_UNUSED(row)
    Q_UNUSED(data)
}

void Channel::settingStored(int row) { Q_UNUSED(row) }
