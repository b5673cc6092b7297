#include "channels/DmdChan.h"

#include "channels/UniversalChan.h"
#include "link/ChannelLink.h"
#include "link/EyeConstData.h"
#include "link/RemoteCommand.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr uint kDqmBits = 0x30;
constexpr uint kEqualizerBit = 0x4000;
constexpr qsizetype kNumberSize = 2;
constexpr int kValueSize = 4;

QString hexDigits(uint value) { return u"%1"_s.arg(value & 0xffff, kValueSize, 16, QChar(u'0')); }

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
    : Channel(parent, ChanType, channel, link, kCatalogue)
    , m_directDqmCommands(directDqmCommands)
    , m_ifFilters{ u"Auto"_s, u"0"_s, u"1"_s, u"2"_s, u"3"_s }
{
    m_registers.fill(u"Unknown"_s);
}

bool DmdChan::isSlaving() const { return getSLAVE() == "1"_L1 || getSLAVE() == "2"_L1; }

/// Mnemonic on the system address that chooses this channel's data source; empty if the system knows none for it.
QString DmdChan::dataSourceMnemonic() const
{
    const QString mnemonic = "SDM"_L1 + getChannel();
    const bool isKnown = mnemonic == Commands::SDM1 || mnemonic == Commands::SDM2 || mnemonic == Commands::SDM3;
    return isKnown ? mnemonic : QString();
}

// Requests

void DmdChan::requestSettings(StandardCommand::Priority priority)
{
    // What the card did not tell may have been asked while it was not there.
    m_unknownValues.removeIf([](const auto &entry) { return entry.value().told.isEmpty(); });
    Channel::requestSettings(priority);
}

Channel::Request DmdChan::queryOf(int row) const
{
    if (row == at(Commands::DSRC))
        return { UniversalChan::Address, dataSourceMnemonic(), {} };
    if (const auto index = registerOfRow(row); index >= 0)
        return { address(), Commands::RDRG, kRegisters[std::size_t(index)].number };
    const bool isDirectOnly = row == at(Commands::DQMON) || row == at(Commands::DQMFS) || row == at(Commands::DEQE);
    if (isDirectOnly && !m_directDqmCommands)
        return {};
    return Channel::queryOf(row);
}

Channel::Request DmdChan::setOf(int row, const QString &value) const
{
    if (row == at(Commands::DSRC))
        return { UniversalChan::Address, dataSourceMnemonic(), value };
    const auto index = registerOfRow(row);
    if (index < 0)
        return Channel::setOf(row, value);
    const Register &reg = kRegisters[std::size_t(index)];
    if (m_directDqmCommands && !reg.directMnemonic.isEmpty())
        return { address(), reg.directMnemonic, value };
    return { address(), Commands::CDRG, reg.number + registerTextFor(index, value) };
}

bool DmdChan::isWrittenWhole(int row) const
{
    const auto index = registerOfRow(row);
    if (index < 0)
        return true;
    const Register &reg = kRegisters[std::size_t(index)];
    return (m_directDqmCommands && !reg.directMnemonic.isEmpty()) || reg.form == RegisterForm::Digits ||
           reg.form == RegisterForm::Decimal;
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
    else if (report.mnemonic == dataSourceMnemonic())
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
    for (const Register &reg : kRegisters) {
        if (report.mnemonic == reg.directMnemonic)
            applySetting(reg.row, { report.address, kCatalogue[std::size_t(reg.row)].name, report.data, report.refused,
                                    report.isAnswer });
    }
}

void DmdChan::processUnknown(const Report &report)
{
    if (!report.refused && !report.data.isEmpty()) {
        rememberUnknown(report.mnemonic, { report.data, report.data, report.isLatin1 });
        sendCmdToRemote(report);
    } else if (const auto entry = m_unknownValues.find(report.mnemonic);
               report.refused && entry != m_unknownValues.end()) {
        if (entry->inForce.isNull())
            m_unknownValues.erase(entry); // the next query asks the card
        else
            entry->told = entry->inForce;
    }
}

