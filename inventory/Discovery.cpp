#include "inventory/Discovery.h"

#include "channels/TmoipCard.h"
#include "channels/TmoipChan.h"
#include "channels/UniversalChan.h"
#include "inventory/CardList.h"
#include "inventory/ChannelFactory.h"
#include "link/SerialPortController.h"

#include <QLabel>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(lcDiscovery, "zirvo.discovery", QtCriticalMsg)

constexpr int kTickMs = 1000;
constexpr int kVersionRetrySeconds = 2; ///< ticks between two rounds of version queries, less one
constexpr int kCardListRetryMs = 3000;
constexpr int kCardListRounds = 4; ///< so often again once the cards are known
constexpr int kSilenceCheckMs = 1000;

void requestSettings(Channel *channel)
{
    channel->RequestSettings();
    if (const auto *const card = qobject_cast<TmoipCard *>(channel)) {
        for (TmoipChan *stream : card->tmoipChanSlots())
            stream->RequestSettings();
    }
}

} // namespace

Discovery::Discovery(SerialPortController *link, const QString &systemIdentifier, int startupSeconds)
    : QObject(link)
    , m_link(link)
    , m_systemIdentifier(systemIdentifier)
    , m_countdown(startupSeconds)
    , m_check(link, this)
    , m_silence([this] { return m_clock.elapsed(); })
{
    m_clock.start();
    m_cardListTmr.setInterval(kCardListRetryMs);
    connect(&m_startupTmr, &QTimer::timeout, link, &SerialPortController::EstablishCommTmr_Tick, Qt::QueuedConnection);
    connect(&m_cardListTmr, &QTimer::timeout, this, &Discovery::requestCardListAgain);
    m_silenceTmr.setInterval(kSilenceCheckMs);
    connect(&m_silenceTmr, &QTimer::timeout, this, &Discovery::watchReports);
}

Discovery::~Discovery() = default;

void Discovery::start(int ms, QLabel *label)
{
    m_countdownLabel = label;
    m_startupTmr.start(ms);
}

void Discovery::tick()
{
    if (m_countdownLabel)
        m_countdownLabel->setText(QString::number(m_countdown));
    if (m_countdown > 0) {
        // A booting chassis chatters; whole frames among it were read when they arrived.
        if (m_link->port().isOpen())
            m_link->port().readAll();
        --m_countdown;
        return;
    }
    if (m_isEstablished || m_link->isLost())
        return;
    m_hasAsked = true;
    queueRequest(UniversalChan::Commands::VER, {}, StandardCommand::Query);
    queueRequest(UniversalChan::Commands::VERTSKB, {}, StandardCommand::Query);
    m_countdown = kVersionRetrySeconds;
}

void Discovery::pause()
{
    m_silence.noteLoss();
    halt();
}

void Discovery::halt()
{
    m_cardListTmr.stop();
    m_silenceTmr.stop();
    m_reading.giveUp();
    m_check.setActive(false);
    if (std::exchange(m_isEstablished, false))
        m_countdown = 0;
}

void Discovery::resume()
{
    if (!m_startupTmr.isActive())
        start(kTickMs, nullptr);
}

/// What still waits of the reading before is asked again with all else.
void Discovery::askAnew()
{
    qCInfo(lcDiscovery) << "asks for everything anew";
    halt();
    m_link->dropBackground();
    m_check.noteBackgroundDropped();
    resume();
}

void Discovery::watchReports()
{
    const bool isReporting =
        std::ranges::any_of(m_channels, [](const auto &channel) { return channel->isReporting(); });
    const bool isSilent = m_silence.isOver(isReporting);
    if (isSilent || m_reading.isDueAnew())
        askAnew();
}

void Discovery::noteReport() { m_silence.noteReport(); }

