#include "head/HeadLinks.h"

#include "channels/BistChan.h"
#include "channels/SpectralChan.h"
#include "channels/TmoipCard.h"

#include <algorithm>

namespace {

constexpr int kStartupTickMs = 1000;

bool isTmoipCard(const Channel *channel) { return qobject_cast<const TmoipCard *>(channel); }

} // namespace

HeadLinks::~HeadLinks()
{
    while (!m_links.isEmpty())
        delete m_links.takeLast();
}

SerialPortController *HeadLinks::open(SerialPortController::PORT_TYPE type, const QString &systemIdentifier)
{
    auto *const link = new SerialPortController(nullptr, type, systemIdentifier);
    m_links.append(link);
    Q_EMIT added(link);
    if (!link->hasOpened())
        Q_EMIT deviceMissing(link);
    return link;
}

SerialPortController *HeadLinks::link(SerialPortController::PORT_TYPE type) const
{
    return *std::ranges::find(m_links, type, &SerialPortController::portType);
}

SerialPortController *HeadLinks::openCommandLink(const QString &systemIdentifier)
{
    return open(SerialPortController::COMMAND_LINK, systemIdentifier);
}

void HeadLinks::openFurtherLinks()
{
    SerialPortController *const cards = commandLink();
    const bool hasTmoipCard = std::ranges::any_of(cards->channels(), isTmoipCard);
    open(SerialPortController::EYE_CONST_LINK)->GenerateChannelList(cards);
    for (const auto type : { SerialPortController::REMOTE_LINK, SerialPortController::REMOTE_EYE_AND_STATUS_LINK }) {
        SerialPortController *const client = open(type);
        client->GenerateChannelList(cards);
        if (!hasTmoipCard)
            connect(cards, &SerialPortController::TmoipCardObtained, client, &SerialPortController::addTmoipCard);
    }
    SerialPortController *const spectral = open(SerialPortController::SPECTRAL_LINK);
    connect(spectral, &SerialPortController::AllSettingsObtained, this, &HeadLinks::spectralSettingsObtained);
    spectral->StartEstablishCommTmr(kStartupTickMs, nullptr);
}

void HeadLinks::shareSpectralChannels()
{
    for (Channel *channel : link(SerialPortController::SPECTRAL_LINK)->channels()) {
        const bool isSpectral = qobject_cast<SpectralChan *>(channel);
        if (isSpectral)
            commandLink()->addSpecChan(channel);
        if (isSpectral || qobject_cast<BistChan *>(channel)) {
            link(SerialPortController::REMOTE_LINK)->addSpecChan(channel);
            link(SerialPortController::REMOTE_EYE_AND_STATUS_LINK)->addSpecChan(channel);
        }
    }
}