void DmdChan::rememberUnknown(const QString &mnemonic, const UnknownValue &value)
{
    if (m_unknownValues.contains(mnemonic) || m_unknownValues.size() < kMaxUnknownValues)
        m_unknownValues.insert(mnemonic, value);
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

qsizetype DmdChan::registerOfRow(int row)
{
    const auto reg =
        std::find_if(kRegisters.begin(), kRegisters.end(), [row](const Register &r) { return r.row == row; });
    return reg != kRegisters.end() ? reg - kRegisters.begin() : -1;
}

qsizetype DmdChan::registerNumbered(QStringView number)
{
    const auto reg = std::find_if(kRegisters.begin(), kRegisters.end(), [number](const Register &r) {
        return number.compare(r.number, Qt::CaseInsensitive) == 0;
    });
    return reg != kRegisters.end() ? reg - kRegisters.begin() : -1;
}

/// Whether replies about the register tell its setting. What an older card has a query of its own for, they do not,
/// the equalizer aside.
bool DmdChan::isRead(qsizetype index) const
{
    if (index < 0)
        return false;
    const Register &reg = kRegisters[std::size_t(index)];
    return !m_directDqmCommands || reg.directMnemonic.isEmpty() || reg.form == RegisterForm::Enable;
}

QString DmdChan::settingIn(const Register &reg, const QString &raw)
{
    const uint value = raw.toUInt(nullptr, 16);
    switch (reg.form) {
    case RegisterForm::DqmBits:
        return (value & kDqmBits) == kDqmBits ? u"1"_s : u"0"_s;
    case RegisterForm::Enable:
        return value != 0 ? u"1"_s : u"0"_s;
    case RegisterForm::Digits:
        return raw;
    case RegisterForm::Decimal:
        return QString::number(value);
    }
    Q_UNREACHABLE();
}

/// Register text that holds @p setting and leaves the register's other bits alone.
QString DmdChan::registerTextFor(qsizetype index, const QString &setting) const
{
    const uint held = m_registers[std::size_t(index)].toUInt(nullptr, 16);
    const bool on = setting == "1"_L1;
    switch (kRegisters[std::size_t(index)].form) {
    case RegisterForm::DqmBits:
        return hexDigits(on ? held | kDqmBits : held & ~kDqmBits);
    case RegisterForm::Enable:
        return hexDigits(on ? held | kEqualizerBit : 0); // any bit enables it
    case RegisterForm::Digits:
    case RegisterForm::Decimal:
        return setting;
    }
    Q_UNREACHABLE();
}

void DmdChan::processRegister(const Report &report)
{
    const QString number = report.data.left(kNumberSize);
    if (!report.refused && report.mnemonic == Commands::CDRG && report.data.size() <= kNumberSize) {
        sendQuery({ address(), Commands::RDRG, number }); // nothing was written that could be known here
        return;
    }
    const auto index = registerNumbered(number);
    if (!isRead(index)) {
        applySetting(at(Commands::RDRG),
                     { report.address, Commands::RDRG, report.data, report.refused, report.isAnswer });
        return;
    }
    const Register &reg = kRegisters[std::size_t(index)];
    const QString own = kCatalogue[std::size_t(reg.row)].name;
    QString &raw = m_registers[std::size_t(index)];
    bool changed = false;
    if (!report.refused && report.data.size() > kNumberSize) {
        raw = report.data.mid(kNumberSize, kValueSize);
        const QString setting = settingIn(reg, raw);
        changed = setting != valueOf(reg.row);
        if (changed)
            store(reg.row, setting);
    }
    // The end of a write is told under the setting's own name, changed or not: whoever asked for it waits for that.
    if (changed || report.mnemonic == Commands::CDRG) {
        Q_EMIT SettingChanged(report.address, own, valueOf(reg.row));
        mirror(reg.row, valueOf(reg.row), report.isAnswer);
    } else {
        const QString whole = report.refused ? number + raw : report.data;
        const QString data = reg.form == RegisterForm::Enable ? valueOf(reg.row) : whole;
        Q_EMIT SettingChanged(report.address, Commands::RDRG, data);
        mirror(at(Commands::RDRG), data, report.isAnswer);
    }
}

QString DmdChan::getDREG(const QString &number) const
{
    const auto index = registerNumbered(number);
    return index >= 0 ? m_registers[std::size_t(index)] : valueOf(at(Commands::RDRG));
}

void DmdChan::setDREG(const QString &number, const QString &value)
{
    const auto index = registerNumbered(number);
    if (index >= 0 && value != m_registers[std::size_t(index)])
        sendSet(kRegisters[std::size_t(index)].row, { address(), Commands::CDRG, number + value });
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
    for (const Register &reg : kRegisters) {
        if (!mnemonic.isEmpty() && mnemonic == reg.directMnemonic)
            return valueOf(reg.row);
    }
    const bool isAsked = isCatalogued(mnemonic) || !m_unknownValues.contains(mnemonic);
    const bool isOpen = m_openQuestions.contains(mnemonic);
    if (mnemonic.isEmpty() || (isAsked && !isOpen && m_openQuestions.size() >= kMaxOpenQuestions))
        return std::nullopt;
    if (isAsked && !isOpen)
        askCard(mnemonic);
    if (!isCatalogued(mnemonic))
        return unknownValue(mnemonic);
    if (mnemonic == Commands::RDRG || mnemonic == Commands::CDRG)
        return valueOf(at(Commands::RDRG));
    return mnemonic == dataSourceMnemonic() ? getDSRC() : QString();
}

bool DmdChan::isHeldInLatin1(const QString &mnemonic) const { return m_unknownValues.value(mnemonic).isLatin1; }

/// A card that does not know it takes a second for each, so everything else goes first.
void DmdChan::askCard(const QString &mnemonic)
{
    m_openQuestions.append(mnemonic);
    if (!isCatalogued(mnemonic))
        rememberUnknown(mnemonic, {});
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
            rememberUnknown(mnemonic, { set.data(), m_unknownValues.value(mnemonic).inForce, set.isLatin1() });
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