void Discovery::noteEnd(const StandardCommand &command)
{
    using Commands = UniversalChan::Commands;
    const bool isCheck = m_check.noteEnd(command, m_reading.isProbe(command));
    if (command.status() == StandardCommand::TimedOut)
        m_silence.noteTimeOut();
    if (!m_isEstablished)
        return;
    const bool isAnswered = command.status() == StandardCommand::Completed;
    if (command.mnemonic() == Commands::VERTSKB && !isAnswered && !isCheck)
        m_check.addMissing(command); // asked for together with the version, whose answer ends that
    if (command.mnemonic() == Commands::TRON && m_reading.isRunning()) {
        endReading(isAnswered);
    } else if (command.mnemonic() == Commands::CLST) {
        if (isAnswered)
            m_reading.note(command);
    } else if (command.type() == StandardCommand::Query && m_reading.isRunning()) {
        m_reading.note(command);
    } else {
        follow(m_reading.noteProbe(command));
    }
}

void Discovery::noteCardList(const QString &cardList)
{
    if (!m_isEstablished)
        return;
    const bool isOther = cardList != m_cardList;
    const bool isBelieved = !isOther || cardList == m_otherCardList;
    m_hasOtherCards = isOther && (isBelieved || m_hasOtherCards);
    m_otherCardList = isOther ? std::optional(cardList) : std::nullopt;
    if (isBelieved)
        m_cardListTmr.stop();
}

void Discovery::endReading(bool isAcknowledged)
{
    m_silenceTmr.start();
    m_silence.endReading(isAcknowledged);
    follow(m_reading.end());
    m_check.setActive(true);
}

void Discovery::follow(const SettingsReading::Advice &advice)
{
    if (advice.isAnew)
        askAnew();
    for (const StandardCommand &query : advice.missing)
        m_check.addMissing(query);
    for (const StandardCommand &query : advice.queries)
        m_link->queueInBackground(new StandardCommand(query.owner(), query.address(), query.mnemonic(), query.data(),
                                                      StandardCommand::Queued, StandardCommand::Query,
                                                      StandardCommand::kTimeOutMs));
}

void Discovery::report(LinkStatus &status) const
{
    const auto &queue = m_link->txmtCmdQueue();
    const std::size_t taken = queue.takenCount();
    const bool isRepeated = m_reading.isRunning() && m_settingsAsked > 0;
    if (isRepeated) {
        const std::size_t ahead = std::clamp<std::size_t>(queue.backgroundCount(), 1, m_settingsAsked + 1) - 1;
        status.settingsAsked = static_cast<int>(m_settingsAsked);
        status.settingsRead = static_cast<int>(m_settingsAsked - ahead);
    } else {
        status.settingsAsked = static_cast<int>(m_behindSettings - m_firstSetting);
        status.settingsRead = static_cast<int>(std::clamp(taken, m_firstSetting, m_behindSettings) - m_firstSetting);
    }
    status.hasOtherCards = m_hasOtherCards;
    status.withoutReportMs = m_silence.silentMs();
    if (!m_hasAsked)
        status.state = LinkStatus::State::Opening;
    else if (!m_isEstablished || !m_hasCardList)
        status.state = LinkStatus::State::Waiting;
    else if (isRepeated || taken < m_behindSettings)
        status.state = LinkStatus::State::Reading;
    else
        status.state = LinkStatus::State::Live;
}

void Discovery::process(const StandardCommand &command)
{
    if (command.mnemonic() == UniversalChan::Commands::NOTIFY) {
        // However the marker ended: a stray NAK inside its millisecond must not end start-up for ever.
        if (!std::exchange(m_hasAllSettings, true)) {
            qCInfo(lcDiscovery) << "all settings obtained";
            m_link->EmitAllSettingsObtained();
        }
    } else if (command.type() == StandardCommand::Query && command.status() == StandardCommand::Completed &&
               !m_isEstablished && !m_link->isLost()) {
        establish(command.responseData());
    }
}

void Discovery::establish(const QString &version)
{
    qCInfo(lcDiscovery) << "chassis established, version" << version;
    m_startupTmr.stop();
    m_isEstablished = true;
    if (m_countdownLabel)
        m_countdownLabel->hide();
    if (!m_systemChannel)
        createSystemChannel();
    queueRequest(UniversalChan::Commands::SYSID, m_systemIdentifier, StandardCommand::Set);
    requestCardList(); // when it is known, to tell whether the cards are still those
    m_cardListTmr.start();
    m_cardListRounds = 0;
    m_otherCardList.reset();
    if (m_hasCardList)
        requestAllSettings();
    m_systemChannel->setVerTsMain(version);
    m_link->EmitCommunicationEstablished();
}

