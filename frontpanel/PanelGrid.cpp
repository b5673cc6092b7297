#include "frontpanel/PanelGrid.h"

#include "frontpanel/CombinerPanel.h"
#include "frontpanel/DemodulatorPanel.h"
#include "frontpanel/ReceiverPanel.h"
#include "inventory/ChannelDirectory.h"

#include <QGridLayout>

#include <algorithm>

PanelGrid::PanelGrid(const PanelContext &context, QGridLayout *grid, QWidget *page) : m_grid(grid)
{
    // The combiner stands between the receivers, the demodulators below.
    constexpr std::array kReceiverPlaces{ Place{ 0, 0 }, Place{ 0, 2 } };
    constexpr std::array kDemodulatorPlaces{ Place{ 1, 0 }, Place{ 1, 1 }, Place{ 1, 2 } };
    for (const Place &place : kReceiverPlaces) {
        m_receivers.append(new ReceiverPanel(int(m_receivers.size()) + 1, context, page));
        add(m_receivers.back(), Receivers, place);
    }
    m_combiners.append(new CombinerPanel(1, context, page));
    add(m_combiners.back(), Combiners, { 0, 1 });
    for (const Place &place : kDemodulatorPlaces) {
        m_demodulators.append(new DemodulatorPanel(int(m_demodulators.size()) + 1, context, page));
        add(m_demodulators.back(), Demodulators, place);
    }
}

void PanelGrid::add(ChannelPanel *panel, Kind kind, const Place &place)
{
    m_grid->addWidget(panel, place.row, place.column);
    m_panels[kind].append(panel);
}

QList<Channel *> PanelGrid::fill(const ChannelDirectory &directory, const CardFamilies &families)
{
    if (families.hasQLDXCard)
        followPlayback();
    QList<Channel *> shown;
    fill<RcvrChan>(directory, m_receivers, shown);
    fill<CmbrChan>(directory, m_combiners, shown, families);
    fill<DmdChan>(directory, m_demodulators, shown, families);
    return shown;
}

template <typename C, typename Panel, typename... Families>
void PanelGrid::fill(const ChannelDirectory &directory, const QList<Panel *> &panels, QList<Channel *> &shown,
                     const Families &...families)
{
    const auto channels = directory.all<C>();
    for (qsizetype i = 0; i < channels.size() && i < panels.size(); ++i) {
        panels[i]->setChannel(channels[i], families...);
        shown.append(channels[i]);
    }
}

/// While a receiver plays back a tape, the combiner has no AGC levels to show.
void PanelGrid::followPlayback()
{
    CombinerPanel *const combiner = m_combiners.front();
    for (const ReceiverPanel *panel : std::as_const(m_receivers))
        QObject::connect(panel, &ReceiverPanel::playbackShown, combiner,
                         [combiner](bool playing) { combiner->showAgcLevels(!playing); });
}

bool PanelGrid::arrange() const
{
    bool isAnyVisible = false;
    for (ChannelPanel *panel : all()) {
        if (panel->isHidden())
            continue;
        int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
        m_grid->getItemPosition(m_grid->indexOf(panel), &row, &column, &rowSpan, &columnSpan);
        m_grid->setColumnStretch(column, 1); // an empty column takes no width
        isAnyVisible = true;
    }
    return isAnyVisible;
}

void PanelGrid::showPlayback() const
{
    for (ReceiverPanel *panel : m_receivers)
        panel->showPlayback();
}

void PanelGrid::refresh(Kind kind) const
{
    for (ChannelPanel *panel : m_panels[kind]) {
        if (panel->hasChannel())
            panel->updateDynamicParams();
    }
}

void PanelGrid::show(const QString &address, const QString &mnemonic, const QString &value) const
{
    for (ChannelPanel *panel : all()) {
        if (panel->hasChannel() && panel->address() == address)
            panel->UpdateSetting(mnemonic, value);
    }
}

void PanelGrid::showSlaved(Kind kind, bool slaved) const
{
    for (ChannelPanel *panel : m_panels[kind])
        panel->showSlaved(slaved);
}

void PanelGrid::setStale(const QString &reason) const
{
    for (ChannelPanel *panel : all())
        panel->setStale(reason);
}

QWidget *PanelGrid::neutralFocusHolder() const { return m_receivers.front()->neutralFocusHolder(); }

QList<ChannelPanel *> PanelGrid::all() const
{
    return m_panels[Receivers] + m_panels[Combiners] + m_panels[Demodulators];
}
