#pragma once

#include "head/CardListWatch.h"
#include "head/LinkStatus.h"
#include "head/Rereading.h"
#include "inventory/Inventory.h"
#include "link/StandardCommand.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class Channel;
class ChannelLink;
class LinkPort;
class StandardProtocol;
class TmoipCard;
class UniversalChan;

/// Finds out what is at the far end of a standard-protocol link, and keeps the inventory of it.
///
/// It counts down while the chassis boots, queries the version until it is answered, and then the card list, for which
/// cards and channels are made; their settings are read, with a marker behind them. A link that was lost and found goes
/// through the same again, with the channels that are already there; so does a chassis that falls silent, because one
/// that was switched off and on reports nothing until reports are requested.
class Discovery : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Opening, ///< the chassis is given time to boot
        Waiting, ///< it is queried for its version
        Listing, ///< it is queried for its card list, for the first time
        Reading, ///< settings are read until the marker, and the request for reports behind it, have ended
        Live,
        Rereading, ///< settings are read once more, in the background
    };

    struct Options
    {
        QString systemIdentifier; ///< sent to the chassis
        int startupSeconds;       ///< time that the chassis is given to boot
        bool hasTmoipCards;       ///< whether the link's TMoIP list makes cards
    };

    /// @param protocol,port,link of the same link; outlive this
    Discovery(StandardProtocol &protocol, LinkPort &port, ChannelLink &link, const Options &options);

    /// Starts to wait for the chassis.
    /// @param ms interval of the countdown in ms
    void start(int ms);
    void stop() { m_startupTmr.stop(); }
    /// One second of the countdown; behind it, every third second, the version is queried.
    void tick();

    /// The link was lost: nothing is sent until resume(), but a countdown goes on.
    void pause();
    /// The link is back: the chassis is queried for its version until it answers, and then for every setting.
    void resume();

    /// Fills in how far it has come.
    void report(LinkStatus &status) const;
    /// Whether the chassis may hold other settings than the channels, which were all read once.
    [[nodiscard]] bool isStale() const { return m_hasAllSettings && m_state != State::Live; }

    [[nodiscard]] Inventory &inventory() { return m_inventory; }
    [[nodiscard]] const Inventory &inventory() const { return m_inventory; }
    [[nodiscard]] Rereading &rereading() { return m_rereading; }
    [[nodiscard]] const Rereading &rereading() const { return m_rereading; }

    /// A command has ended.
    void noteEnd(const StandardCommand &command);
    /// Takes the answer to a version query, or the end of the end-of-settings marker.
    void process(const StandardCommand &command);
    /// Makes the channels that the card list names.
    void createChannels(const QString &cardList);
    /// Makes a TMoIP card and queries its settings and those of its streams.
    /// @param name see Inventory::addTmoipCard()
    /// @return whether it made one
    bool createTmoipCard(const QString &name);

Q_SIGNALS:
    /// The countdown stands at this many seconds.
    void countedDown(int seconds);
    /// One interval of the countdown has passed.
    void startupTick();
    /// The chassis has answered, for the first time or once more.
    void established();
    /// A channel was made; the system channel first.
    void channelFound(Channel *channel);
    void tmoipCardFound(TmoipCard *card);
    /// Every settings query of every channel has ended; emitted once.
    void allSettingsObtained();

private:
    [[nodiscard]] bool isIdentified() const { return m_state >= State::Listing; }
    [[nodiscard]] bool isReporting() const;
    void identify(const QString &version);
    void addSystemChannel();
    void takeCardList(const QString &cardList);
    void takeTmoipList(const QStringList &entries);
    void halt();
    void readEverythingAgain();
    void requestCardList(StandardCommand::Priority priority);
    void requestCardListAgain();
    void readAllSettings();
    void queueMarker();
    void queue(StandardCommand command, StandardCommand::Priority priority = StandardCommand::Priority::Normal);

    StandardProtocol &m_protocol;
    LinkPort &m_port;
    ChannelLink &m_link;
    const Options m_options;
    Inventory m_inventory;
    State m_state = State::Opening;
    bool m_hasAllSettings = false;
    int m_countdown; ///< seconds
    QTimer m_startupTmr;
    // Progress, by the counts of the queue
    std::size_t m_firstSetting = 0; ///< of a first reading
    std::size_t m_behindSettings = 0;
    std::size_t m_settingsReread = 0;
    CardListWatch m_cardListWatch;
    QTimer m_cardListTmr;
    int m_cardListRounds = 0;
    Rereading m_rereading;
};
