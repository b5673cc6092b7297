#include "simulator/chassis/Chassis.h"

#include "simulator/chassis/EyePort.h"
#include "simulator/chassis/Family.h"
#include "simulator/chassis/SpectralCard.h"
#include "simulator/links/Link.h"
#include "simulator/links/NullModem.h"
#include "simulator/units/CombinerUnit.h"
#include "simulator/units/DemodulatorUnit.h"
#include "simulator/units/ReceiverUnit.h"
#include "simulator/units/SystemUnit.h"
#include "simulator/units/TapeUnit.h"
#include "simulator/units/TmoipCardUnit.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <cmath>

namespace sim {

namespace {

constexpr double kStepSeconds = Chassis::kStepMs / 1000.0;
constexpr int kChatterSteps = 5;
constexpr int kStepsPerSecond = 1000 / Chassis::kStepMs;
/// A chassis that was stopped for longer goes on from where it was instead of reliving the time at full speed.
constexpr qint64 kMostStepsMadeUp = kStepsPerSecond;

struct LinkPlan
{
    const char *role;
    std::array<const char *, 2> names; ///< in the device folder; null in second place: only one
};

/// The first link is the command link. The spare one has no purpose but exists on the head as well.
constexpr auto kLinks = std::to_array<LinkPlan>({ { "command", { "ttyUSB0", "ttyUSB3" } },
                                                  { "eye", { "ttyUSB1", "ttyUSB7" } },
                                                  { "spectral", { "ttyUSB2" } },
                                                  { "remote", { "ttyUSB4", "ttyUSB8" } },
                                                  { "status", { "ttyUSB5", "ttyUSB9" } },
                                                  { "spare", { "ttyUSB6" } },
                                                  { "client-remote", { "client-remote" } },
                                                  { "client-status", { "client-status" } } });

constexpr size_t kEyeLink = 1; // positions in that list
constexpr size_t kSpectralLink = 2;

/// The two ends of each null modem, as positions in that list.
struct NullModemPlan
{
    size_t head;
    size_t client;
};
constexpr auto kNullModems = std::to_array<NullModemPlan>({ { 3, 6 }, { 4, 7 } });

constexpr quint32 kFirstDemodulatorSeed = 10;
constexpr quint32 kFirstStreamSeed = 20;
constexpr quint32 kSpectralSeed = 30;
constexpr quint32 kSeedsOfTmoipCard = 100;
constexpr double kTmoipReportHz = 3;

int stepsIn(double seconds) { return int(std::lround(seconds * kStepsPerSecond)); }

/// Each part that needs chance gets its own stream, so that one cannot disturb another.
quint32 derivedSeed(quint32 seed, quint32 part)
{
    QRandomGenerator random(seed);
    random.discard(part);
    return random.generate();
}

} // namespace

Chassis::Chassis(const Setup &setup, QObject *parent)
    : QObject(parent)
    , m_setup(setup)
    , m_faults(derivedSeed(setup.seed, 1))
    , m_chatter(derivedSeed(setup.seed, 2))
    , m_presets(m_presetStore, m_announcer)
{
    makeLinks();
    joinClients();
    m_port = std::make_unique<CommandPort>(*m_links.front(), m_faults, m_trace);
    m_eyePort = std::make_unique<EyePort>(*m_links.at(kEyeLink), derivedSeed(setup.seed, 3));
    connect(&m_announcer, &ChangeAnnouncer::announced, m_port.get(), &CommandPort::sendText);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Chassis::catchUp);
}

Chassis::~Chassis() = default;

void Chassis::makeLinks()
{
    for (const LinkPlan &plan : kLinks) {
        QStringList paths;
        for (const char *name : plan.names) {
            if (name)
                paths.append(QStringLiteral("%1/%2").arg(m_setup.deviceDir, QLatin1String(name)));
        }
        m_links.push_back(std::make_unique<Link>(QString::fromLatin1(plan.role), paths));
    }
}

void Chassis::joinClients()
{
    for (const NullModemPlan &plan : kNullModems)
        m_nullModems.push_back(std::make_unique<NullModem>(*m_links.at(plan.head), *m_links.at(plan.client), m_trace));
}

