#include "channels/RcvrChan.h"

#include <QtNumeric>

RcvrChan::RcvrChan(QObject *parent, const QString &channel, ChannelLink *link)
    : Channel(parent, ChanType, channel, link, kCatalogue)
{
}

bool RcvrChan::isSlaving() const { return getSLAVE() == QLatin1StringView("1"); }

void RcvrChan::settingStored(int row)
{
    if (row == at(Commands::FLST))
        SetUpFreqRangeBounds(getFLST());
    else if (row == at(Commands::IFLS))
        SetUpIFBWsList(getIFLS());
}

void RcvrChan::SetUpFreqRangeBounds(const QString &ranges)
{
    m_frequencyBounds.clear();
    for (const QString &range : ranges.split(u',')) {
        bool isUpper = false;
        bool isLower = false;
        const double upper = range.section(u' ', 0, 0).toDouble(&isUpper);
        const double lower = range.section(u' ', 1, 1).toDouble(&isLower);
        if (isUpper && isLower && qIsFinite(upper) && qIsFinite(lower))
            m_frequencyBounds << upper << lower;
    }
}

void RcvrChan::SetUpIFBWsList(const QString &names) { m_ifBandwidths = names.split(u','); }
