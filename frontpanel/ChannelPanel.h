#pragma once

#include "controls/ControlGuard.h"
#include "controls/FocusReturn.h"
#include "controls/SettingTable.h"

#include <QWidget>

class Channel;
class QGroupBox;
class StaleMark;

/// What the panels of one window share; both outlive the panels.
struct PanelContext
{
    ControlGuard &guard;
    FocusReturn &focusReturn;
};

/// Base of the main window's panels: the controls and displays of one channel.
///
/// A panel is built empty and hidden. It gets its channel once, when all settings are known. Its table of settings then
/// fills it, and shows every later report. Display code shows values and sends nothing; handlers send and leave the
/// showing to the confirmed value, except where a control answers at once.
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
    /// Puts the confirmed values back into fields with a half-typed text.
    virtual void restoreEntries() {}
    /// Shows or hides the mark of a slaved channel.
    virtual void showSlaved(bool slaved) { Q_UNUSED(slaved) }
    /// Marks the values shown as stale.
    /// @param reason shown with the mark; empty removes it
    void setStale(const QString &reason);

protected:
    static constexpr int kBesideName = 180; ///< pixels that the head of most panels needs beside the name

    ChannelPanel(const PanelContext &context, QWidget *parent);

    /// The panel shows @p channel from now on.
    void follow(const Channel *channel) { m_channel = channel; }
    [[nodiscard]] SettingTable &settings() { return m_settings; }
    /// Gives every child its documented name: @p suffix for all, the bare @p number for group boxes.
    void nameChildren(const QString &suffix, const QString &number);
    /// Shows the channel's name as the panel's title, cut to the room there is; the tool tip has the whole of it.
    /// @param besideName pixels that the other things in the panel's head need
    void showName(QGroupBox *box, const QString &name, int besideName);
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

private:
    void setRoomy(bool roomy);
    void elideName();

    PanelContext m_context;
    const Channel *m_channel = nullptr;
    SettingTable m_settings;
    QGroupBox *m_nameBox = nullptr;
    QString m_name;
    int m_besideName = 0; ///< pixels
    StaleMark *m_staleMark;
    bool m_roomy = false; ///< laid out large, since the window has few panels to show
};
