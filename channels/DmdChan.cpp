#include "channels/DmdChan.h"

#include "channels/DataSource.h"
#include "channels/UniversalChan.h"
#include "link/ChannelLink.h"
#include "link/EyeConstData.h"
#include "link/RemoteCommand.h"

using namespace Qt::StringLiterals;

namespace {

/// Bandwidths in MHz with their unit, from numbers in Hz.
QStringList bandwidthNames(const QString &hertz)
{
    constexpr double kHertzPerMegahertz = 1'000'000;
    QStringList names;
    for (const QString &part : hertz.split(u','))
        names.append(QString::number(part.toDouble() / kHertzPerMegahertz, 'g', 6) + " MHz"_L1);
    return names;
}

/// Name of a mode from its entry in the card's list, "code NAME"; some names have two words.
QString modeName(const QString &entry)
{
    const QStringList words = entry.split(u' ');
    if (words.size() == 1)
        return entry;
    const QString &name = words[1];
    if (name == "TRELLIS"_L1 || name == "MULTI-H"_L1)
        return name + u' ' + words.value(2);
    return name;
}

} // namespace

DmdChan::DmdChan(QObject *parent, const QString &channel, ChannelLink *link, bool directDqmCommands)
    : DmdSettings(parent, ChanType, channel, link, DmdCatalogue::kTable)
    , m_registers(directDqmCommands)
    , m_ifFilters{ u"Auto"_s, u"0"_s, u"1"_s, u"2"_s, u"3"_s }
{
}

bool DmdChan::isSlaving() const { return getSLAVE() == "1"_L1 || getSLAVE() == "2"_L1; }

// Requests

void DmdChan::requestSettings(StandardCommand::Priority priority)
{
    m_unknownSettings.forgetExpected();
    Channel::requestSettings(priority);
}

Channel::Request DmdChan::queryOf(int row) const
{
    if (row == at(Commands::DSRC))
        return { UniversalChan::Address, DataSource::mnemonicOf(getChannel()), {} };
    if (const auto *const reg = DmdRegisters::ofRow(row))
        return { address(), Commands::RDRG, reg->number };
    const bool isDirectOnly = row == at(Commands::DQMON) || row == at(Commands::DQMFS) || row == at(Commands::DEQE);
    if (isDirectOnly && !m_registers.hasDirectCommands())
        return {};
    return Channel::queryOf(row);
}

Channel::Request DmdChan::setOf(int row, const QString &value) const
{
    if (row == at(Commands::DSRC))
        return { UniversalChan::Address, DataSource::mnemonicOf(getChannel()), value };
    const auto *const reg = DmdRegisters::ofRow(row);
    if (!reg)
        return Channel::setOf(row, value);
    if (m_registers.isDirect(*reg))
        return { address(), reg->directCommand, value };
    return { address(), Commands::CDRG, reg->number + m_registers.textFor(*reg, value) };
}

bool DmdChan::isWrittenWhole(int row) const
{
    const auto *const reg = DmdRegisters::ofRow(row);
    return !reg || m_registers.isWrittenWhole(*reg);
}

/// The card may hold more decimals of the modulation index than are kept here.
bool DmdChan::isSameValue(int row, const QString &value, const QString &held) const
{
    if (row != at(Commands::TMID))
        return Channel::isSameValue(row, value, held);
    bool isNumber = false;
    bool isHeldNumber = false;
    const double number = value.toDouble(&isNumber);
    const double heldNumber = held.toDouble(&isHeldNumber);
    return isNumber && isHeldNumber && number == heldNumber;
}

QString DmdChan::normalized(int row, const QString &value) const
{
    if (row == at(Commands::TMID)) {
        const QString number = QString::number(value.toDouble(), 'f', 2);
        return number == "-0.00"_L1 ? u"0.00"_s : number;
    }
    return value;
}

// Answers and reports

void DmdChan::ProcessCmd(const StandardCommand &command)
{
    if (command.type() == StandardCommand::Query && command.data().isEmpty())
        m_openQuestions.removeOne(command.mnemonic());
    Channel::ProcessCmd(command);
}

