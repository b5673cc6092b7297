#pragma once

#include "channels/Channel.h"
#include "controls/ChoiceBox.h"
#include "controls/ControlGuard.h"
#include "controls/FocusReturn.h"
#include "controls/OnOff.h"
#include "controls/WidgetUpdate.h"

#include <QWidget>

class QGroupBox;
class QPushButton;
class StaleMark;

/// What the panels of one window share; both outlive the panels.
struct PanelContext
{
    ControlGuard &guard;
    FocusReturn &focusReturn;
};

/// Base of the main window's panels: the controls and displays of one channel.
///
/// A panel is built empty and hidden. It gets its channel once, when all settings are known: it is filled first and
/// connected afterwards. Display code shows values and sends nothing; handlers send and leave the showing to the
/// confirmed value, except where a control answers at once.
class ChannelPanel : public QWidget
{
    Q_OBJECT

public:
    [[nodiscard]] bool hasChannel() const { return m_channel != nullptr; }
    /// Address of the channel shown; empty while there is none.
    [[nodiscard]] QString address() const;

    /// Shows a confirmed setting. A mnemonic that the panel does not show is ignored.
    void UpdateSetting(const QString &Cmd, const QString &Data);
    /// Shows the channel's status values; about once a second.
    virtual void updateDynamicParams() = 0;
    /// Puts the confirmed values back into fields that the operator left half-typed.
    virtual void restoreEntries() {}
    /// Shows or hides the mark of a slaved channel.
    virtual void showSlaved(bool slaved) { Q_UNUSED(slaved) }
    /// Marks the values shown as old, because the chassis does not tell new ones.
    /// @param reason shown with the mark; empty takes it off
    void setStale(const QString &reason);

protected:
    ChannelPanel(const PanelContext &context, QWidget *parent);

    /// Sends @p channel's settings to this panel from now on.
    void follow(const Channel *channel) { m_channel = channel; }
    /// Gives every child its documented name: @p suffix for all, the bare @p number for group boxes.
    void nameChildren(const QString &suffix, const QString &number);
    /// Shows the channel's name as the panel's title: never wider than there is room for, whole in the tool tip.
    /// @param besideName pixels that the other things in the panel's head need
    void showName(QGroupBox *box, const QString &name, int besideName = 180);
    virtual void showSetting(const QString &Cmd, const QString &Data) = 0;
    void resizeEvent(QResizeEvent *event) override;

    [[nodiscard]] bool AcceptControlChanges() const { return m_context.guard.AcceptControlChanges(); }
    [[nodiscard]] ControlGuard &guard() const { return m_context.guard; }
    [[nodiscard]] FocusReturn &focusReturn() const { return m_context.focusReturn; }

    /// Runs @p action if the operator made the change, and starts the focus return.
    template <typename Action>
    void onOperatorChange(Action action)
    {
        if (!AcceptControlChanges())
            return;
        focusReturn().start();
        action();
    }

    /// Has @p show select what is in force whenever the items of @p box have been exchanged, unless the operator has
    /// asked for another one.
    template <typename Show>
    void onRefilled(const ChoiceBox *box, QLatin1StringView mnemonic, Show show)
    {
        connect(box, &ChoiceBox::refilled, this, [this, mnemonic, show] {
            if (!m_channel->isSetPending(mnemonic))
                show();
        });
    }

    /// Sends the position that the operator chose in a combo box.
    template <typename C, typename Base>
    void chooseIndex(C *channel, void (Base::*set)(const QString &), int index)
    {
        onOperatorChange([channel, set, index] { (channel->*set)(QString::number(index)); });
    }

    /// Shows the other state of an on/off setting on its button at once and sends it.
    template <typename C, typename Base>
    void toggle(QPushButton *button, C *channel, const QString &held, void (Base::*set)(const QString &))
    {
        const QString value = QString::number(isOff(held) ? 1 : 0);
        WidgetUpdate::onOff(button, value);
        (channel->*set)(value);
        focusReturn().giveBack();
    }

    /// Sends a box that the operator has checked or unchecked.
    template <typename C, typename Base>
    void chooseChecked(C *channel, void (Base::*set)(const QString &), bool checked)
    {
        onOperatorChange([channel, set, checked] { (channel->*set)(QString::number(checked ? 1 : 0)); });
    }

private:
    void setRoomy(bool roomy);
    void elideName();

    PanelContext m_context;
    const Channel *m_channel = nullptr;
    QGroupBox *m_nameBox = nullptr;
    QString m_name;
    int m_besideName = 0; ///< pixels
    StaleMark *m_staleMark;
    bool m_roomy = false; ///< laid out large, since the window has few panels to show
};
