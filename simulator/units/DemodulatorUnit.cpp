#include "simulator/units/DemodulatorUnit.h"

#include "simulator/radio/DemodulationMode.h"
#include "simulator/units/DemodulatorFilters.h"
#include "simulator/units/DemodulatorRows.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sim {

namespace {

constexpr qsizetype kRegisterDigits = 2;
constexpr int kDqmBits = 0x30;
constexpr int kEqualizerBit = 0x4000;
constexpr double kHighestIndex = 0.4;
constexpr double kLowestIndex = 0.3;
constexpr double kVideoStep = 20.0;      // mV a step of gain
constexpr double kFrameLockEnergy = 8.0; // dB bit energy
constexpr double kWorstError = 9.999;

/// A register that older cards also offer as a setting.
struct DirectSetting
{
    std::string_view mnemonic;
    std::string_view number;
};

constexpr auto kDirectSettings =
    std::to_array<DirectSetting>({ { "DQMON", "82" }, { "DQMFS", "84" }, { "DEQE", "83" } });

const DirectSetting *directSetting(QByteArrayView name)
{
    const std::string_view wanted(name.data(), size_t(name.size()));
    const auto *const found = std::find_if(kDirectSettings.begin(), kDirectSettings.end(), [wanted](const auto &entry) {
        return entry.mnemonic == wanted || entry.number == wanted;
    });
    return found == kDirectSettings.end() ? nullptr : found;
}

QByteArrayView view(std::string_view text) { return { text.data(), qsizetype(text.size()) }; }

QByteArray hexWord(int number) { return QByteArray::number(number, 16).rightJustified(4, '0'); }

bool isRegister(QByteArrayView name) { return name.size() == kRegisterDigits; }

bool isModulationIndex(const QByteArray &value)
{
    double index = 0;
    return readDecimal(value, index) && (index == 0 || (index >= kLowestIndex && index <= kHighestIndex));
}

QByteArray scientific(double number) { return QByteArray::number(number, 'e', 2); }

} // namespace

DemodulatorUnit::DemodulatorUnit(int number, bool olderCard, quint32 seed, QObject *parent)
    : ChannelUnit('D' + QByteArray::number(number), DemodulatorRows::all(olderCard), DemodulatorRows::reported(),
                  parent)
    , m_number(number)
    , m_demodulator(seed)
{
}

void DemodulatorUnit::step(const std::optional<IfSignal> &input, double seconds)
{
    m_demodulator.setControls({ .mode = mode(),
                                .rate = value("RATEA").toDouble(),
                                .sweepRange = value("SWRG").toDouble(),
                                .index = value("TMID").toDouble() });
    m_demodulator.step(input, seconds);
    if (isOn("BTEN")) {
        m_bert.step(seconds, m_demodulator.isBitSyncLocked(), m_demodulator.rate() * seconds,
                    m_demodulator.errorRate());
    }
}

std::optional<QByteArray> DemodulatorUnit::lookUp(QByteArrayView mnemonic, const QByteArray &argument) const
{
    if (mnemonic != "RDRG" || !isRegister(argument) || !knows(argument.toUpper()))
        return std::nullopt;
    // Clients match the answer by the digits they sent, in the case they sent them.
    return argument + value(argument.toUpper());
}

QByteArray DemodulatorUnit::reply(QByteArrayView mnemonic)
{
    if (!isRegister(mnemonic))
        return ChannelUnit::reply(mnemonic);
    const DirectSetting *const direct = directSetting(mnemonic);
    if (direct && knows(view(direct->mnemonic)))
        return ChannelUnit::reply(view(direct->mnemonic));
    return address() + ":RDRG:" + mnemonic.toByteArray() + value(mnemonic);
}

QByteArrayList DemodulatorUnit::values()
{
    QByteArrayList texts = ChannelUnit::values();
    for (const SettingRow &row : DemodulatorRows::all(true)) {
        if (row.has(Inner))
            texts.append(address() + ":RDRG:" + row.name().toByteArray() + value(row.name()));
    }
    return texts;
}

bool DemodulatorUnit::accepts(const SettingRow &row, const QByteArray &value) const
{
    const QByteArrayView name = row.name();
    double number = 0;
    if (name == "DMOD")
        return isOffered(value);
    if (name.startsWith("RATE"))
        return readDecimal(value, number) && mode() && mode()->takesRate(number);
    if (name == "DFIR")
        return value == "-1" || DemodulatorFilters::isIfFilter(value);
    if (name.startsWith("VFIR"))
        return DemodulatorFilters::isVideoFilter(value);
    if (name == "VFBW")
        return isInList("VFLS", value);
    if (name == "TMID")
        return isModulationIndex(value);
    return value.size() == 1 && QByteArrayView("012367").contains(value.front()); // video outputs
}

bool DemodulatorUnit::perform(const SettingRow &, const QByteArray &value)
{
    const QByteArray number = value.first(std::min(kRegisterDigits, value.size())).toUpper();
    const QByteArray word = value.sliced(number.size()).toLower();
    // The registers that begin with 3 hold versions and are read-only.
    return isRegister(number) && !number.startsWith('3') && change(number, word);
}

