#pragma once

#include "tools/monkey/Ledger.h"

#include <QMap>
#include <QRandomGenerator>
#include <QTimer>

#include <optional>

class LiveHead;
class QWidget;

/// An operator who works the controls of all panels, the menus of the system and the windows with advanced settings, by
/// keyboard and mouse, in any order.
class PanelMonkey
{
public:
    /// The windows of @p head are open.
    PanelMonkey(LiveHead &head, quint32 seed, Ledger &ledger);

    /// Works one control, unless the operator of a slow chassis would wait.
    void act();

private:
    /// What a control sets, as "R1:IFBW:" to be followed by a value, and how it shows or is given one.
    struct Control
    {
        QWidget *widget;
        QByteArrayList settings;
        QByteArray form;
    };

    void addControls();
    void add(const QWidget *window, const QString &widget, const QByteArrayList &settings, const QByteArray &form);
    void work(const Control &control);
    void type(const Control &control);
    void chooseFromMenu();
    [[nodiscard]] QByteArray shownValue(const Control &control) const;

    LiveHead &m_head;
    Ledger &m_ledger;
    QRandomGenerator m_random;
    QList<Control> m_controls;
    QTimer m_boxCloser; ///< of boxes that refuse an entry
};
