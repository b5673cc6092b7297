#include "channels/CmbrChan.h"

CmbrChan::CmbrChan(QObject *parent, const QString &channel, ChannelLink *link)
    : Channel(parent, ChanType, channel, link, kCatalogue)
{
}

void CmbrChan::settingStored(int row)
{
    if (row == at(Commands::IFLS))
        SetUpIFBWsList(getIFLS());
}

void CmbrChan::SetUpIFBWsList(const QString &names) { m_ifBandwidths = names.split(u','); }
