#pragma once

#include <QList>
#include <QStringList>
#include <QTimer>

class FocusReturn;
class QWidget;
class SerialPortController;

/// The menu "Presets": queries the chassis' list of presets and opens the dialog that the operator has chosen.
class PresetMenu
{
public:
    /// A list that arrives later opens no dialog.
    static constexpr int kLongestWaitMs = 10'000;

    /// @param window the parent of the dialogs; both outlive the menu
    PresetMenu(FocusReturn &focusReturn, QWidget *window);

    /// The command link, once all settings are known; until then a choice does nothing. Not owned.
    void setLink(SerialPortController *link);

    void load() { choose(Choice::Load); }
    void save() { choose(Choice::Save); }

    /// Handles the chassis' list, each name followed by a blank. Returns when the dialog that it may open has closed; a
    /// list that arrives meanwhile opens no second dialog.
    void takeList(const QString &list);

    [[nodiscard]] const QStringList &PresetNames() const { return m_presetNames; }
    [[nodiscard]] bool LoadPresetPending() const { return m_asked.contains(Choice::Load); }
    [[nodiscard]] bool SavePresetPending() const { return m_asked.contains(Choice::Save); }

private:
    /// Which dialog a queried list opens.
    enum class Choice {
        Nothing,
        Load,
        Save,
    };

    void choose(Choice choice);
    void forgetChoices();
    void endRequest();
    template <typename Dialog>
    void run();

    FocusReturn &m_focusReturn;
    QWidget *m_window;
    SerialPortController *m_link = nullptr;
    QStringList m_presetNames; ///< of the last list
    QList<Choice> m_asked;     ///< one for each query without an outcome, the oldest first
    bool m_dialogOpen = false;
    QTimer m_patience;
};
