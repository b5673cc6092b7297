#pragma once

#include <QFlags>
#include <QLatin1StringView>
#include <QString>

/// A demodulation mode: how the card calls it, how the operator does, and the data rates that it takes.
struct DemodMode
{
    /// What the panel of a demodulator does not offer in a mode.
    enum Part {
        FreqOffset = 0x1,
        PeakDev = 0x2,
        DataRateB = 0x4,
        AnalogB = 0x8,
        DemodLamp = 0x10,
        BitSyncLamp = 0x20, ///< except on cards that report it in every mode
        AutoBW = 0x40,      ///< from here on: disabled, the others are hidden
        AutoSweepRange = 0x80,
        AutoStepSize = 0x100,
        AutoModIndex = 0x200,
        DigitalAnalogA = 0x400, ///< analog A, while the outputs are digital
        DigitalAnalogB = 0x800, ///< analog B, while the outputs are digital
    };
    Q_DECLARE_FLAGS(Parts, Part)

    QLatin1StringView code; ///< value of DMOD
    QLatin1StringView name;
    double lowestRate;  ///< bit/s
    double highestRate; ///< bit/s
    QLatin1StringView rangeText;
    Parts without;

    [[nodiscard]] bool takes(double rate) const { return rate >= lowestRate && rate <= highestRate; }

    /// The mode of a code or name; null for one that is not known.
    [[nodiscard]] static const DemodMode *withCode(const QString &code);
    [[nodiscard]] static const DemodMode *withName(const QString &name);
    /// What an unknown mode is taken for.
    [[nodiscard]] static const DemodMode &fallback();
};

Q_DECLARE_OPERATORS_FOR_FLAGS(DemodMode::Parts)
