#include "head/Discovery.h"

#include "channels/TmoipCard.h"
#include "channels/TmoipChan.h"
#include "channels/UniversalChan.h"
#include "head/StandardProtocol.h"
#include "link/ChannelLink.h"
#include "link/LinkPort.h"

#include <QLoggingCategory>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(lcDiscovery, "zirvo.discovery", QtCriticalMsg)

using Commands = UniversalChan::Commands;
using Priority = StandardCommand::Priority;

constexpr int kTickMs = 1000;
constexpr int kVersionRetrySeconds = 2; ///< ticks between two rounds of version queries, less one
constexpr int kCardListRetryMs = 3000;
constexpr int kCardListRounds = 4; ///< retries once the cards are known

void requestSettings(Channel *channel, Priority priority)
{
    channel->RequestSettings(priority);
    if (const auto *const card = qobject_cast<TmoipCard *>(channel)) {
        for (TmoipChan *stream : card->tmoipChanSlots())
            stream->RequestSettings(priority);
    }
}

} // namespace

Discovery::Discovery(StandardProtocol &protocol, LinkPort &port, ChannelLink &link, const Options &options)
    : m_protocol(protocol)
    , m_port(port)
    , m_link(link)
    , m_options(options)
    , m_inventory(link)
    , m_countdown(options.startupSeconds)
    , m_rereading(link, startedClock(), [this] { return isReporting(); })
{
    m_rereading.setParent(this);
    m_cardListTmr.setInterval(kCardListRetryMs);
    connect(&m_startupTmr, &QTimer::timeout, this, &Discovery::startupTick);
    connect(&m_cardListTmr, &QTimer::timeout, this, &Discovery::requestCardListAgain);
    connect(&m_rereading, &Rereading::everythingDue, this, &Discovery::readEverythingAgain);
}

// Start-up

void Discovery::start(int ms) { m_startupTmr.start(ms); }

void Discovery::tick()
{
    Q_EMIT countedDown(m_countdown);
    if (m_countdown > 0) {
        // A booting chassis chatters; whole frames among it were read when they arrived.
        if (m_port.port().isOpen())
            m_port.port().readAll();
        --m_countdown;
        return;
    }
    if (isIdentified() || m_port.isLost())
        return;
    m_state = State::Waiting;
    queue(StandardCommand::query(nullptr, UniversalChan::Address, Commands::VER));
    queue(StandardCommand::query(nullptr, UniversalChan::Address, Commands::VERTSKB));
    m_countdown = kVersionRetrySeconds;
}

void Discovery::process(const StandardCommand &command)
{
    if (command.mnemonic() == Commands::NOTIFY) {
        // However the marker ended: a stray NAK inside its millisecond must not end start-up for ever.
        if (!std::exchange(m_hasAllSettings, true)) {
            qCInfo(lcDiscovery) << "all settings obtained";
            Q_EMIT allSettingsObtained();
        }
    } else if (command.type() == StandardCommand::Query && command.status() == StandardCommand::Completed &&
               !isIdentified() && !m_port.isLost()) {
        identify(command.responseData());
    }
}

void Discovery::identify(const QString &version)
{
    qCInfo(lcDiscovery) << "chassis established, version" << version;
    m_startupTmr.stop();
    m_state = State::Listing;
    if (!m_inventory.systemChannel())
        addSystemChannel();
    queue(StandardCommand::set(nullptr, UniversalChan::Address, Commands::SYSID, m_options.systemIdentifier));
    requestCardList(Priority::Normal); // when the cards are known, to find out whether they are still the same
    m_cardListTmr.start();
    m_cardListRounds = 0;
    m_cardListWatch.restart();
    if (m_inventory.isKnown())
        readAllSettings();
    m_inventory.systemChannel()->setVerTsMain(version);
    Q_EMIT established();
}

void Discovery::addSystemChannel()
{
    UniversalChan *const system = m_inventory.addSystemChannel(m_options.systemIdentifier);
    connect(system, &UniversalChan::cardListReceived, this, &Discovery::takeCardList);
    if (m_options.hasTmoipCards)
        connect(system, &UniversalChan::tmoipListReceived, this, &Discovery::takeTmoipList);
    Q_EMIT channelFound(system);
    m_protocol.setSystemChannel(system);
}

// Cards

void Discovery::requestCardList(Priority priority)
{
    queue(StandardCommand::query(nullptr, UniversalChan::Address, Commands::CLST), priority);
}

/// Without end only while no cards are known.
void Discovery::requestCardListAgain()
{
    if (m_inventory.isKnown() && ++m_cardListRounds == kCardListRounds)
        m_cardListTmr.stop();
    requestCardList(m_inventory.isKnown() ? Priority::Background : Priority::Normal);
}

