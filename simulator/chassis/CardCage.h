#pragma once

#include "simulator/chassis/Seeds.h"
#include "simulator/chassis/UnitSet.h"
#include "simulator/units/ChangeAnnouncer.h"
#include "simulator/units/CombinerUnit.h"
#include "simulator/units/DemodulatorUnit.h"
#include "simulator/units/ReceiverUnit.h"
#include "simulator/units/SpectralUnit.h"
#include "simulator/units/SystemUnit.h"
#include "simulator/units/TapeUnit.h"
#include "simulator/units/TmoipCardUnit.h"

#include <memory>
#include <vector>

namespace sim {

struct Family;

/// The system unit and the channels that answer on the command link, and the signals that pass between them.
class CardCage
{
public:
    /// `presets` must outlive the cage.
    CardCage(PresetKeeper &presets, const Seeds &seeds);

    /// Builds the units of a family. False with `error` set if a unit does not take its start values.
    [[nodiscard]] bool build(const Family &family, QString &error);
    [[nodiscard]] UnitSet &units() { return m_units; }
    [[nodiscard]] const UnitSet &units() const { return m_units; }
    [[nodiscard]] QList<const DemodulatorUnit *> demodulators() const;
    /// Frequencies that the receivers are tuned to.
    [[nodiscard]] SpectralUnit::Tuning tuning() const;
    /// Every stored setting of the receivers.
    [[nodiscard]] QList<ChangeAnnouncer::Change> receiverSettings() const;

    /// Advances one step: clocks run, and signals pass through the channels.
    void step(const RadioScene &scene);
    /// Lets each channel report `hz` times a second while clients want reports; `count` numbers the steps.
    void report(qint64 count, double hz);
    /// Sends this many valid unsolicited messages at once.
    void flood(int messages);
    /// Main settings and readings of all channels.
    [[nodiscard]] QByteArray summary();

private:
    [[nodiscard]] bool buildTmoipCard(int number, const QJsonObject &values, QString &error);
    [[nodiscard]] bool addUnit(Unit *unit, const QJsonObject &values, QString &error);
    [[nodiscard]] bool addChannel(ChannelUnit *unit, const QJsonObject &values, QString &error);
    void stepTmoip();
    /// What a demodulator gets from the source of that name; nothing from one that is not there.
    [[nodiscard]] std::optional<IfSignal> output(const QByteArray &source) const;
    /// Bits a second that a demodulator puts out, locked or not; 0 if there is none of that number.
    [[nodiscard]] double bitRate(int number) const;

    PresetKeeper &m_presets;
    Seeds m_seeds;
    SystemUnit m_system;
    std::vector<std::unique_ptr<ReceiverUnit>> m_receivers;
    std::unique_ptr<CombinerUnit> m_combiner; // null without such a card
    std::vector<std::unique_ptr<DemodulatorUnit>> m_demodulators;
    std::unique_ptr<TapeUnit> m_tape; // null without such a card
    std::vector<std::unique_ptr<TmoipCardUnit>> m_tmoipCards;
    QList<ChannelUnit *> m_channels; // what signals go through
    QList<ChannelUnit *> m_tmoipUnits;
    UnitSet m_units;
};

} // namespace sim
