#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

// Keys of an operator, and rows of data in one text.

/// Chooses an item from the list of a box; the arrow keys alone would send every item on the way.
inline void pick(QComboBox *box, int index)
{
    box->showPopup();
    QTest::keyClick(box->view(), Qt::Key_Home);
    while (index-- > 0)
        QTest::keyClick(box->view(), Qt::Key_Down);
    QTest::keyClick(box->view(), Qt::Key_Return);
}

/// Replaces the text of a field by a typed one.
inline void enter(QWidget *field, const QString &text, Qt::Key end = Qt::Key_Return)
{
    field->setFocus();
    QTest::keySequence(field, QKeySequence::SelectAll);
    QTest::keyClicks(field, text);
    QTest::keyClick(field, end);
}

/// Rows of one column that holds the parts of a text: "; " between rows, "|" between parts.
inline void addRows(const QString &rows)
{
    QTest::addColumn<QStringList>("parts");
    for (const QString &row : rows.split(QStringLiteral("; ")))
        QTest::newRow(qPrintable(row)) << row.split(u'|');
}