/// Only the first list makes cards and channels.
void Discovery::takeCardList(const QString &cardList)
{
    if (m_inventory.isKnown()) {
        if (isIdentified() && m_cardListWatch.note(cardList))
            m_cardListTmr.stop();
        return;
    }
    qCInfo(lcDiscovery) << "card list" << cardList;
    m_cardListTmr.stop();
    m_cardListWatch.setKnown(cardList);
    m_inventory.takeCardList(cardList);
    m_inventory.systemChannel()->setCardInfo(m_inventory.cardInfoStrings());
    createChannels(cardList);
    for (Channel *channel : m_link.channels())
        channel->SetSlaveChanList(&m_link, QString::fromLatin1(channel->metaObject()->className()));
    readAllSettings();
}

void Discovery::createChannels(const QString &cardList)
{
    for (Channel *channel : m_inventory.addChannels(cardList))
        Q_EMIT channelFound(channel);
}

void Discovery::takeTmoipList(const QStringList &entries)
{
    for (const QString &entry : entries) {
        if (createTmoipCard(entry.section(u' ', 0, 0)))
            m_inventory.systemChannel()->addTmoipEntry(entry);
    }
}

bool Discovery::createTmoipCard(const QString &name)
{
    TmoipCard *const card = m_options.hasTmoipCards ? m_inventory.addTmoipCard(name) : nullptr;
    if (!card)
        return false;
    Q_EMIT channelFound(card);
    if (m_inventory.isKnown()) // or its settings are read with all others
        requestSettings(card, Priority::Normal);
    Q_EMIT tmoipCardFound(card);
    return true;
}

// Settings

/// Once all settings were read, reading them again yields to the operator's changes and has no marker, which ends only
/// once.
void Discovery::readAllSettings()
{
    m_state = m_hasAllSettings ? State::Rereading : State::Reading;
    const Priority priority = m_hasAllSettings ? Priority::Background : Priority::Normal;
    const auto &commands = m_protocol.queue();
    m_firstSetting = commands.appendedCount();
    for (const auto &channel : m_inventory.channels())
        requestSettings(channel.get(), priority);
    m_behindSettings = commands.appendedCount();
    m_settingsReread = commands.backgroundCount();
    if (!m_hasAllSettings)
        queueMarker();
    queue(StandardCommand::set(nullptr, UniversalChan::Address, Commands::TRON, u"ON"_s), priority);
    m_rereading.begin();
}

void Discovery::queueMarker()
{
    queue({ m_inventory.systemChannel(),
            UniversalChan::Address,
            Commands::NOTIFY,
            {},
            StandardCommand::Created,
            StandardCommand::Marker,
            StandardCommand::kMarkerTimeOutMs });
}

void Discovery::queue(StandardCommand command, Priority priority)
{
    command.setPriority(priority);
    m_link.AddCmdToTxmtCmdQueue(new StandardCommand(std::move(command)));
}

void Discovery::noteEnd(const StandardCommand &command)
{
    if (m_rereading.noteEnd(command, isIdentified()))
        m_state = State::Live;
}

bool Discovery::isReporting() const
{
    return std::ranges::any_of(m_inventory.channels(), [](const auto &channel) { return channel->isReporting(); });
}

// Loss and silence

void Discovery::pause()
{
    m_rereading.noteLoss();
    halt();
}

void Discovery::halt()
{
    m_cardListTmr.stop();
    m_rereading.giveUp();
    if (!isIdentified())
        return;
    m_state = State::Waiting;
    m_countdown = 0;
}

void Discovery::resume()
{
    if (!m_startupTmr.isActive())
        start(kTickMs);
}

/// What still waits of the reading before is dropped: it is queried again with all else.
void Discovery::readEverythingAgain()
{
    qCInfo(lcDiscovery) << "reads everything again";
    halt();
    m_protocol.dropBackground();
    m_rereading.noteBackgroundDropped();
    resume();
}

void Discovery::report(LinkStatus &status) const
{
    const auto &commands = m_protocol.queue();
    const std::size_t taken = commands.takenCount();
    std::size_t asked = m_behindSettings - m_firstSetting;
    std::size_t read = std::clamp(taken, m_firstSetting, m_behindSettings) - m_firstSetting;
    status.state = LinkStatus::State::Live;
    switch (m_state) {
    case State::Opening:
        status.state = LinkStatus::State::Opening;
        break;
    case State::Waiting:
    case State::Listing:
        status.state = LinkStatus::State::Waiting;
        break;
    case State::Rereading:
        asked = m_settingsReread;
        read = asked - (std::clamp<std::size_t>(commands.backgroundCount(), 1, asked + 1) - 1);
        status.state = LinkStatus::State::Reading;
        break;
    case State::Reading:
        if (taken < m_behindSettings)
            status.state = LinkStatus::State::Reading;
        break;
    case State::Live:
        break;
    }
    status.settingsAsked = static_cast<int>(asked);
    status.settingsRead = static_cast<int>(read);
    status.hasOtherCards = m_cardListWatch.hasChanged();
    status.withoutReportMs = m_rereading.silentMs();
}
