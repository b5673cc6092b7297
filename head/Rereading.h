#pragma once

#include "head/Clock.h"
#include "head/SettingsCheck.h"
#include "head/SettingsReading.h"
#include "head/SilenceWatch.h"
#include "link/StandardCommand.h"

#include <QObject>
#include <QTimer>

#include <functional>

class ChannelLink;

/// What is read again behind a pass over all settings: single settings whose answers were lost, and everything, when
/// the chassis seems to have been switched off.
class Rereading : public QObject
{
    Q_OBJECT

public:
    /// @param link        carries the queries; outlives this
    /// @param clock       started; runs on while this lives
    /// @param isReporting whether a channel currently receives unsolicited readings
    Rereading(ChannelLink &link, const Clock &clock, std::function<bool()> isReporting);

    /// A pass over all settings begins: its queries are queued, with the request for reports behind them.
    void begin();
    /// The chassis is away, or everything is read once more: the pass and all checks stop.
    void giveUp();
    /// The link was lost.
    void noteLoss() { m_silence.noteLoss(); }
    /// An unsolicited reading has arrived.
    void noteReport() { m_silence.noteReport(); }
    /// A command has ended.
    /// @param isIdentified whether the chassis has answered since it was found
    /// @return whether the pass has ended with it
    bool noteEnd(const StandardCommand &command, bool isIdentified);
    /// The commands of the background were dropped.
    void noteBackgroundDropped() { m_check.noteBackgroundDropped(); }

    /// Whether everything is to be read again; a timer calls it every second behind a pass.
    void watchReports();

    /// How long expected reports have been missing, in ms; 0 if none are expected.
    [[nodiscard]] qint64 silentMs() const { return m_silence.silentMs(); }
    [[nodiscard]] SettingsCheck &check() { return m_check; }
    [[nodiscard]] const SettingsCheck &check() const { return m_check; }

Q_SIGNALS:
    /// Every setting is to be read again.
    void everythingDue();

private:
    void endPass(bool isAcknowledged);
    void follow(const SettingsReading::Advice &advice);

    ChannelLink &m_link;
    std::function<bool()> m_isReporting;
    SettingsCheck m_check;
    SettingsReading m_reading;
    SilenceWatch m_silence;
    QTimer m_silenceTmr;
};
