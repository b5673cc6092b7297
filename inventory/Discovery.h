#pragma once

#include "inventory/Card.h"
#include "inventory/SettingsCheck.h"
#include "inventory/SettingsReading.h"
#include "inventory/SilenceWatch.h"
#include "link/LinkStatus.h"
#include "link/StandardCommand.h"

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

class Channel;
class QLabel;
class SerialPortController;
class UniversalChan;

/// Finds out what is at the far end of a standard-protocol link, and owns what it finds.
///
/// It counts down while the chassis boots, asks for its version until it answers, and then for its card list, which
/// makes cards and channels; these ask for their settings, with a marker behind them. A link that was lost and found
/// goes through the same again, with the channels that are already there; so does a chassis that falls silent, because
/// one that was switched off and on reports nothing until it is asked to.
class Discovery : public QObject
{
    Q_OBJECT

public:
    /// @param link carries the questions; outlives this
    /// @param startupSeconds time that the chassis is given to boot
    Discovery(SerialPortController *link, const QString &systemIdentifier, int startupSeconds);
    ~Discovery() override;

    /// Starts to wait for the chassis.
    /// @param ms    interval of the countdown in ms
    /// @param label shows the remaining seconds until the chassis answers; may be null
    void start(int ms, QLabel *label);
    void stop() { m_startupTmr.stop(); }
    /// One second of the countdown; behind it, every third second, the version is asked for.
    void tick();

    /// The link has been lost: nothing is asked until resume(), but a countdown goes on.
    void pause();
    /// The link is back: the chassis is asked for its version until it answers, and then for every setting.
    void resume();

    /// Tells how far it has come.
    void report(LinkStatus &status) const;

    /// Whether the queries that are queued just now are the repeated reading of settings, which lets all else pass.
    [[nodiscard]] bool readsInBackground() const { return m_readsInBackground; }
    /// Whether the chassis may hold other settings than the channels, which were all read once.
    [[nodiscard]] bool isStale() const { return m_hasAllSettings && (!m_isEstablished || m_reading.isRunning()); }

    /// Reads back what is in doubt.
    [[nodiscard]] SettingsCheck &check() { return m_check; }

    /// Notes a reading that came unasked.
    void noteReport();
    /// Notes how a command has ended: a chassis that was away while it was asked is asked anew.
    void noteEnd(const StandardCommand &command);
    /// Takes the answer to a version query, or the end of the end-of-settings marker.
    void process(const StandardCommand &command);
    /// Creates cards and channels and queues every settings query, the end-of-settings marker behind them, and the
    /// request that starts the reports.
    void processCardList(const QString &cardList);
    /// Takes a later list: one that differs is believed when it comes twice in a row.
    void noteCardList(const QString &cardList);
    /// Creates the channels that the card list tells of.
    void createChannels(const QString &cardList);
    /// Creates a TMoIP card and asks for its settings and those of its streams.
    /// @param name "TM" and the card's number, or the number alone, in one or two digits; anything else and a card that
    ///             is known already make no card
    /// @return whether it made one
    bool createTmoipCard(const QString &name);
    /// Merges the card list's entries into one card each.
    void consolidateCards();
    [[nodiscard]] const QList<Card> &cards() const { return m_cards; }

private:
    void establish(const QString &version);
    void askAnew();
    void halt();
    void watchReports();
    void endReading(bool isAcknowledged);
    void follow(const SettingsReading::Advice &advice);
    void createSystemChannel();
    void requestCardList();
    void requestCardListAgain();
    void requestAllSettings();
    void queueRequest(const QString &mnemonic, const QString &data, StandardCommand::CommandType type);
    void add(std::unique_ptr<Channel> channel);

    SerialPortController *m_link;
    const QString m_systemIdentifier;
    int m_countdown; ///< seconds
    bool m_hasAsked = false;
    bool m_isEstablished = false;
    bool m_hasCardList = false;
    bool m_hasAllSettings = false;
    std::size_t m_firstSetting = 0; ///< of the first reading, by the queue's count
    std::size_t m_behindSettings = 0;
    std::size_t m_settingsAsked = 0; ///< of a repeated reading
    bool m_readsInBackground = false;
    SettingsCheck m_check;
    SettingsReading m_reading; ///< runs until the request behind the settings has ended
    QElapsedTimer m_clock;
    SilenceWatch m_silence;
    QString m_cardList;
    std::optional<QString> m_otherCardList; ///< as told last since the chassis was found, if it differs
    int m_cardListRounds = 0;
    bool m_hasOtherCards = false;
    QTimer m_startupTmr;
    QTimer m_cardListTmr;
    QTimer m_silenceTmr;
    QPointer<QLabel> m_countdownLabel;
    UniversalChan *m_systemChannel = nullptr;
    std::vector<std::unique_ptr<Channel>> m_channels;
    QList<Card> m_cards;
};
