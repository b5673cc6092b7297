#include "channels/RcvrChan.h"

RcvrChan::RcvrChan(QObject *parent, const QString &channel, SerialPortController *link)
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
        const QStringList bounds = range.split(u' ');
        if (bounds.size() < 2)
            continue;
        m_frequencyBounds << bounds[0].toDouble() << bounds[1].toDouble();
    }
}

void RcvrChan::SetUpIFBWsList(const QString &names) { m_ifBandwidths = names.split(u','); }
