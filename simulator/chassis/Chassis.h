#pragma once

#include "simulator/chassis/BootChatter.h"
#include "simulator/chassis/CommandPort.h"
#include "simulator/chassis/FaultRules.h"
#include "simulator/links/Trace.h"
#include "simulator/radio/RadioScene.h"
#include "simulator/units/ChangeAnnouncer.h"
#include "simulator/units/PresetKeeper.h"
#include "simulator/units/PresetStore.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace sim {

class ChannelUnit;
class CombinerUnit;
class DemodulatorUnit;
class EyePort;
struct Family;
class Link;
class NullModem;
class ReceiverUnit;
class SpectralCard;
class SystemUnit;
class TapeUnit;
class TmoipCardUnit;
class Unit;

/// The whole chassis: links, units and the time they live in. Everything advances in steps of equal length, so that
/// the same seed and the same inputs at the same step give the same values.
class Chassis : public QObject
{
    Q_OBJECT

public:
    static constexpr int kStepMs = 20;

    struct Setup
    {
        QString deviceDir;
        double bootSeconds = 3;
        double reportHz = 5;
        quint32 seed = 1;
        QString presetsFile; ///< empty: presets are forgotten at the end
        QString traceFile;   ///< empty: no trace
    };

    explicit Chassis(const Setup &setup, QObject *parent = nullptr);
    ~Chassis() override;
    Q_DISABLE_COPY_MOVE(Chassis)

    /// Builds the units, makes the links and powers on. False with `error` set if that cannot be.
    [[nodiscard]] bool start(const Family &family, QString &error);

    [[nodiscard]] FaultRules &faults() { return m_faults; }
    [[nodiscard]] RadioScene &scene() { return *m_scene; }
    [[nodiscard]] CommandPort &port() { return *m_port; }
    /// The unit of that address, first on the command link, then on the spectral link; null if there is none.
    [[nodiscard]] Unit *unit(const QByteArray &address) const;

    /// Every unit that unit() finds.
    [[nodiscard]] QList<Unit *> units() const;

    /// Names of the links that can be unplugged and plugged.
    [[nodiscard]] QStringList linkRoles() const;
    /// Plugs or unplugs the link of that role, a remote one with its client's end, or "all". False with `error` set if
    /// there is none or it cannot be made.
    [[nodiscard]] bool setPlugged(const QString &role, bool plugged, QString &error);
    /// Sends valid unprompted messages, `rate` a second, for some seconds.
    void flood(int rate, double seconds);
    /// Power off and on: silent at once, then booting for `bootSeconds`.
    void powerCycle(double bootSeconds);
    [[nodiscard]] double bootSeconds() const { return m_setup.bootSeconds; }
    /// The receivers set themselves up anew and tell so. False if another change is under way.
    [[nodiscard]] bool reconfigure();
    /// Why the trace or the presets could not be written, once.
    [[nodiscard]] QString takeFileProblem();
    /// One line about power, links and channels.
    [[nodiscard]] QByteArray summary() const;

Q_SIGNALS:
    /// After every step; `seconds` of simulated time since the start.
    void stepped(double seconds);

private:
    [[nodiscard]] bool buildUnits(const Family &family, QString &error);
    [[nodiscard]] bool buildDemodulators(const Family &family, QString &error);
    [[nodiscard]] bool buildTmoipCard(int number, const QJsonObject &values, QString &error);
    [[nodiscard]] bool addUnit(Unit *unit, const QJsonObject &values, QString &error);
    [[nodiscard]] bool addChannel(ChannelUnit *unit, const QJsonObject &values, QString &error);
    /// What a demodulator gets from the source of that name; nothing from one that is not there.
    [[nodiscard]] std::optional<IfSignal> output(const QByteArray &source) const;
    void makeLinks();
    void joinClients();
    [[nodiscard]] bool openLinks(QString &error);
    void wake();
    void catchUp();
    void step();
    void stepLinks();
    void stepBoot();
    void stepAwake();
    void stepSignals();
    void stepTmoip();
    void stepSpectral();
    void stepReports();
    /// Lets the units report, each with the same period and all of them spread over it.
    void reportInTurn(const QList<ChannelUnit *> &units, double hz) const;
    void stepFlood();

    Setup m_setup;
    Trace m_trace;
    FaultRules m_faults;
    BootChatter m_chatter;
    std::unique_ptr<RadioScene> m_scene;
    PresetStore m_presetStore;
    ChangeAnnouncer m_announcer;
    PresetKeeper m_presets;
    std::vector<std::unique_ptr<Link>> m_links;
    std::vector<std::unique_ptr<NullModem>> m_nullModems;
    std::unique_ptr<CommandPort> m_port;
    std::unique_ptr<SystemUnit> m_system;
    std::vector<std::unique_ptr<ReceiverUnit>> m_receivers;
    std::unique_ptr<CombinerUnit> m_combiner; // null without such a card
    std::vector<std::unique_ptr<DemodulatorUnit>> m_demodulators;
    std::unique_ptr<TapeUnit> m_tape; // null without such a card
    std::vector<std::unique_ptr<TmoipCardUnit>> m_tmoipCards;
    QList<ChannelUnit *> m_channels; // what signals go through
    QList<ChannelUnit *> m_tmoipUnits;
    std::unique_ptr<EyePort> m_eyePort;
    std::unique_ptr<SpectralCard> m_spectral; // null without such a card

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_wallSteps = 0; // steps that have passed on the wall clock
    qint64 m_steps = 0;     // steps simulated
    int m_bootStepsLeft = 0;
    qint64 m_floodStepsLeft = 0;
    double m_floodRate = 0;
    double m_floodDue = 0;
};

} // namespace sim