bool Chassis::start(const Family &family, QString &error)
{
    if (!m_setup.presetsFile.isEmpty() && !m_presetStore.useFile(m_setup.presetsFile, error))
        return false;
    m_scene = std::make_unique<RadioScene>(family.scene, derivedSeed(m_setup.seed, 0));
    if (!buildUnits(family, error) || !openLinks(error))
        return false;
    // Last, for it empties an older trace.
    if (!m_setup.traceFile.isEmpty() && !m_trace.open(m_setup.traceFile)) {
        error = QStringLiteral("cannot write %1").arg(m_setup.traceFile);
        return false;
    }
    powerCycle(m_setup.bootSeconds);
    m_clock.start();
    m_timer.start(kStepMs);
    return true;
}

bool Chassis::buildUnits(const Family &family, QString &error)
{
    m_system = std::make_unique<SystemUnit>(m_presets);
    if (!addUnit(m_system.get(), family.system, error))
        return false;
    for (auto receiver = family.receivers.cbegin(); receiver != family.receivers.cend(); ++receiver) {
        m_receivers.push_back(std::make_unique<ReceiverUnit>(receiver.key()));
        if (!addChannel(m_receivers.back().get(), receiver.value(), error))
            return false;
    }
    if (family.combiner) {
        m_combiner = std::make_unique<CombinerUnit>();
        if (!addChannel(m_combiner.get(), *family.combiner, error))
            return false;
    }
    if (!buildDemodulators(family, error))
        return false;
    if (family.tape) {
        m_tape = std::make_unique<TapeUnit>();
        if (!addChannel(m_tape.get(), *family.tape, error))
            return false;
    }
    for (auto card = family.tmoipCards.cbegin(); card != family.tmoipCards.cend(); ++card) {
        if (!buildTmoipCard(card.key(), card.value(), error))
            return false;
    }
    if (!family.spectral)
        return true;
    m_spectral = std::make_unique<SpectralCard>(*m_links.at(kSpectralLink), m_faults, m_trace);
    return m_spectral->build(*family.spectral, derivedSeed(m_setup.seed, kSpectralSeed), error);
}

bool Chassis::buildDemodulators(const Family &family, QString &error)
{
    for (auto entry = family.demodulators.cbegin(); entry != family.demodulators.cend(); ++entry) {
        const quint32 seed = derivedSeed(m_setup.seed, kFirstDemodulatorSeed + quint32(entry.key()));
        m_demodulators.push_back(std::make_unique<DemodulatorUnit>(entry.key(), family.hasOlderDemodulators, seed));
        m_eyePort->addDemodulator(m_demodulators.back().get());
        if (!addChannel(m_demodulators.back().get(), entry.value(), error))
            return false;
    }
    return true;
}

bool Chassis::buildTmoipCard(int number, const QJsonObject &values, QString &error)
{
    const quint32 firstSeed = kFirstStreamSeed + quint32(number - 1) * kSeedsOfTmoipCard;
    m_tmoipCards.push_back(std::make_unique<TmoipCardUnit>(
        number, [this, firstSeed](int stream) { return derivedSeed(m_setup.seed, firstSeed + quint32(stream)); }));
    for (ChannelUnit *unit : m_tmoipCards.back()->units()) {
        m_tmoipUnits.append(unit);
        if (!addUnit(unit, values.value(QString::fromLatin1(unit->address())).toObject(), error))
            return false;
    }
    m_tmoipCards.back()->commit();
    return true;
}

bool Chassis::addUnit(Unit *unit, const QJsonObject &values, QString &error)
{
    m_presets.addUnit(unit);
    return m_port->addUnit(unit, values, error);
}

bool Chassis::addChannel(ChannelUnit *unit, const QJsonObject &values, QString &error)
{
    m_channels.append(unit);
    connect(m_system.get(), &SystemUnit::slavingChanged, unit, &ChannelUnit::setSlaving);
    return addUnit(unit, values, error);
}