void Discovery::createSystemChannel()
{
    auto owned = std::make_unique<UniversalChan>(nullptr, u"0"_s, m_link);
    m_systemChannel = owned.get();
    m_systemChannel->setSystemIdentifier(m_systemIdentifier);
    add(std::move(owned));
    m_link->setSystemChannel(m_systemChannel);
}

void Discovery::requestCardList() { queueRequest(UniversalChan::Commands::CLST, {}, StandardCommand::Query); }

/// Without end only while no cards are known.
void Discovery::requestCardListAgain()
{
    const QScopedValueRollback background(m_readsInBackground, m_hasCardList);
    if (m_hasCardList && ++m_cardListRounds == kCardListRounds)
        m_cardListTmr.stop();
    requestCardList();
}

void Discovery::processCardList(const QString &cardList)
{
    qCInfo(lcDiscovery) << "card list" << cardList;
    m_cardListTmr.stop();
    m_hasCardList = true;
    m_cardList = cardList;
    m_cards = CardList::parse(cardList);
    consolidateCards();
    createChannels(cardList);
    for (Channel *channel : m_link->channels())
        channel->SetSlaveChanList(m_link, QString::fromLatin1(channel->metaObject()->className()));
    requestAllSettings();
}

/// Once all settings are known, reading them again lets the operator's changes pass and has no marker, whose end is
/// told only once.
void Discovery::requestAllSettings()
{
    const QScopedValueRollback background(m_readsInBackground, m_hasAllSettings);
    const auto &queue = m_link->txmtCmdQueue();
    m_firstSetting = queue.appendedCount();
    for (const auto &channel : m_channels)
        requestSettings(channel.get());
    m_behindSettings = queue.appendedCount();
    m_settingsAsked = queue.backgroundCount();
    if (!m_hasAllSettings)
        m_link->AddCmdToTxmtCmdQueue(new StandardCommand(m_systemChannel, UniversalChan::Address,
                                                         UniversalChan::Commands::NOTIFY, {}, StandardCommand::Queued,
                                                         StandardCommand::Marker, StandardCommand::kMarkerTimeOutMs));
    queueRequest(UniversalChan::Commands::TRON, u"ON"_s, StandardCommand::Set);
    m_silence.beginReading();
    m_reading.begin();
}

void Discovery::consolidateCards() { m_cards = CardList::consolidated(m_cards); }

void Discovery::createChannels(const QString &cardList)
{
    for (auto &channel : ChannelFactory::create(cardList, m_link))
        add(std::move(channel));
}

bool Discovery::createTmoipCard(const QString &name)
{
    static const QRegularExpression slot(u"^(?:%1)?(\\d{1,2})$"_s.arg(TmoipCard::ChanType));
    const QString number = slot.match(name).captured(1);
    auto owned = std::make_unique<TmoipCard>(nullptr, number, m_link);
    TmoipCard *const card = owned.get();
    const auto isKnown = [card](const auto &channel) { return channel->address() == card->address(); };
    if (number.isEmpty() || std::any_of(m_channels.cbegin(), m_channels.cend(), isKnown))
        return false;
    add(std::move(owned));
    if (m_hasCardList) // or it is asked with all others
        requestSettings(card);
    m_link->EmitTmoipCardObtained(card);
    return true;
}

void Discovery::queueRequest(const QString &mnemonic, const QString &data, StandardCommand::CommandType type)
{
    m_link->AddCmdToTxmtCmdQueue(new StandardCommand(nullptr, UniversalChan::Address, mnemonic, data,
                                                     StandardCommand::Queued, type, StandardCommand::kTimeOutMs));
}

void Discovery::add(std::unique_ptr<Channel> channel)
{
    m_channels.push_back(std::move(channel));
    m_link->addChannel(m_channels.back().get());
}
