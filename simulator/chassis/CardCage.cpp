#include "simulator/chassis/CardCage.h"

#include "simulator/chassis/Family.h"
#include "simulator/chassis/Steps.h"
#include "simulator/units/PresetKeeper.h"

#include <algorithm>

namespace sim {

namespace {

constexpr double kTmoipReportHz = 3;

/// Lets each unit report once a period, with the units spread evenly over it.
void reportInTurn(const QList<ChannelUnit *> &units, qint64 count, double hz)
{
    const int period = std::max(1, stepsIn(1.0 / hz));
    for (qsizetype index = 0; index < units.size(); ++index) {
        if (count % period == index * period / units.size())
            units.at(index)->reportStatus();
    }
}

} // namespace

CardCage::CardCage(PresetKeeper &presets, const Seeds &seeds) : m_presets(presets), m_seeds(seeds), m_system(presets) {}

bool CardCage::build(const Family &family, QString &error)
{
    if (!addUnit(&m_system, family.system, error))
        return false;
    for (auto entry = family.receivers.cbegin(); entry != family.receivers.cend(); ++entry) {
        m_receivers.push_back(std::make_unique<ReceiverUnit>(entry.key()));
        if (!addChannel(m_receivers.back().get(), entry.value(), error))
            return false;
    }
    if (family.combiner) {
        m_combiner = std::make_unique<CombinerUnit>();
        if (!addChannel(m_combiner.get(), *family.combiner, error))
            return false;
    }
    for (auto entry = family.demodulators.cbegin(); entry != family.demodulators.cend(); ++entry) {
        m_demodulators.push_back(std::make_unique<DemodulatorUnit>(entry.key(), family.hasOlderDemodulators,
                                                                   m_seeds.demodulator(entry.key())));
        if (!addChannel(m_demodulators.back().get(), entry.value(), error))
            return false;
    }
    if (family.tape) {
        m_tape = std::make_unique<TapeUnit>();
        if (!addChannel(m_tape.get(), *family.tape, error))
            return false;
    }
    for (auto card = family.tmoipCards.cbegin(); card != family.tmoipCards.cend(); ++card) {
        if (!buildTmoipCard(card.key(), card.value(), error))
            return false;
    }
    return true;
}

bool CardCage::buildTmoipCard(int number, const QJsonObject &values, QString &error)
{
    m_tmoipCards.push_back(std::make_unique<TmoipCardUnit>(
        number, [this, number](int stream) { return m_seeds.tmoipStream(number, stream); }));
    for (ChannelUnit *unit : m_tmoipCards.back()->units()) {
        m_tmoipUnits.append(unit);
        if (!addUnit(unit, values.value(QString::fromLatin1(unit->address())).toObject(), error))
            return false;
    }
    m_tmoipCards.back()->commit();
    return true;
}

bool CardCage::addUnit(Unit *unit, const QJsonObject &values, QString &error)
{
    m_presets.addUnit(unit);
    return m_units.add(unit, values, error);
}

bool CardCage::addChannel(ChannelUnit *unit, const QJsonObject &values, QString &error)
{
    m_channels.append(unit);
    QObject::connect(&m_system, &SystemUnit::slavingChanged, unit, &ChannelUnit::setSlaving);
    return addUnit(unit, values, error);
}

QList<const DemodulatorUnit *> CardCage::demodulators() const
{
    QList<const DemodulatorUnit *> list;
    for (const auto &demodulator : m_demodulators)
        list.append(demodulator.get());
    return list;
}

SpectralUnit::Tuning CardCage::tuning() const
{
    SpectralUnit::Tuning tuning{};
    for (const auto &receiver : m_receivers)
        tuning.at(size_t(receiver->number() - 1)) = receiver->frequency();
    return tuning;
}

QList<ChangeAnnouncer::Change> CardCage::receiverSettings() const
{
    QList<ChangeAnnouncer::Change> settings;
    for (const auto &receiver : m_receivers) {
        for (const QByteArray &mnemonic : receiver->storedMnemonics())
            settings.append({ receiver.get(), mnemonic });
    }
    return settings;
}

void CardCage::step(const RadioScene &scene)
{
    m_system.step(kStepSeconds);
    CombinerUnit::Inputs inputs;
    for (const auto &receiver : m_receivers) {
        const auto tape = m_tape ? std::optional(m_tape->playback(receiver->number())) : std::nullopt;
        receiver->step(scene, tape, kStepSeconds);
        inputs.at(size_t(receiver->number() - 1)) = { receiver->output(), receiver->agcLevel() };
    }
    if (m_combiner)
        m_combiner->step(inputs);
    for (const auto &demodulator : m_demodulators)
        demodulator->step(output(m_system.source(demodulator->number())), kStepSeconds);
    stepTmoip();
}

void CardCage::stepTmoip()
{
    for (const auto &card : m_tmoipCards) {
        const bool isFitted = m_system.listsTmoip("TM" + QByteArray::number(card->number()));
        for (ChannelUnit *unit : card->units())
            unit->setFitted(isFitted);
        card->step([this](int stream) { return bitRate(stream); }, kStepSeconds);
    }
}

std::optional<IfSignal> CardCage::output(const QByteArray &source) const
{
    if (source == "3" && m_combiner)
        return m_combiner->output();
    for (const auto &receiver : m_receivers) {
        if (source == QByteArray::number(receiver->number()))
            return receiver->output();
    }
    return std::nullopt;
}

double CardCage::bitRate(int number) const
{
    for (const auto &demodulator : m_demodulators) {
        if (demodulator->number() == number)
            return demodulator->demodulator().rate();
    }
    return 0;
}

void CardCage::report(qint64 count, double hz)
{
    if (!m_system.isReporting())
        return;
    reportInTurn(m_channels, count, hz);
    reportInTurn(m_tmoipUnits, count, kTmoipReportHz);
    if (m_system.isLogging() && count % kStepsPerSecond == 0 && !m_receivers.empty())
        m_system.logAgc(m_receivers.front()->agcLevel());
}

void CardCage::flood(int messages)
{
    for (; messages > 0; --messages) {
        if (m_receivers.empty())
            m_system.report("TIME");
        else
            m_receivers[size_t(messages) % m_receivers.size()]->report("SSLV");
    }
}

QByteArray CardCage::summary()
{
    QByteArrayList texts;
    for (const char *mnemonic : { "TRON", "SLAVE" })
        texts.append(m_system.reply(mnemonic));
    for (ChannelUnit *const channel : m_channels + m_tmoipUnits) {
        for (const char *mnemonic :
             { "FREQ", "SSLV", "SYNL", "MAFL", "CLCK", "CLCS", "DMOD", "DLCK", "BLCK", "DSDM", "FLOW" }) {
            if (channel->knows(mnemonic))
                texts.append(channel->reply(mnemonic));
        }
    }
    return texts.join(' ');
}

} // namespace sim
