#include "support/Wait.h"
#include "support/WindowBench.h"

#include "controls/FocusReturn.h"
#include "controls/QListWidgetPresets.h"
#include "dialogs/presets/PresetDialog.h"
#include "dialogs/system/CardConfigWindow.h"
#include "dialogs/system/CombinerZero.h"
#include "dialogs/system/SysChanNamingWindow.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList kEveryPanel{ LinkBench::kReceivers, LinkBench::kCombiner, LinkBench::kOlderDemodulators };
/// What opens the windows that do not block the main one: menu entries and buttons.
const QStringList kWindows = u"SystemCardsConfiguration SystemChannelNaming Combiner_Zero Demod1_EyeConst "
                             "Demod3_EyeConst btnAdvanceddmd1 btnAdvanceddmd3"_s.split(u' ');

PresetDialog *dialog() { return qobject_cast<PresetDialog *>(QApplication::activeModalWidget()); }
bool always() { return true; }

/// Rows of the preset dialog, the chosen name, whether its button can be pressed, and whether a box is open too.
QByteArray state()
{
    const QByteArray box = WindowBench::boxCount() > 0 ? "box" : "";
    if (!dialog())
        return box.isEmpty() ? "closed" : box;
    QStringList rows;
    for (const auto *const item : dialog()->findChild<QListWidget *>()->findItems({}, Qt::MatchContains))
        rows += item->text();
    const QLabel *const label = dialog()->findChild<QLabel *>(u"lblFileName"_s);
    const QString name = label ? label->text() : dialog()->findChild<QLineEdit *>()->text();
    const bool isOn = dialog()->findChild<QPushButton *>(label ? u"btnLoad"_s : u"btnSave"_s)->isEnabled();
    return (rows.join(u',') + u'|' + name + (isOn ? u'+' : u'-')).toLatin1() + box;
}

void act(const QByteArray &what)
{
    if (!dialog())
        return;
    auto *const list = dialog()->findChild<QListWidget *>();
    const QString text = QString::fromLatin1(what.mid(what.indexOf(':') + 1));
    if (what.startsWith("type:")) {
        QTest::keyClicks(dialog()->focusWidget(), text);
    } else if (what.startsWith("double:")) {
        const QPoint place = list->visualItemRect(list->item(text.toInt())).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
    } else if (what == "press") {
        QTest::mouseClick(dialog()->findChild<QPushButton *>(), Qt::LeftButton);
    } else if (!what.isEmpty()) {
        const bool isForList = what == "Delete" || what == "Down" || what == "Enter";
        QTest::keySequence(isForList ? list : dialog()->focusWidget(), QKeySequence(text));
    }
}

} // namespace

