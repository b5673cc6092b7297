#pragma once

#include <QList>
#include <QString>

#include <array>

class Channel;
class ChannelDirectory;
class ChannelPanel;
class CombinerPanel;
class DemodulatorPanel;
class QGridLayout;
class QWidget;
class ReceiverPanel;
struct CardFamilies;
struct PanelContext;

/// The panels of the main window: one for each of its places, in a grid that follows the signal flow.
class PanelGrid
{
public:
    enum Kind { Receivers, Combiners, Demodulators, KindCount };

    /// @param grid layout of @p page, which owns the panels
    PanelGrid(const PanelContext &context, QGridLayout *grid, QWidget *page);

    /// Gives the panels their channels. Channels beyond the window's places get no panel.
    /// @return the channels that have one
    [[nodiscard]] QList<Channel *> fill(const ChannelDirectory &directory, const CardFamilies &families);
    /// Lets the visible panels share the width of the window; returns whether there is one.
    [[nodiscard]] bool arrange() const;
    /// Shows the choice of playing back a tape on the receivers.
    void showPlayback() const;

    /// Shows the present status values of one kind of channel.
    void refresh(Kind kind) const;
    /// Shows a value in force on the panel of the channel that has this address.
    void show(const QString &address, const QString &mnemonic, const QString &value) const;
    void showSlaved(Kind kind, bool slaved) const;
    /// Marks all values as stale; an empty reason removes the mark.
    void setStale(const QString &reason) const;

    /// The label that can hold the focus while no control does.
    [[nodiscard]] QWidget *neutralFocusHolder() const;
    [[nodiscard]] const QList<DemodulatorPanel *> &demodulators() const { return m_demodulators; }

private:
    struct Place
    {
        int row;
        int column;
    };

    void add(ChannelPanel *panel, Kind kind, const Place &place);
    template <typename C, typename Panel, typename... Families>
    void fill(const ChannelDirectory &directory, const QList<Panel *> &panels, QList<Channel *> &shown,
              const Families &...families);
    void followPlayback();
    [[nodiscard]] QList<ChannelPanel *> all() const;

    QGridLayout *m_grid;
    std::array<QList<ChannelPanel *>, KindCount> m_panels; ///< every place, by kind
    QList<ReceiverPanel *> m_receivers;
    QList<CombinerPanel *> m_combiners;
    QList<DemodulatorPanel *> m_demodulators;
};
