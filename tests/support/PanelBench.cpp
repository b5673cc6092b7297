#include "support/PanelBench.h"

#include "controls/FocusReturn.h"
#include "support/Keys.h"

#include <QApplication>
#include <QComboBox>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

bool PanelBench::startCase(const QByteArrayList &reports)
{
    window().activateWindow(); // an open list deactivates it
    if (!QTest::qWaitForWindowActive(&window()))
        return false;
    window().RemoveControlFocusTmr_Tick();
    report(reports);
    refreshStatus();
    return true;
}

QByteArrayList PanelBench::actual(const QByteArrayList &expected) const
{
    QByteArrayList shown;
    for (const QByteArray &item : expected) {
        const QByteArrayList place = item.first(item.indexOf('=')).split('.');
        const QVariant value = widget(place[0]).property(place[1].constData());
        shown += place.join('.') + '=' + value.toString().toLatin1();
    }
    return shown;
}

QByteArray PanelBench::mistakes(const QByteArray &expected) const
{
    QByteArrayList shown = actual(expected.split('|'));
    shown.removeIf([&](const QByteArray &item) { return expected.split('|').contains(item); });
    return shown.join('|');
}

void PanelBench::refreshStatus()
{
    window().UpdateRcvrDynamicParamsTmr_Tick();
    window().UpdateCmbrDynamicParamsTmr_Tick();
    window().UpdateDmdDynamicParamsTmr_Tick();
}

QByteArrayList PanelBench::everythingShown()
{
    static const QRegularExpression panelPart(u"(ch|cmb|dmd|Rcvr|Cmbr|Dmd)[1-3]$"_s);
    refreshStatus();
    QByteArrayList shown;
    for (const QWidget *part : window().findChildren<QWidget *>(panelPart)) {
        for (const char *property : { "title", "text", "value", "maximum", "count", "currentIndex", "checked",
                                      "enabled", "visible", "styleSheet" }) {
            if (const QVariant value = part->property(property); value.isValid())
                shown += part->objectName().toLatin1() + '.' + property + '=' + value.toString().toLatin1();
        }
    }
    return shown;
}

void PanelBench::turnWheel(QWidget &widget)
{
    const QPointF centre = widget.rect().center();
    QWheelEvent event(centre, widget.mapToGlobal(centre), {}, { 0, -120 }, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

void PanelBench::operate(const QByteArray &name, const QByteArray &input)
{
    static const QHash<QByteArray, Qt::Key> keys{ { "Up", Qt::Key_Up },
                                                  { "Down", Qt::Key_Down },
                                                  { "Right", Qt::Key_Right },
                                                  { "Space", Qt::Key_Space },
                                                  { "Home", Qt::Key_Home } };
    QWidget &control = widget(name);
    QVERIFY2(control.isVisible() && control.isEnabled(), "out of the operator's reach");
    control.setFocus();
    if (auto *const box = qobject_cast<QComboBox *>(&control)) {
        pick(box, input.toInt());
    } else if (input == "click") {
        QTest::mouseClick(&control, Qt::LeftButton);
    } else if (keys.contains(input)) {
        QTest::keyClick(&control, keys[input]);
    } else {
        enter(&control, QString::fromLatin1(input));
    }
}

void PanelBench::verify(const Change &change)
{
    report(change.reports);
    const QByteArrayList before = everythingShown();
    const QByteArrayList frames = change.sent.isEmpty() ? QByteArrayList() : QByteArrayList{ change.sent };
    const QByteArray setting = change.sent.split(':').mid(0, 2).join(':');

    chassis().refuse(setting);
    QCOMPARE(sentBy([&] { operate(change.control, change.input); }), frames);
    chassis().behave(setting);
    QCOMPARE(everythingShown(), before);

    focusReturn().stop();
    const QByteArrayList accepted = sentBy([&] {
        operate(change.control, change.input);
        QCOMPARE(actual(change.shown), change.shown); // not yet answered
    });
    QVERIFY(focusReturn().isRunning() || !widget(change.control).hasFocus());
    QCOMPARE(accepted, frames);
    QCOMPARE(actual(change.shown), change.shown);

    const auto isBack = [&](const QByteArray &frame) { return frame.startsWith(setting + ':'); };
    if (setting.isEmpty() || std::none_of(change.reports.begin(), change.reports.end(), isBack))
        return;
    QCOMPARE(sentBy([&] { report(change.reports); }), QByteArrayList());
    QCOMPARE(everythingShown(), before);
}

QByteArrayList PanelBench::warningsDuring(const std::function<void()> &act)
{
    QByteArrayList warnings;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&warnings] {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box || box->icon() != QMessageBox::Warning)
            return;
        warnings += (box->windowTitle() + u": "_s + box->text()).toLatin1();
        QTest::keyClick(box, Qt::Key_Return);
    });
    timer.start(1);
    act();
    QCoreApplication::processEvents();
    return warnings;
}
