#pragma once

#include "simulator/chassis/BootChatter.h"
#include "simulator/chassis/CardCage.h"
#include "simulator/chassis/CommandPort.h"
#include "simulator/chassis/EyePort.h"
#include "simulator/chassis/FaultRules.h"
#include "simulator/chassis/Flood.h"
#include "simulator/links/LinkSet.h"
#include "simulator/links/Trace.h"
#include "simulator/radio/RadioScene.h"
#include "simulator/units/PresetKeeper.h"
#include "simulator/units/PresetStore.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

namespace sim {

class SpectralCard;

/// The whole chassis: links, cards and simulated time. Everything advances in steps of equal length, so that the same
/// seed and the same inputs at the same steps give the same values.
class Chassis : public QObject
{
    Q_OBJECT

public:
    struct Setup
    {
        QString deviceDir;
        double bootSeconds = 3;
        double reportHz = 5;
        quint32 seed = 1;
        QString presetsFile; ///< empty: presets are lost at the end
        QString traceFile;   ///< empty: no trace
    };

    explicit Chassis(const Setup &setup, QObject *parent = nullptr);
    ~Chassis() override;
    Q_DISABLE_COPY_MOVE(Chassis)

    /// Builds the units, makes the links and powers on. False with `error` set if that fails.
    [[nodiscard]] bool start(const Family &family, QString &error);

    [[nodiscard]] FaultRules &faults() { return m_faults; }
    [[nodiscard]] RadioScene &scene() { return *m_scene; }
    [[nodiscard]] CommandPort &port() { return m_port; }
    [[nodiscard]] LinkSet &links() { return m_links; }
    /// The unit of that address, first on the command link, then on the spectral link; null if there is none.
    [[nodiscard]] Unit *unit(const QByteArray &address) const;
    /// Every unit that unit() finds.
    [[nodiscard]] QList<Unit *> units() const;

    /// Sends valid unsolicited messages, `rate` a second, for some seconds.
    void flood(int rate, double seconds) { m_flood.start(rate, seconds); }
    /// Power off and on: silent at once, then booting for `bootSeconds`.
    void powerCycle(double bootSeconds);
    [[nodiscard]] double bootSeconds() const { return m_setup.bootSeconds; }
    /// Announces all settings of the receivers as changed. False while booting or if another change is in progress.
    [[nodiscard]] bool reconfigure();
    /// Why the trace or the presets could not be written; reported once.
    [[nodiscard]] QString takeFileProblem();
    /// One line about power, links and channels.
    [[nodiscard]] QByteArray summary();

Q_SIGNALS:
    /// After every step; `seconds` of simulated time since the start.
    void stepped(double seconds);

private:
    void wake();
    void catchUp();
    void step();
    void stepBoot();
    void stepAwake();

    Setup m_setup;
    Seeds m_seeds;
    Trace m_trace;
    FaultRules m_faults;
    BootChatter m_chatter;
    LinkSet m_links;
    std::unique_ptr<RadioScene> m_scene;
    PresetStore m_presetStore;
    ChangeAnnouncer m_announcer;
    PresetKeeper m_presets;
    CardCage m_cards;
    CommandPort m_port;
    EyePort m_eyePort;
    std::unique_ptr<SpectralCard> m_spectral; // null without such a card
    Flood m_flood;

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_wallSteps = 0; // steps that have passed on the wall clock
    qint64 m_steps = 0;     // steps simulated
    int m_bootStepsLeft = 0;
};

} // namespace sim