void DemodulatorUnit::applied(const SettingRow &row)
{
    const QByteArrayView name = row.name();
    if (name == "DMOD")
        keepRatesInRange();
    else if (name == "RATEA")
        changeAlong("DDCF", QByteArray::number(DemodulatorFilters::decimation(value("RATEA").toDouble())));
    else if (name == "REST" && isOn("REST"))
        m_bert.reset();
    else if (!isRegister(name) && directSetting(name))
        writeDirect(name);
}

QByteArray DemodulatorUnit::measure(const SettingRow &row) const
{
    const QByteArrayView name = row.name();
    const int decimation = readIndex(value("DDCF"));
    if (name == "IFFL")
        return DemodulatorFilters::ifFilters(decimation);
    if (name == "VFFL")
        return DemodulatorFilters::videoFilters(decimation);
    if (directSetting(name))
        return readDirect(name);
    if (name.startsWith('B') && name != "BLCK" && name != "BS0L")
        return measureBert(name);
    return measureLock(name);
}

const DemodulationMode *DemodulatorUnit::mode() const { return DemodulationMode::withCode(readIndex(value("DMOD"))); }

bool DemodulatorUnit::isOffered(const QByteArray &code) const
{
    const QByteArrayList modes = value("DMLS").split(',');
    const bool listed = std::any_of(modes.begin(), modes.end(), [&code](const QByteArray &entry) {
        return entry.left(entry.indexOf(' ')) == code;
    });
    return listed && DemodulationMode::withCode(readIndex(code));
}

/// Moves a rate outside the range of the mode to the nearest end of that range.
void DemodulatorUnit::keepRatesInRange()
{
    for (const char *const mnemonic : { "RATEA", "RATEB" }) {
        const double rate = value(mnemonic).toDouble();
        if (!mode()->takesRate(rate))
            changeAlong(mnemonic,
                        QByteArray::number(std::clamp(rate, mode()->lowestRate, mode()->highestRate), 'f', 0));
    }
}

void DemodulatorUnit::writeDirect(QByteArrayView mnemonic)
{
    const QByteArrayView number = view(directSetting(mnemonic)->number);
    const int word = readHex(value(number));
    QByteArray written = value(mnemonic).toLower();
    if (mnemonic == "DQMON")
        written = hexWord(isOn(mnemonic) ? word | kDqmBits : word & ~kDqmBits);
    else if (mnemonic == "DEQE")
        written = hexWord(isOn(mnemonic) ? word | kEqualizerBit : 0);
    [[maybe_unused]] const bool taken = change(number, written);
}

QByteArray DemodulatorUnit::readDirect(QByteArrayView mnemonic) const
{
    const QByteArray word = value(view(directSetting(mnemonic)->number));
    if (mnemonic == "DQMFS")
        return word;
    return flag(mnemonic == "DEQE" ? readHex(word) != 0 : (readHex(word) & kDqmBits) == kDqmBits);
}

QByteArray DemodulatorUnit::measureLock(QByteArrayView mnemonic) const
{
    const bool synchronised = m_demodulator.isBitSyncLocked();
    if (mnemonic == "DLCK")
        return flag(m_demodulator.isLocked());
    if (mnemonic == "BLCK")
        return flag(synchronised);
    if (mnemonic == "FSLK")
        return flag(synchronised && m_demodulator.bitEnergy() >= kFrameLockEnergy);
    if (mnemonic == "BS0L")
        return flag(synchronised && isOn("SRT0"));
    if (mnemonic == "FOFF")
        return decimal(m_demodulator.offset(), 1);
    if (mnemonic == "PDEV")
        return decimal(m_demodulator.deviation(), 0);
    if (mnemonic == "VLV1")
        return decimal(m_demodulator.videoLevel() * kVideoStep * value("VGN1").toDouble(), 0);
    if (mnemonic == "MSE0")
        return decimal(std::min(kWorstError, std::pow(10.0, -m_demodulator.bitEnergy() / 10)), 4);
    return flag(false); // "REST" acts at once and always reads as off
}

QByteArray DemodulatorUnit::measureBert(QByteArrayView mnemonic) const
{
    if (mnemonic == "BTLK")
        return flag(m_bert.isLocked());
    if (mnemonic == "BTLS")
        return QByteArray::number(m_bert.lockLosses());
    if (mnemonic == "BETI")
        return QByteArray::number(m_bert.seconds());
    if (mnemonic == "BTCB")
        return QByteArray::number(m_bert.bits());
    if (mnemonic == "BTCE")
        return QByteArray::number(m_bert.errors());
    if (mnemonic == "BERC")
        return scientific(m_bert.totalRate());
    return mnemonic == "BTER" ? scientific(m_bert.presentRate()) : value("BTTL"); // "BERG" is the gate time in seconds
}

} // namespace sim