void DmdChan::processSpecial(int row, const Report &report)
{
    if (row == at(Commands::RDRG) || row == at(Commands::CDRG))
        processRegister(report);
    else if (row == at(Commands::DQMON) || row == at(Commands::DQMFS) || row == at(Commands::DEQE))
        processDirect(report);
    else if (report.mnemonic == DataSource::mnemonicOf(getChannel()))
        processDataSource(report);
}

/// The panel knows the source by the mnemonic on the system address, the remote client as a setting of this channel.
void DmdChan::processDataSource(const Report &report)
{
    takeSetting(at(Commands::DSRC), report);
    Q_EMIT SettingChanged(report.address, report.mnemonic, getDSRC());
    mirror(at(Commands::DSRC), getDSRC(), report.isAnswer);
}

/// An older card's own command for what the others hold in a register.
void DmdChan::processDirect(const Report &report)
{
    const auto *const reg = DmdRegisters::ofDirectCommand(report.mnemonic);
    applySetting(reg->row, { report.address, DmdCatalogue::kTable[std::size_t(reg->row)].name, report.data,
                             report.refused, report.isAnswer });
}

void DmdChan::processUnknown(const Report &report)
{
    if (!report.refused && !report.data.isEmpty()) {
        m_unknownSettings.report(report.mnemonic, report.data, report.isLatin1);
        sendCmdToRemote(report);
    } else if (report.refused) {
        m_unknownSettings.refuse(report.mnemonic);
    }
}

void DmdChan::settingStored(int row)
{
    if (row == at(Commands::DMLS)) {
        SetUpDemodModesList(getDMLS());
    } else if (row == at(Commands::IFFL)) {
        m_ifFilters = QStringList(u"Auto"_s) + bandwidthNames(getIFFL());
    } else if (row == at(Commands::VFFL)) {
        m_videoFilters = bandwidthNames(getVFFL());
    } else if (row == at(Commands::VFLS)) {
        m_videoFilterBandwidths = getVFLS().split(u',');
    } else if (row == at(Commands::DDCF)) {
        sendQuery(at(Commands::IFFL)); // the filters follow the new frequency
        sendQuery(at(Commands::VFFL));
    }
}

void DmdChan::SetUpDemodModesList(const QString &modes)
{
    m_demodModes.clear();
    for (const QString &entry : modes.split(u','))
        m_demodModes.append(modeName(entry));
}

// Registers

void DmdChan::processRegister(const Report &report)
{
    constexpr auto kNumberSize = DmdRegisters::kNumberSize;
    const QString number = report.data.left(kNumberSize);
    if (!report.refused && report.mnemonic == Commands::CDRG && report.data.size() <= kNumberSize) {
        sendQuery({ address(), Commands::RDRG, number }); // what was written is not known here
        return;
    }
    const auto *const reg = DmdRegisters::numbered(number);
    if (!reg || !m_registers.isRead(*reg)) {
        applySetting(at(Commands::RDRG),
                     { report.address, Commands::RDRG, report.data, report.refused, report.isAnswer });
        return;
    }
    const bool isChanged =
        !report.refused && report.data.size() > kNumberSize && takeRegister(*reg, report.data.sliced(kNumberSize));
    // The end of a write is reported under the setting's own name, changed or not: whoever set it waits for that.
    if (isChanged || report.mnemonic == Commands::CDRG) {
        Q_EMIT SettingChanged(report.address, DmdCatalogue::kTable[std::size_t(reg->row)].name, valueOf(reg->row));
        mirror(reg->row, valueOf(reg->row), report.isAnswer);
        return;
    }
    const QString whole = report.refused ? number + m_registers.text(*reg) : report.data;
    const QString data = reg->form == DmdRegisters::Register::Form::Enable ? valueOf(reg->row) : whole;
    Q_EMIT SettingChanged(report.address, Commands::RDRG, data);
    mirror(at(Commands::RDRG), data, report.isAnswer);
}

/// Takes a register's text; returns whether its setting has changed.
bool DmdChan::takeRegister(const DmdRegisters::Register &reg, const QString &text)
{
    m_registers.take(reg, text);
    const QString setting = m_registers.setting(reg);
    if (setting == valueOf(reg.row))
        return false;
    store(reg.row, setting);
    return true;
}

