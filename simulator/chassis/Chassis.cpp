#include "simulator/chassis/Chassis.h"

#include "simulator/chassis/Family.h"
#include "simulator/chassis/SpectralCard.h"
#include "simulator/chassis/Steps.h"

#include <algorithm>

namespace sim {

namespace {

constexpr int kChatterSteps = 5;
/// After a longer stop of the process the time beyond this is skipped, not simulated at full speed.
constexpr qint64 kMostStepsMadeUp = kStepsPerSecond;

} // namespace

Chassis::Chassis(const Setup &setup, QObject *parent)
    : QObject(parent)
    , m_setup(setup)
    , m_seeds(setup.seed)
    , m_faults(m_seeds.faults())
    , m_chatter(m_seeds.bootChatter())
    , m_links(setup.deviceDir, m_trace)
    , m_presets(m_presetStore, m_announcer)
    , m_cards(m_presets, m_seeds)
    , m_port(m_links.command(), m_cards.units(), m_faults, m_trace)
    , m_eyePort(m_links.eye(), m_seeds.eyeLink())
{
    connect(&m_announcer, &ChangeAnnouncer::announced, &m_port, &CommandPort::sendText);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Chassis::catchUp);
}

Chassis::~Chassis() = default;

bool Chassis::start(const Family &family, QString &error)
{
    if (!m_setup.presetsFile.isEmpty() && !m_presetStore.useFile(m_setup.presetsFile, error))
        return false;
    m_scene = std::make_unique<RadioScene>(family.scene, m_seeds.scene());
    if (!m_cards.build(family, error))
        return false;
    m_eyePort.setDemodulators(m_cards.demodulators());
    if (family.spectral) {
        m_spectral = std::make_unique<SpectralCard>(m_links.spectral(), m_faults, m_trace);
        if (!m_spectral->build(*family.spectral, m_seeds.spectralCard(), error))
            return false;
    }
    if (!m_links.open(error))
        return false;
    // Last, because it truncates an older trace.
    if (!m_setup.traceFile.isEmpty() && !m_trace.open(m_setup.traceFile)) {
        error = QStringLiteral("cannot write %1").arg(m_setup.traceFile);
        return false;
    }
    powerCycle(m_setup.bootSeconds);
    m_clock.start();
    m_timer.start(kStepMs);
    return true;
}

Unit *Chassis::unit(const QByteArray &address) const
{
    Unit *const unit = m_cards.units().find(address);
    return unit || !m_spectral ? unit : m_spectral->units().find(address);
}

QList<Unit *> Chassis::units() const
{
    QList<Unit *> all = m_cards.units().all() + (m_spectral ? m_spectral->units().all() : QList<Unit *>());
    all.removeIf([this](const Unit *candidate) { return unit(candidate->address()) != candidate; });
    return all;
}

void Chassis::powerCycle(double bootSeconds)
{
    m_port.setAwake(false);
    m_links.eye().silence();
    m_announcer.abort();
    m_flood.stop();
    m_cards.units().loseVolatileState();
    if (m_spectral)
        m_spectral->powerOff();
    m_bootStepsLeft = stepsIn(bootSeconds);
    if (m_bootStepsLeft == 0)
        wake();
}

void Chassis::wake()
{
    m_port.setAwake(true);
    if (m_spectral)
        m_spectral->powerOn();
}

bool Chassis::reconfigure()
{
    if (m_announcer.isBusy() || !m_port.isAwake())
        return false;
    m_announcer.start("UPDT", m_cards.receiverSettings());
    return true;
}

QString Chassis::takeFileProblem()
{
    const QString problem = m_trace.takeProblem();
    return problem.isEmpty() ? m_presetStore.takeProblem() : problem;
}

QByteArray Chassis::summary()
{
    return QByteArray(m_port.isAwake() ? "awake" : "booting") + ' ' + m_links.summary() + ' ' + m_cards.summary() +
           " overruns=" + QByteArray::number(m_links.command().overruns());
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
    m_links.step();
    m_scene->step(kStepSeconds);
    m_cards.step(*m_scene);
    if (m_bootStepsLeft > 0)
        stepBoot();
    else
        stepAwake();
    Q_EMIT stepped(double(m_steps) * kStepSeconds);
}

void Chassis::stepBoot()
{
    if (m_bootStepsLeft % kChatterSteps == 0)
        m_port.sendRaw(m_chatter.next());
    if (--m_bootStepsLeft == 0)
        wake();
}

void Chassis::stepAwake()
{
    m_port.step(kStepMs);
    m_cards.units().reportSideEffects();
    m_announcer.step(kStepMs);
    m_cards.flood(m_flood.takeDue());
    m_eyePort.step();
    if (m_spectral)
        m_spectral->step(m_steps, kStepMs, *m_scene, m_cards.tuning());
    m_cards.report(m_steps, m_setup.reportHz);
}

} // namespace sim
