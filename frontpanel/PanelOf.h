#pragma once

#include "channels/Channel.h"
#include "controls/ChoiceBox.h"
#include "controls/OnOff.h"
#include "controls/WidgetUpdate.h"
#include "frontpanel/ChannelPanel.h"

#include <QPushButton>

/// A panel of channels of the class @p C: the rows of its table, and what most handlers do.
template <typename C>
class PanelOf : public ChannelPanel
{
protected:
    using Get = QString (C::*)() const;
    using Set = void (C::*)(const QString &);
    using Items = const QStringList &(C::*)() const;

    using ChannelPanel::ChannelPanel;

    /// The panel shows @p channel from now on.
    void follow(C *channel)
    {
        ChannelPanel::follow(channel);
        m_channel = channel;
    }
    [[nodiscard]] C *channel() const { return m_channel; }

    // Rows of the table

    void add(QLatin1StringView mnemonic, Get get, SettingTable::Show show)
    {
        settings().add(mnemonic, m_channel, get, std::move(show));
    }
    /// The channel's name as the title.
    void addName(QGroupBox *box, int besideName = kBesideName)
    {
        settings().add(C::Commands::NAME, m_channel, &C::getNAME,
                       [this, box, besideName](const QString &name) { showName(box, name, besideName); });
    }
    /// A position in a list, and the handler of the operator's choice. Without a handler a choice sends nothing.
    template <typename Panel>
    void addChoice(QLatin1StringView mnemonic, Get get, ChoiceBox *box, void (Panel::*chosen)(int),
                   SettingTable::Show show = {})
    {
        if (!show)
            show = [box](const QString &value) { box->showPosition(value); };
        add(mnemonic, get, std::move(show));
        if (chosen)
            connect(box, &QComboBox::currentIndexChanged, static_cast<Panel *>(this), chosen);
    }
    /// The items of a list; whenever they have been exchanged, the value in force of @p position is selected, unless a
    /// change of it waits for its answer.
    void addItems(QLatin1StringView mnemonic, Get get, ChoiceBox *box, Items items, QLatin1StringView position)
    {
        add(mnemonic, get, [channel = m_channel, box, items](const QString &) { box->refill((channel->*items)()); });
        connect(box, &ChoiceBox::refilled, this, [this, position] {
            if (!m_channel->isSetPending(position))
                settings().showInForce(position);
        });
    }

    // What the operator does

    /// Sends the position of the chosen item.
    void choose(Set set, int index)
    {
        onOperatorChange([channel = m_channel, set, index] { (channel->*set)(QString::number(index)); });
    }
    /// Sends the state of a check box.
    void choose(Set set, bool checked) { choose(set, checked ? 1 : 0); }
    /// Sends the chosen slope of an AGC output; the scale of its bar follows at once.
    void chooseSlope(QProgressBar *bar, Set set, int index)
    {
        onOperatorChange([channel = m_channel, bar, set, slope = QString::number(index)] {
            WidgetUpdate::agcSlope(bar, slope);
            (channel->*set)(slope);
        });
    }
    /// Shows the other state of an on/off setting at once and sends it.
    template <typename Show>
    void toggle(const QString &held, Show show, Set set)
    {
        const QString value = QString::number(isOff(held) ? 1 : 0);
        show(value);
        (m_channel->*set)(value);
        focusReturn().giveBack();
    }

private:
    C *m_channel = nullptr;
};
