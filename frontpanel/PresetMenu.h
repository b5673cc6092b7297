#pragma once

#include <QStringList>
#include <QTimer>

class FocusReturn;
class QWidget;
class SerialPortController;

/// The menu "Presets": asks the chassis for the list of its presets and opens the dialog that the operator waits for.
class PresetMenu
{
public:
    /// How long the operator waits for the list; one that comes later opens nothing.
    static constexpr int kLongestWaitMs = 10'000;

    /// @param window the parent of the dialogs; both outlive the menu
    PresetMenu(FocusReturn &focusReturn, QWidget *window);

    /// The command link, once all settings are known; until then a choice does nothing. Not owned.
    void setLink(SerialPortController *link) { m_link = link; }

    void load() { choose(m_loadPending); }
    void save() { choose(m_savePending); }

    /// Takes the chassis' list, each name followed by a blank. Returns when the dialog it may open has closed; one
    /// that comes meanwhile opens no second dialog.
    void takeList(const QString &list);

    [[nodiscard]] const QStringList &PresetNames() const { return m_presetNames; }
    [[nodiscard]] bool LoadPresetPending() const { return m_loadPending; }
    [[nodiscard]] bool SavePresetPending() const { return m_savePending; }

private:
    void choose(bool &pending);
    void forgetChoice();
    template <typename Dialog>
    void run();

    FocusReturn &m_focusReturn;
    QWidget *m_window;
    SerialPortController *m_link = nullptr;
    QStringList m_presetNames; ///< of the last list
    bool m_loadPending = false;
    bool m_savePending = false;
    bool m_dialogOpen = false;
    QTimer m_patience;
};
