#include "frontpanel/FrequencyEntry.h"

#include "channels/RcvrChan.h"
#include "controls/DecimalSpinBox.h"
#include "controls/NumberText.h"
#include "frontpanel/TuningRanges.h"

#include <algorithm>

void FrequencyEntry::setChannel(RcvrChan *channel, DecimalSpinBox *box)
{
    m_channel = channel;
    m_box = box;
}

void FrequencyEntry::show(const QString &FREQ) const
{
    const auto frequency = NumberText::parse(FREQ);
    m_box->showReport(frequency, FREQ, frequency.value_or(0));
}

void FrequencyEntry::giveUp() const
{
    m_box->discard();
    show(m_channel->getFREQ());
}

void FrequencyEntry::restore() const
{
    m_box->discard();
    if (!m_channel->isSetPending(RcvrChan::Commands::FREQ))
        show(m_channel->getFREQ());
}

void FrequencyEntry::tune(const QString &text) const
{
    const double frequency = text.toDouble();
    if (!TuningRanges(m_channel->frequencyBounds()).contains(frequency)) {
        refuse(frequency);
        return;
    }
    m_channel->setFREQ(text);
    m_box->lineEdit()->deselect();
}

void FrequencyEntry::refuse(double frequency) const
{
    const TuningRanges ranges(m_channel->frequencyBounds());
    if (auto next = ranges.beyondEdge(frequency)) {
        next = std::clamp(*next, m_box->minimum(), m_box->maximum());
        if (ranges.contains(*next)) { // a card may report ranges that make no sense
            m_box->setValue(*next);   // comes back to tune(), which sends it
            return;
        }
    }
    giveUp();
}