QString DmdChan::getDREG(const QString &number) const
{
    const auto *const reg = DmdRegisters::numbered(number);
    return reg ? m_registers.text(*reg) : valueOf(at(Commands::RDRG));
}

void DmdChan::setDREG(const QString &number, const QString &value)
{
    const auto *const reg = DmdRegisters::numbered(number);
    if (reg && value != m_registers.text(*reg))
        sendSet(reg->row, { address(), Commands::CDRG, number + value });
}

void DmdChan::setDREG(const QString &text) { sendSet(at(Commands::RDRG), { address(), Commands::CDRG, text }); }

// Eye link

void DmdChan::ProcessEyeConstData(const EyeConstData &data)
{
    m_lastEyeBlock = data.bytes();
    auto block = std::make_unique<RemoteCommand>(this, address(), RemoteCommands::EYEP, data.text(),
                                                 RemoteCommand::kPushTimeOutMs, RemoteCommand::Forwarded, true);
    block->setReplaceable(false);
    pushToStatus(std::move(block));
}

// Remote client

std::optional<QString> DmdChan::answerToQuery(const QString &mnemonic)
{
    if (isServed(mnemonic))
        return Channel::answerToQuery(mnemonic);
    if (mnemonic == Commands::DREG)
        return valueOf(at(Commands::RDRG));
    if (mnemonic == Commands::SLAVE)
        return getSLAVE();
    if (const auto *const reg = DmdRegisters::ofDirectCommand(mnemonic))
        return valueOf(reg->row);
    const bool isAsked = isCatalogued(mnemonic) || !m_unknownSettings.contains(mnemonic);
    const bool isOpen = m_openQuestions.contains(mnemonic);
    if (mnemonic.isEmpty() || (isAsked && !isOpen && m_openQuestions.size() >= kMaxOpenQuestions))
        return std::nullopt;
    if (isAsked && !isOpen)
        askCard(mnemonic);
    if (!isCatalogued(mnemonic))
        return unknownValue(mnemonic);
    if (mnemonic == Commands::RDRG || mnemonic == Commands::CDRG)
        return valueOf(at(Commands::RDRG));
    return mnemonic == DataSource::mnemonicOf(getChannel()) ? getDSRC() : QString();
}

bool DmdChan::isHeldInLatin1(const QString &mnemonic) const { return m_unknownSettings.isLatin1(mnemonic); }

/// Low priority, because an unknown mnemonic blocks the line for its time-out.
void DmdChan::askCard(const QString &mnemonic)
{
    m_openQuestions.append(mnemonic);
    if (!isCatalogued(mnemonic))
        m_unknownSettings.expect(mnemonic);
    sendQuery({ address(), mnemonic, {} }, StandardCommand::Priority::Background);
}

bool DmdChan::takesSet(const QString &mnemonic, const QString &data) const
{
    if (isServed(mnemonic))
        return !isSettable(mnemonic) || Channel::takesSet(mnemonic, data);
    if (mnemonic == Commands::DREG)
        return !data.isEmpty();
    return !mnemonic.isEmpty() && !(isCatalogued(mnemonic) && data.isEmpty());
}

void DmdChan::carryOutSet(const RemoteCommand &set)
{
    const QString &mnemonic = set.mnemonic();
    if (isServed(mnemonic)) {
        if (isSettable(mnemonic))
            Channel::carryOutSet(set);
    } else if (mnemonic == Commands::DREG) {
        setDREG(set.data());
    } else {
        if (!isCatalogued(mnemonic))
            m_unknownSettings.request(mnemonic, set.data(), set.isLatin1());
        sendCmdToLocal(set);
    }
}

/// A set without data is a query on the wire, which concerns this channel alone.
void DmdChan::sendCmdToLocal(const RemoteCommand &set)
{
    const Request request{ address(), set.mnemonic(), set.data(), set.isLatin1() };
    if (request.data.isEmpty())
        sendQuery(request);
    else
        SlavingHandler(sendSet(kNoRow, request));
}

void DmdChan::sendCmdToRemote(const Report &report)
{
    auto message = std::make_unique<RemoteCommand>(this, report.address, report.mnemonic, report.data, true);
    message->setLatin1(report.isLatin1);
    message->setReplaceable(false);
    pushToRemote(std::move(message));
}