bool Chassis::openLinks(QString &error)
{
    if (!QDir().mkpath(m_setup.deviceDir)) {
        error = QStringLiteral("cannot make the folder %1").arg(m_setup.deviceDir);
        return false;
    }
    return setPlugged(QStringLiteral("all"), true, error);
}

Unit *Chassis::unit(const QByteArray &address) const
{
    Unit *const unit = m_port->unit(address);
    return unit || !m_spectral ? unit : m_spectral->port().unit(address);
}

QList<Unit *> Chassis::units() const
{
    QList<Unit *> all = m_port->units() + (m_spectral ? m_spectral->port().units() : QList<Unit *>());
    all.removeIf([this](const Unit *candidate) { return unit(candidate->address()) != candidate; });
    return all;
}

QStringList Chassis::linkRoles() const
{
    QStringList roles;
    for (const auto &link : m_links)
        roles.append(link->role());
    return roles;
}

bool Chassis::setPlugged(const QString &role, bool plugged, QString &error)
{
    const bool all = role == QStringLiteral("all");
    if (!all && !linkRoles().contains(role)) {
        error = QStringLiteral("no link \"%1\"; there are: all %2").arg(role, linkRoles().join(u' '));
        return false;
    }
    const QString clientRole = QStringLiteral("client-") + role;
    for (const auto &link : m_links) {
        const bool isMeant = all || link->role() == role || link->role() == clientRole;
        if (!isMeant || link->isPlugged() == plugged)
            continue;
        if (!plugged)
            link->unplug();
        else if (!link->plug(error))
            return false;
    }
    return true;
}

void Chassis::flood(int rate, double seconds)
{
    m_floodRate = rate;
    m_floodStepsLeft = stepsIn(seconds);
    m_floodDue = 0;
}

void Chassis::powerCycle(double bootSeconds)
{
    m_port->setAwake(false);
    m_links.at(kEyeLink)->silence();
    m_announcer.abort();
    m_floodStepsLeft = 0;
    for (Unit *unit : m_port->units())
        unit->loseVolatileState();
    if (m_spectral)
        m_spectral->powerOff();
    m_bootStepsLeft = stepsIn(bootSeconds);
    if (m_bootStepsLeft == 0)
        wake();
}

void Chassis::wake()
{
    m_port->setAwake(true);
    if (m_spectral)
        m_spectral->port().setAwake(true);
}

bool Chassis::reconfigure()
{
    if (m_announcer.isBusy() || !m_port->isAwake())
        return false;
    QList<ChangeAnnouncer::Change> changes;
    for (const auto &receiver : m_receivers) {
        for (const QByteArray &mnemonic : receiver->storedMnemonics())
            changes.append({ receiver.get(), mnemonic });
    }
    m_announcer.start("UPDT", changes);
    return true;
}

QString Chassis::takeFileProblem()
{
    const QString problem = m_trace.takeProblem();
    return problem.isEmpty() ? m_presetStore.takeProblem() : problem;
}

QByteArray Chassis::summary() const
{
    QByteArray text = m_port->isAwake() ? "awake" : "booting";
    for (const auto &link : m_links) {
        const char *state = !link->isPlugged() ? "unplugged" : link->hasClient() ? "open" : "plugged";
        text += ' ' + link->role().toLatin1() + '=' + state;
    }
    for (const char *mnemonic : { "TRON", "SLAVE" })
        text += ' ' + m_system->reply(mnemonic);
    for (ChannelUnit *const channel : m_channels + m_tmoipUnits) {
        for (const char *mnemonic :
             { "FREQ", "SSLV", "SYNL", "MAFL", "CLCK", "CLCS", "DMOD", "DLCK", "BLCK", "DSDM", "FLOW" }) {
            if (channel->knows(mnemonic))
                text += ' ' + channel->reply(mnemonic);
        }
    }
    return text + " overruns=" + QByteArray::number(m_links.front()->overruns());
}

void Chassis::catchUp()
{
    const qint64 due = m_clock.elapsed() / kStepMs;
    m_wallSteps = std::max(m_wallSteps, due - kMostStepsMadeUp);
    for (; m_wallSteps < due; ++m_wallSteps)
        step();
}

