#pragma once

#include "support/PanelBench.h"

#include <QObject>

/// Base of the tests of panels in the whole window: what keys and clicks send, and what answers and reports show. A
/// window serves all cases of a chassis, until one of them fails.
///
/// A row of data is one text with its fields between "|"; rows are separated by ", ", and "@" stands for each number of
/// a channel in turn:
///   - operatorChanges: reports before | control | input, as for PanelBench::operate() | frame sent | what is shown ...
///   - reports: reports | what they change ...; with "..." as the last item they may change more
/// Reports are separated by blanks, and "_" stands for a blank within one. "<good>" and the like stand for documented
/// style sheets. What is shown is written "widget.property=value".
class PanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void operatorChanges();
    void reports();

protected:
    /// Starts a case on a chassis with cards of this name, see kCards; "/silent" behind the name refuses every query.
    void setUp(const QByteArray &cards);
    [[nodiscard]] QWidget &widget(const QByteArray &name) { return m_bench->widget(name); }
    [[nodiscard]] PanelBench &bench() { return *m_bench; }
    /// The next case gets a window of its own.
    void endBench() { m_bench.reset(); }

    static void addRows(const QByteArray &cards, const QByteArray &rows, const QByteArray &numbers = "123");
    /// Every choice of a box: its items' values in order, each chosen while the next one is shown.
    static void addChoices(const QByteArray &cards, const QByteArray &box, const QByteArray &setting,
                           const QByteArray &items, const QByteArray &numbers = "123");

private:
    void keepSilent();

    QByteArray m_cards;
    QByteArrayList m_start;
    std::unique_ptr<PanelBench> m_bench;
};

/// The names in sorted order, separated by blanks.
[[nodiscard]] QByteArray sorted(QByteArrayList names);