/// Presets, names, cards and combiner zero, as the operator opens them from the menus.
class DialogsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        chassis().setValue("U0:PLIST", "a b c ");
        QApplication::clipboard()->setText(u"\x02"_s); // not allowed in a name
    }
    void cleanup() { m_bench.reset(); }

    void presets_data()
    {
        QTest::addColumn<QByteArrayList>(
            "steps"); // acts without an event loop between them, "=", and the state after them
        QTest::addColumn<QByteArray>("sent");
        const auto row = [](const char *name, const QByteArrayList &steps, const char *sent) {
            QTest::newRow(name) << steps << QByteArray(sent);
        };
        row("load first", { "=a,b,c|a+", "press=closed" }, "U0:RESTORE:a");
        row("load with keypad", { "Down=a,b,c|b+", "Enter Enter Delete=closed" }, "U0:RESTORE:b");
        row("load with double click", { "double:2=closed" }, "U0:RESTORE:c");
        row("load, return and escape", { "Return=a,b,c|a+", "Escape=closed" }, "");
        row("load, delete", { "Down=a,b,c|b+", "Delete=a,c|c+", "Delete Delete=|-", "Enter Delete=|-" },
            "U0:DELPR:b U0:DELPR:c U0:DELPR:a");
        row("load, more keys at once", { "Delete Down=b,c|b+", "Enter Down=closed" }, "U0:DELPR:a U0:RESTORE:b");
        row("save typed", { "=a,b,c|-", "type:n=a,b,c|n+", "Backspace=a,b,c|-", "type:x=a,b,c|x+", "Tab Space=closed" },
            "U0:STORE:x");
        row("save, refused", { "type:a Space type:b=a,b,c|ab+", "Ctrl+V=a,b,c|ab+", "Return=a,b,c|ab+" }, "");
        row("save with keypad", { "Down=a,b,c|a+", "type:x Enter Enter=closed" }, "U0:STORE:a");
        row("save with double click", { "double:1=closed" }, "U0:STORE:b");
        row("save, delete", // the typed name, even if it is not that of the removed row
            { "Delete=a,b,c|-", "Down=a,b,c|a+", "type:s=a,b,c|as+", "Delete Delete=c|c+", "press=closed" },
            "U0:DELPR:as U0:DELPR:b U0:STORE:c");
    }

    void presets()
    {
        QFETCH(QByteArrayList, steps);
        QFETCH(QByteArray, sent);
        QVERIFY(m_bench->goLive());
        QByteArrayList seen;
        QList<WindowBench::Step> taken{ { dialog, [] {} } };
        for (const QByteArray &step : steps) {
            const auto acts = step.first(step.indexOf('='));
            taken += { always, [acts] { std::ranges::for_each(acts.split(' '), act); } };
            taken += { always, [&seen, acts] { seen += acts + '=' + state(); } };
        }
        taken += { always, [] { act("Escape"); } };
        const QByteArrayList frames = m_bench->sentBy([&] {
            choose(QByteArray(QTest::currentDataTag()).startsWith("load") ? u"LoadPreset"_s : u"SavePreset"_s);
            QVERIFY(WindowBench::takeSteps(taken));
        });
        QCOMPARE(seen, steps);
        QCOMPARE(frames.join(' '), QByteArray("U0:PLIST " + sent).trimmed());
    }

    void listing_data()
    {
        QTest::addColumn<QStringList>("entries");
        for (const char *entries : { "Load Load", "Save Save", "Save Load" })
            QTest::newRow(entries) << QString::fromLatin1(entries).split(u' ');
    }

    /// Only an answered choice opens a dialog, and only one dialog however often it was made.
    void listing()
    {
        QFETCH(QStringList, entries);
        m_bench->start();
        window().LoadPreset_triggered();
        window().SavePreset_triggered();
        QVERIFY(!window().LoadPresetPending());
        QVERIFY(!window().SavePresetPending());
        QVERIFY(m_bench->goLive());
        QVERIFY(!chassis().frames().contains("U0:PLIST"));
        m_bench->report({ "U0:PLIST:unasked " });
        const auto isNothingPending = [this] { return !window().LoadPresetPending() && !window().SavePresetPending(); };
        const QString other = entries.last() == "Load"_L1 ? u"SavePreset"_s : u"LoadPreset"_s;
        for (const bool isRefused :
             { true, false }) { // the choice ends with its query, else it would open a dialog below
            isRefused ? chassis().refuse("U0:PLIST") : chassis().ignore("U0:PLIST");
            QCOMPARE(m_bench->sentBy([&] { choose(other); }), QByteArrayList{ "U0:PLIST" });
            QVERIFY(isNothingPending());
        }
        const auto waits = [&] { // longer than the choice is kept
            choose(other);
            QVERIFY(chassis().waitForFrame("U0:PLIST"));
            QTimer *const patience = m_bench->runningTimer(10'000);
            QVERIFY(patience);
            patience->start(1);
            QVERIFY(waitUntil(isNothingPending, 500));
            patience->setInterval(10'000);
            chassis().sendFrame("U0:PLIST:late ");
        };
        chassis().clear();
        (void)m_bench->sentBy(waits);
        QVERIFY(state() == "closed");
        QVERIFY(window().PresetNames() == QStringList{ u"late"_s });

        m_bench->typeHalfAnEntry();
        chassis().clear();
        const auto isListed = [&] {
            return window().PresetNames().size() == 2 && WindowBench::visible<PresetDialog>().size() == 1 &&
                   dialog()->windowTitle() == entries.last() + u" Preset"_s && state().startsWith("a|");
        };
        const auto answers = [&] {
            std::ranges::for_each(entries, [this](const QString &entry) { choose(entry + u"Preset"_s); });
            QVERIFY(WindowBench::takeSteps({
                { [&] { return chassis().frames().size() == 1; }, [&] { chassis().sendFrame("U0:PLIST:a "); } },
                { [&] { return dialog() && chassis().frames().size() == 2; },
                  [&] { chassis().sendFrame("U0:PLIST:b c "); } },
                { isListed, [] { dialog()->reject(); } },
            }));
        };
        QCOMPARE(m_bench->sentBy(answers), QByteArrayList({ "U0:PLIST", "U0:PLIST" }));
        QCOMPARE(state(), "closed");
        QVERIFY(!window().LoadPresetPending());
        QVERIFY(!window().SavePresetPending());
        QVERIFY(m_bench->isEntryGivenUp());
    }

    /// The list arrives before the chassis is busy, or while it is; the dialog works in both cases.
    void aroundWaitBox()
    {
        QVERIFY(m_bench->goLive());
        QList<WindowBench::Step> steps; // state, and the act or report that follows
        for (const QByteArray step :
             { "closed=LoadPreset", "a,b,c|a+=U0:PDONE:0", "box=U0:PDONE:1", "a,b,c|a+=Down", "a,b,c|b+=Enter",
               "closed=U0:UPDT:0", "box=SavePreset", "a,b,c|-box=type:n", "a,b,c|n+box=U0:UPDT:1", "a,b,c|n+=press" }) {
            steps += { [seen = step.split('=')[0]] { return state() == seen; },
                       [this, what = step.split('=')[1]] {
                           if (what.startsWith("U0:"))
                               chassis().sendFrame(what);
                           else
                               what.endsWith("Preset") ? choose(QString::fromLatin1(what)) : act(what);
                       } };
        }
        m_bench->typeHalfAnEntry();
        QCOMPARE(m_bench->sentBy([&] { QVERIFY(WindowBench::takeSteps(steps)); }),
                 QByteArrayList({ "U0:PLIST", "U0:RESTORE:b", "U0:PLIST", "U0:STORE:n" }));
        QVERIFY(m_bench->isEntryGivenUp());
        QVERIFY(window().isActiveWindow());
    }

    /// The windows that do not block the main one: none before all settings are known, one of each, and a half-typed
    /// text is given up.
    void windows()
    {
        m_bench->links().fit(kEveryPanel);
        m_bench->start();
        window().SystemCardsConfiguration_triggered();
        window().SystemChannelNaming_triggered();
        window().CombinerZeroTriggerd();
        window().EyeConstWindow_triggered(0);
        window().btnDmdAdvSett_clicked(0);
        QVERIFY(m_bench->goLive());
        QCOMPARE(WindowBench::visible<QWidget>().size(), 1);
        QHash<QString, QWidget *> opened; // by entry
        for (const QString &entry : kWindows + kWindows) {
            window().activateWindow();
            QVERIFY(waitUntil([this] { return QApplication::activeWindow() == &window(); }));
            m_bench->typeHalfAnEntry();
            QCOMPARE(m_bench->sentBy([&] { choose(entry); }), QByteArrayList());
            QVERIFY(m_bench->isEntryGivenUp(false));
            QWidget *const active = QApplication::activeWindow();
            QVERIFY(active);
            QVERIFY(active != &window());
            QVERIFY(opened.value(entry, active) == active);
            opened[entry] = active;
            QCOMPARE(WindowBench::visible<QWidget>().size(), 1 + opened.size());
        }
    }

    void cards()
    {
        m_bench->links().fit({ LinkBench::kReceivers, "0198 MPU 1.2 SPECTRUM-" + QByteArray(40, 'X') + " S6 X" });
        QVERIFY(m_bench->goLive());
        const QPointer<CardConfigWindow> first(open<CardConfigWindow>(u"SystemCardsConfiguration"_s));
        QVERIFY(first);
        const auto *const list = first->findChild<QListWidgetPresets *>(u"listWidgetCardInfo"_s);
        QCOMPARE(list->count(), 3);
        QCOMPARE(list->item(1)->text(), u"TUNER;A2;X;0104;MPU;2.30122;FPGA1;1.9"_s);
        QCOMPARE(list->geometry(), QRect(10, 10, 265, 310));
        const QRect room = list->visualItemRect(list->item(2)); // of the long text
        QVERIFY(room.height() > 2 * list->fontMetrics().height());
        QVERIFY(room.width() <= list->viewport()->width());

        first->close(); // and at once, before it is deleted:
        window().SystemCardsConfiguration_triggered();
        QVERIFY(!first);
        QVERIFY(WindowBench::visible<CardConfigWindow>().size() == 1);
        QTest::keyClick(WindowBench::visible<CardConfigWindow>().front(), Qt::Key_Escape);
        QVERIFY(waitUntil(
            [this] { return WindowBench::visible<CardConfigWindow>().isEmpty() && window().isActiveWindow(); }));
    }

    void combinerZero()
    {
        m_bench->links().fit({ LinkBench::kCombiner });
        QVERIFY(m_bench->goLive());
        for (const bool byButton : { true, false }) {
            const QPointer<CombinerZero> zero(open<CombinerZero>(u"Combiner_Zero"_s));
            QVERIFY(zero);
            const auto values = [&] {
                QString texts = zero->windowTitle();
                for (const auto *const label : zero->findChildren<QLabel *>(QRegularExpression(u"Val"_s)))
                    texts += u' ' + label->text();
                return texts;
            };
            QCOMPARE(values(), u"Combiner Zero 0.00 0.00 0.00 0.00 0.00 0.00"_s);
            m_bench->report({ "C1:CH1IN:-1.5", "C1:CH1OUT:b", "C1:CH2IN:3", "C1:CH2OUT:4.00", "C1:TP2:5", "C1:TP4:6" });
            window().UpdateCmbrDynamicParamsTmr_Tick();
            QCOMPARE(values(), u"Combiner Zero -1.5 b 3 4.00 5 6"_s);

            const QSignalSpy told(zero, &CombinerZero::closePressed);
            byButton ? zero->findChild<QPushButton *>(u"btnClose"_s)->click() : void(zero->close());
            QCOMPARE(told.count(), 1);
            window().UpdateCmbrDynamicParamsTmr_Tick();
            QVERIFY(waitUntil([&] { return !zero; }));
        }
    }

    void naming_data()
    {
        QTest::addColumn<QStringList>("row"); // further cards, typed names, frames sent, labels with the former names
        const auto row = [](const QByteArray &text) { QTest::newRow(text) << QString::fromLatin1(text).split(u'|'); };
        // The second demodulator of the chassis, whatever its number; an emptied field changes nothing.
        row("DEMOD1 MPU 1 K3050 S1,DEMOD3 MPU 1 K3050 S3|Dmd2=Third,Dmd3=X,Cmb1=X,Rcv1=,Rcv2=South 2,Sys=Range 5|"
            "U0:NAME:Range 5,R2:NAME:South 2,D3:NAME:Third|DMD.2 Name=Demodulator,-,-,RCV.1 Name=Receiver,"
            "RCV.2 Name=Receiver,System Name=Range 4");
        row(QByteArray(LinkBench::kCombiner) + ',' + LinkBench::kOlderDemodulators +
            "|Dmd3=K,Dmd2=J,Dmd1=I,Cmb1=H|C1:NAME:H,D1:NAME:I,D2:NAME:J,D3:NAME:K|DMD.3 Name=Demodulator,"
            "DMD.2 Name=Demodulator,DMD.1 Name=Demodulator,CMB.1 Name=Combiner");
    }

    void naming()
    {
        QFETCH(QStringList, row);
        m_bench->links().fit({ LinkBench::kReceivers, row[0].toLatin1() });
        QVERIFY(m_bench->goLive());
        QStringList before;
        const auto press = [&](const QString &button, const QString &names) {
            before.clear();
            return m_bench->sentBy([&] {
                const auto *const dialog = open<SysChanNamingWindow>(u"SystemChannelNaming"_s);
                for (const QString &name : names.split(u',', Qt::SkipEmptyParts)) {
                    const QString place = name.section(u'=', 0, 0) + u"Name"_s;
                    const auto *const label = dialog->findChild<QLabel *>(u"lbl"_s + place);
                    auto *const line = dialog->findChild<QLineEdit *>(u"line"_s + place);
                    before += line->isVisible() || label->isVisible() ? label->text() + u'=' + line->text() : u"-"_s;
                    line->selectAll();
                    QTest::keyClick(line, Qt::Key_Delete);
                    QTest::keyClicks(line, name.section(u'=', 1));
                    QTest::keySequence(line, QKeySequence::Paste);
                    QTest::keyClick(line, Qt::Key_Return);
                }
                for (int i = 0; i < 2; ++i)
                    QTest::mouseClick(dialog->findChild<QPushButton *>(button), Qt::LeftButton);
            });
        };
        QCOMPARE(press(u"btnSAVE"_s, {}), QByteArrayList());
        QCOMPARE(press(u"btnCancel"_s, u"Sys=Gone"_s), QByteArrayList());
        QCOMPARE(press(u"btnSAVE"_s, row[1]).join(','), row[2].toLatin1());
        QCOMPARE(before.join(u','), row[3]);
    }

    void namesNotTaken_data()
    {
        QTest::addColumn<bool>("isPlugged");
        QTest::addColumn<QString>("listed");
        QTest::newRow("one refused") << true << u"RCV.2 Name"_s;
        QTest::newRow("cable out") << false << u"System Name\nRCV.2 Name"_s;
    }

    /// The window stays open with the typed names, which can be saved once more.
    void namesNotTaken()
    {
        QFETCH(bool, isPlugged);
        QFETCH(QString, listed);
        QVERIFY(m_bench->goLive());
        const QPointer<SysChanNamingWindow> naming(open<SysChanNamingWindow>(u"SystemChannelNaming"_s));
        QVERIFY(naming);
        const auto line = [&](const QString &name) { return naming->findChild<QLineEdit *>(u"line"_s + name); };
        line(u"SysName"_s)->setText(u"Range 5"_s);
        line(u"Rcv2Name"_s)->setText(u"South"_s);
        const auto save = [&] { QTest::mouseClick(naming->findChild<QPushButton *>(u"btnSAVE"_s), Qt::LeftButton); };
        chassis().refuse("R2:NAME");
        if (!isPlugged)
            chassis().unplug();
        save();
        const QString text = u"The chassis did not accept:\n"_s + listed;
        QVERIFY(waitUntil([&] { return WindowBench::box(text); }));
        QVERIFY(naming);
        QVERIFY(naming->isVisible());
        QVERIFY(WindowBench::boxCount() == 1);
        QTest::keyClick(WindowBench::box(text), Qt::Key_Return);
        QCOMPARE(line(u"SysName"_s)->text() + u'|' + line(u"Rcv2Name"_s)->text(), u"Range 5|South"_s);
        if (!isPlugged)
            return;
        chassis().behave("R2:NAME");
        QCOMPARE(m_bench->sentBy(save), QByteArrayList{ "R2:NAME:South" });
        QVERIFY(waitUntil([&] { return !naming; }));
    }

private:
    [[nodiscard]] FarEnd &chassis() { return m_bench->chassis(); }
    [[nodiscard]] ZIRVOFSMainWindow &window() { return m_bench->window(); }
    void choose(const QString &entry)
    {
        if (entry.startsWith(u"btn"))
            m_bench->find<QPushButton>(entry).click();
        else
            m_bench->action(u"action"_s + entry).trigger();
    }
    template <typename W>
    [[nodiscard]] W *open(const QString &entry)
    {
        return m_bench->open<W>(u"action"_s + entry);
    }

    std::unique_ptr<WindowBench> m_bench;
};

QTEST_MAIN(DialogsTest)
#include "tst_dialogs.moc"