void Chassis::step()
{
    ++m_steps;
    stepLinks();
    m_scene->step(kStepSeconds);
    m_system->step(kStepSeconds);
    stepSignals();
    if (m_bootStepsLeft > 0)
        stepBoot();
    else
        stepAwake();
    Q_EMIT stepped(double(m_steps) * kStepSeconds);
}

void Chassis::stepLinks()
{
    // First those that leave: their last words are not for one that has come since.
    for (const auto &link : m_links)
        link->noticeLeaving();
    for (const auto &link : m_links)
        link->noticeComing();
    for (const auto &nullModem : m_nullModems)
        nullModem->step();
}

void Chassis::stepSignals()
{
    CombinerUnit::Inputs inputs;
    for (const auto &receiver : m_receivers) {
        const auto tape = m_tape ? std::optional(m_tape->playback(receiver->number())) : std::nullopt;
        receiver->step(*m_scene, tape, kStepSeconds);
        inputs.at(size_t(receiver->number() - 1)) = { receiver->output(), receiver->agcLevel() };
    }
    if (m_combiner)
        m_combiner->step(inputs);
    for (const auto &demodulator : m_demodulators)
        demodulator->step(output(m_system->source(demodulator->number())), kStepSeconds);
    stepTmoip();
}

void Chassis::stepTmoip()
{
    // A bit synchroniser without lock still gives a clock, at the rate it is set to.
    const auto bitRate = [this](int stream) {
        for (const auto &demodulator : m_demodulators) {
            if (demodulator->number() == stream)
                return demodulator->demodulator().rate();
        }
        return 0.0;
    };
    for (const auto &card : m_tmoipCards) {
        const bool isFitted = m_system->listsTmoip("TM" + QByteArray::number(card->number()));
        for (ChannelUnit *unit : card->units())
            unit->setFitted(isFitted);
        card->step(bitRate, kStepSeconds);
    }
}

std::optional<IfSignal> Chassis::output(const QByteArray &source) const
{
    if (source == "3" && m_combiner)
        return m_combiner->output();
    for (const auto &receiver : m_receivers) {
        if (source == QByteArray::number(receiver->number()))
            return receiver->output();
    }
    return std::nullopt;
}

void Chassis::stepBoot()
{
    if (m_bootStepsLeft % kChatterSteps == 0)
        m_port->sendRaw(m_chatter.next());
    if (--m_bootStepsLeft == 0)
        wake();
}

void Chassis::stepAwake()
{
    m_port->step(kStepMs);
    for (Unit *unit : m_port->units())
        unit->reportSideEffects();
    m_announcer.step(kStepMs);
    stepFlood();
    m_eyePort->step();
    if (m_spectral)
        stepSpectral();
    if (m_system->isReporting())
        stepReports();
}

void Chassis::stepSpectral()
{
    SpectralUnit::Tuning tuning{};
    for (const auto &receiver : m_receivers)
        tuning.at(size_t(receiver->number() - 1)) = receiver->frequency();
    m_spectral->step(m_steps, kStepMs, *m_scene, tuning);
}

void Chassis::reportInTurn(const QList<ChannelUnit *> &units, double hz) const
{
    const int period = std::max(1, stepsIn(1.0 / hz));
    for (qsizetype index = 0; index < units.size(); ++index) {
        if (m_steps % period == index * period / units.size())
            units.at(index)->reportStatus();
    }
}

void Chassis::stepReports()
{
    reportInTurn(m_channels, m_setup.reportHz);
    reportInTurn(m_tmoipUnits, kTmoipReportHz);
    if (m_system->isLogging() && m_steps % kStepsPerSecond == 0 && !m_receivers.empty())
        m_system->logAgc(m_receivers.front()->agcLevel());
}

void Chassis::stepFlood()
{
    if (m_floodStepsLeft == 0)
        return;
    --m_floodStepsLeft;
    m_floodDue += m_floodRate * kStepSeconds;
    for (; m_floodDue >= 1; m_floodDue -= 1) {
        if (m_receivers.empty())
            m_system->report("TIME");
        else
            m_receivers[size_t(m_floodDue) % m_receivers.size()]->report("SSLV");
    }
}

} // namespace sim
