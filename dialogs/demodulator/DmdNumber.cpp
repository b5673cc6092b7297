#include "dialogs/demodulator/DmdNumber.h"

#include "controls/NumberText.h"
#include "controls/ValueText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

using Commands = DmdChan::Commands;

constexpr double kPercent = 100;
constexpr double kFullMean = 0xffff;

QString withPoint(const QString &text) { return QString(text).replace(u',', u'.'); }

/// NaN for any other text: it is in no range, so that an emptied field overwrites no register.
double number(const QString &text)
{
    bool isNumber = false;
    const double value = withPoint(text).toDouble(&isNumber);
    return isNumber ? value : std::numeric_limits<double>::quiet_NaN();
}

double fractionOfPercent(const QString &text) { return number(text) / kPercent; }

double rate(const QString &text) { return NumberText::parseScaled(text); }

template <int Decimals>
QString fixed(double value)
{
    return NumberText::fixed(value, Decimals);
}

/// Four digits, two's complement.
QString hexDigits(double value) { return u"%1"_s.arg(quint16(qint64(value)), 4, 16, QChar(u'0')); }

QString meanDigits(double value) { return hexDigits(value * kFullMean); }

/// What @p show makes of the number in @p wire.
template <typename Show>
QString shown(const QString &wire, Show show)
{
    const auto value = NumberText::parse(wire);
    return value ? show(*value) : QString();
}

template <typename Show>
QString shownHex(const QString &wire, Show show)
{
    bool isHex = false;
    const uint value = wire.toUInt(&isHex, 16);
    return isHex ? show(value) : QString();
}

QString percentText(const QString &wire)
{
    return shown(wire, [&wire](double fraction) {
        const double percent = fraction * kPercent;
        return std::isfinite(percent) ? fixed<2>(percent) : wire;
    });
}

QString twoDecimalsText(const QString &wire) { return shown(wire, fixed<2>); }

QString rangeText(const QString &wire)
{
    return shown(wire, [](double kilohertz) { return NumberText::trimmed(kilohertz, 4); });
}

QString rateText(const QString &wire)
{
    return shown(wire, [&wire](double) { return NumberText::scaled(wire); });
}

QString unsignedText(const QString &wire)
{
    return shownHex(wire, [](uint value) { return QString::number(value); });
}

QString signedText(const QString &wire)
{
    return shownHex(wire, [](uint value) { return QString::number(qint16(value)); });
}

QString meanText(const QString &wire)
{
    return shownHex(wire, [](uint value) { return fixed<2>(value / kFullMean); });
}

constexpr std::array kNumbers{
    DmdNumber{ Commands::LBWB, &DmdChan::getLBWB, &DmdChan::setLBWB, "BitSync Loop BW"_L1, 0.001, 1,
               "Valid Range: 0.1% to 100%"_L1, fractionOfPercent, fixed<5>, percentText },
    DmdNumber{ Commands::LBWC, &DmdChan::getLBWC, &DmdChan::setLBWC, "Carrier Loop BW"_L1, 0.001, 1,
               "Valid Range: 0.1% to 100%"_L1, fractionOfPercent, fixed<5>, percentText },
    DmdNumber{ Commands::SWRG, &DmdChan::getSWRG, &DmdChan::setSWRG, "Sweep Range"_L1, 1, 500,
               "Valid Range: 1kHz to 500kHz"_L1, number, fixed<0>, rangeText },
    DmdNumber{ Commands::SWRT, &DmdChan::getSWRT, &DmdChan::setSWRT, "Sweep Rate"_L1, 1, 20'000'000,
               "Valid Range: 1Hz/sec to 20MHz/sec"_L1, rate, fixed<0>, rateText },
    DmdNumber{ Commands::TMID, &DmdChan::getTMID, &DmdChan::setTMID, "Mod Index"_L1, 0.3, 0.4,
               "Valid Range: 0.30 to 0.40"_L1, number, fixed<2>, twoDecimalsText },
    DmdNumber{ Commands::DFSZ, &DmdChan::getDFSZ, &DmdChan::setDFSZ, "DQM FSize"_L1, 128, 16384,
               "Valid Range: 128 to 16384"_L1, number, hexDigits, unsignedText },
    DmdNumber{ Commands::DFWD, &DmdChan::getDFWD, &DmdChan::setDFWD, "DQM FWord"_L1, 0, 65535,
               "Valid Range: 0 to 65535"_L1, number, hexDigits, unsignedText },
    DmdNumber{ Commands::MEAN, &DmdChan::getMEAN, &DmdChan::setMEAN, "DQM Mean"_L1, 0, 1, "Valid Range: 0 to 1.0"_L1,
               number, meanDigits, meanText },
    DmdNumber{ Commands::BEPO, &DmdChan::getBEPO, &DmdChan::setBEPO, "DQM BEPO"_L1, -32768, 32767,
               "Valid Range: -32768 to 32767"_L1, number, hexDigits, signedText },
};

} // namespace

QString DmdNumber::shown(const QString &wire) const
{
    const QString text = toText(wire);
    return text.isEmpty() ? ValueText::shown(wire) : text;
}

std::span<const DmdNumber> DmdNumber::all() { return kNumbers; }

const DmdNumber &DmdNumber::of(QLatin1StringView mnemonic)
{
    const auto found = std::ranges::find(kNumbers, mnemonic, &DmdNumber::mnemonic);
    Q_ASSERT(found != kNumbers.end());
    return *found;
}
