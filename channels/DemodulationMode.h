#pragma once

#include <QFlags>
#include <QLatin1StringView>
#include <QStringList>

#include <span>

class DmdChan;

/// A demodulation mode: its code on the wire, its name, the data rates it accepts, and what does not apply in it on the
/// panel of a demodulator and among its advanced settings.
struct DemodulationMode
{
    /// What the panel hides in a mode, or disables from AutoBW on.
    enum Part {
        FreqOffset = 0x1,
        PeakDev = 0x2,
        DataRateB = 0x4,
        AnalogB = 0x8,
        DemodLamp = 0x10,
        BitSyncLamp = 0x20, ///< except on cards that report bit sync in every mode
        AutoBW = 0x40,
        AutoSweepRange = 0x80,
        AutoStepSize = 0x100,
        AutoModIndex = 0x200,
        DigitalAnalogA = 0x400, ///< analog A, while the outputs are digital
        DigitalAnalogB = 0x800, ///< analog B, while the outputs are digital
    };
    Q_DECLARE_FLAGS(Parts, Part)

    using Mnemonics = std::span<const QLatin1StringView>;
    /// Advanced settings that the operator cannot change in a mode.
    struct Locks
    {
        Mnemonics always;
        Mnemonics withAutoBandwidth = {};  ///< while ALBW is on
        Mnemonics withAutoSweepRange = {}; ///< while ASRG is on
        Mnemonics withAutoSweepRate = {};  ///< while ASRT is on
        Mnemonics withManualIndex = {};    ///< unless TMID is 0
    };

    QLatin1StringView code; ///< value of DMOD
    QLatin1StringView name;
    double lowestRate;  ///< bit/s
    double highestRate; ///< bit/s
    QLatin1StringView rangeText;
    Parts without;
    Locks locks;

    [[nodiscard]] bool takes(double rate) const { return rate >= lowestRate && rate <= highestRate; }

    /// The mode with this code or name; null for an unknown one.
    [[nodiscard]] static const DemodulationMode *withCode(const QString &code);
    [[nodiscard]] static const DemodulationMode *withName(const QString &name);
    /// Stands for an unknown mode.
    [[nodiscard]] static const DemodulationMode &fallback();

    /// Mnemonics of the advanced settings that the mode, the output configuration and the automatic settings of
    /// @p demodulator lock at present.
    [[nodiscard]] static QStringList lockedSettings(const DmdChan &demodulator);
    /// Whether the card chooses the sweep range, so that there is none to show.
    [[nodiscard]] static bool hasAutomaticSweepRange(const DmdChan &demodulator);
};

Q_DECLARE_OPERATORS_FOR_FLAGS(DemodulationMode::Parts)
