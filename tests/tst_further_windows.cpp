#include "support/Keys.h"
#include "support/Wait.h"
#include "support/WindowBench.h"

#include "controls/FocusReturn.h"
#include "dialogs/system/TapeCtrlWindow.h"
#include "dialogs/tmoip/ledSquare.h"
#include "dialogs/tmoip/ledwidget.h"
#include "dialogs/tmoip/tmoipWindow.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList kNothing;
const QByteArrayList kAsked{ "TM1-0:ADDR", "TM1-0:MASK", "TM1-0:GWAY", "TM1-0:PORT", "TM1-0:IRIG" };

} // namespace

/// The windows of the TMoIP card and of the tape, opened from the menus: keys, wire bytes, and what is shown.
class FurtherWindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Q_INIT_RESOURCE(resources); // of a static library
        m_bench.links().fit({ LinkBench::kReceivers, LinkBench::kTape });
        QVERIFY(m_bench.goLive());
        QVERIFY(!m_bench.action(u"actionTMoIP"_s).isEnabled());
        QVERIFY(m_bench.action(u"actionTape"_s).isEnabled());
        for (const char *const unanswered : { "TM1-3:PROT", "TM1-3:MTUS", "TM1-3:RMIP", "TM1-3:FLOW" })
            chassis().ignore(unanswered);
        m_bench.report({ "U0:TLST:TM1" });
        QVERIFY(chassis().waitForFrame("TM1-3:ENDN", 20'000));
        QVERIFY(m_bench.action(u"actionTMoIP"_s).isEnabled());
        m_bench.stopReadingBack();
    }
    void cleanup()
    {
        for (QDialog *window : WindowBench::visible<QDialog>())
            delete window;
    }

    void addresses_data()
    {
        // Field | set | complaint | accepted | refused
        const QString good = u"|0.0.0.0 255.255.255.255 10.020.3.4|"_s;
        const QString bad = u"256.1.1.1 1.2.3 1.2.3.4.5 1..2.3 a.1.1.1 1.2.3.-4 1.2.3.99999999999 1.2.3.+4 1.2.3."_s;
        addRows(u"ADDR|TM1-0:ADDR|Invalid Address%1%2; MASK|TM1-0:MASK|Invalid Mask%1%2; "
                "GWAY|TM1-0:GWAY|Invalid Gateway%1%2; RMIP|TM1-1:RMIP|Invalid Address%1%2"_s.arg(good, bad));
    }

    void addresses()
    {
        QFETCH(const QStringList, parts);
        openTmoip(parts[0] == "RMIP"_L1 ? 1 : 0);
        auto *const field = find<QLineEdit>(u"txt"_s + parts[0]);
        const QByteArray set = parts[1].toLatin1();
        for (const QString &address : parts[3].split(u' ')) {
            const auto act = [&] { (enter(field, address), QTest::keyClick(field, Qt::Key_Tab)); };
            QCOMPARE(sentBy(act), QByteArrayList{ set + ':' + address.toLatin1() });
            QCOMPARE(field->text(), address);
        }
        const QString held = field->text();
        for (const QString &address : parts[4].split(u' ')) {
            QCOMPARE(sentBy([&] { enter(field, address); }), kNothing);
            QMessageBox *const box = WindowBench::box(parts[2]);
            QVERIFY(box);
            QVERIFY(WindowBench::boxCount() == 1);
            QVERIFY(field->text() == held);
            QVERIFY(box->windowTitle() == "Error"_L1);
            QVERIFY(box->icon() == QMessageBox::Information);
            QTest::keyClick(box, Qt::Key_Return);
            QVERIFY(waitUntil([] { return WindowBench::boxCount() == 0 && tmoip()->isActiveWindow(); }));
        }
        chassis().refuse(set);
        QCOMPARE(sentBy([&] { enter(field, u"9.9.9.9"_s); }), QByteArrayList{ set + ":9.9.9.9" });
        QCOMPARE(field->text(), held);
        chassis().behave(set);
        QTest::keyClicks(field, u"7"_s);
        m_bench.report({ set + ":1.1.1.1" }); // the field has a half-typed text
        QVERIFY(field->text() != "1.1.1.1"_L1);
        QCOMPARE(sentBy([&] { QTest::keyClick(tmoip(), Qt::Key_Escape); }), kNothing);
    }

    void stream_data()
    {
        // Control; reports with what each shows; entries or choices with what each sends
        addRows(u"spinMTU|MTUS|1,200=1200 999=999 1501=1501 1400=1400 x=x|1500=1500 1000=1000 999= 1501=; "
                "spinRBUF|RBUF|4=4 3=3 256=256 257=257 16=16|256=256 4=4 3=; "
                "spinPORT|PORT|5,001=5001 65536=65536 80=80|1500=1500 65535=65535 1499=; "
                "cmbHEAD|HEAD|0=TMoIP 1=Time+TMoIP 3=Time+TMoIP -1=Time+TMoIP x=Time+TMoIP 2=CH10|0=0 1=1 2=2; "
                "cmbBUFF|BUFF|1=Max._BW 2=Max._BW 0=Min._Latency|1=1 0=0; "
                "cmbPROT|PROT|0=UDP 1=RUDP 3=RUDP 2=Multicast|0=0 1=1 2=2; "
                "cmbINPZ|INPZ|0=50_Ohms 1=75_Ohms 3=75_Ohms 2=High_Z|0=0 1=1 2=2"_s);
    }

    void stream()
    {
        QFETCH(const QStringList, parts);
        openTmoip(2);
        auto *control = find<QWidget>(parts[0]);
        const QByteArray set = "TM1-2:" + parts[1].toLatin1();
        const char *const property = control->inherits("QComboBox") ? "currentText" : "text";
        const auto shown = [&] { return control->property(property).toString(); };
        for (const QString &step : parts[2].split(u' ')) {
            QCOMPARE(sentBy([&] { m_bench.report({ set + ':' + step.section(u'=', 0, 0).toLatin1() }); }), kNothing);
            QCOMPARE(shown(), step.section(u'=', 1).replace(u'_', u' '));
            if (const auto *const spin = qobject_cast<QSpinBox *>(control))
                QVERIFY(spin->text() == QString::number(spin->value()) || spin->value() == spin->minimum());
            else if (qobject_cast<QComboBox *>(control)->itemText(step.section(u'=', 0, 0).toInt()) != shown())
                QCOMPARE(control->property("shownText"), step.section(u'=', 0, 0)); // over the item that stays selected
        }
        for (const QString &step : parts[3].split(u' ')) {
            const QString value = step.section(u'=', 1);
            const QByteArrayList sent = value.isEmpty() ? kNothing : QByteArrayList{ set + ':' + value.toLatin1() };
            auto *const box = qobject_cast<QComboBox *>(control);
            const auto act = [&] { box ? pick(box, value.toInt()) : enter(control, step.section(u'=', 0, 0)); };
            const QString before = shown();
            chassis().refuse(set);
            QCOMPARE(sentBy(act), sent);
            QCOMPARE(shown(), before);
            chassis().behave(set);
            QCOMPARE(sentBy(act), sent);
        }
        const QString text = shown();
        delete tmoip();
        openTmoip(2);
        control = find<QWidget>(parts[0]);
        QCOMPARE(shown(), text); // known before the page was built
    }

    void neverAnswered()
    {
        openTmoip(3);
        auto *const protocol = find<QComboBox>(u"cmbPROT"_s);
        auto *const mtu = find<QSpinBox>(u"spinMTU"_s);
        auto *const address = find<QLineEdit>(u"txtRMIP"_s);
        auto *const flow = find<QPushButton>(u"btnFLOW"_s);
        const auto shown = [&] {
            return QStringList{ protocol->property("shownText").toString(), mtu->text(), address->text(),
                                flow->text() };
        };
        const QStringList unknown{ QString(), u"--"_s, u"--"_s, u"--"_s };
        QCOMPARE(shown(), unknown);
        const auto set = [&] {
            mtu->setFocus();
            QTest::keyClicks(mtu, u"1000"_s); // replaces the "--", and is the number that the box holds behind it
            QTest::keyClick(mtu, Qt::Key_Return);
            QTest::mouseClick(address, Qt::LeftButton, {}, address->rect().center());
            QTest::keyClicks(address, u"1.2.3.4"_s);
            QTest::keyClick(address, Qt::Key_Return);
            QTest::mouseClick(flow, Qt::LeftButton);
            pick(protocol, 0);
        };
        const QByteArrayList sent{ "TM1-3:MTUS:1000", "TM1-3:RMIP:1.2.3.4", "TM1-3:FLOW:0", "TM1-3:PROT:0" };
        QCOMPARE(sentBy(set), sent);
        QCOMPARE(shown(), unknown); // nor answered now
        for (const QByteArray &frame : sent)
            chassis().behave(frame.first(10));
        QCOMPARE(sentBy(set), sent);
        QCOMPARE(shown(), QStringList({ u"UDP"_s, u"1000"_s, u"1.2.3.4"_s, u"OFF"_s }));
        for (const QString &typed : { u""_s, u"15"_s }) { // no number: the former text returns, nothing is sent
            m_bench.report({ "TM1-3:MTUS:9000" });
            enter(mtu, u"1"_s, Qt::Key_Backspace);
            QCOMPARE(sentBy([&] { (QTest::keyClicks(mtu, typed), QTest::keyClick(mtu, Qt::Key_Return)); }), kNothing);
            QCOMPARE(mtu->text(), u"9000"_s);
        }
        QCOMPARE(sentBy([&] { m_bench.report({ "TM1-3:PROT:7" }); }), kNothing);
        QCOMPARE(sentBy([&] { pick(protocol, 0); }), QByteArrayList{ "TM1-3:PROT:0" }); // the item that stayed selected
    }

    void clickElsewhere_data()
    {
        addRows(u"txtGWAY|0|10.8.8.8|TM1-0:GWAY|10.7.7.7; spinPORT|1|2200|TM1-1:PORT|3000"_s);
    }

    /// A click on another window ends an entry like one within the window; a box that opens and closes by itself does
    /// not.
    void clickElsewhere()
    {
        QFETCH(const QStringList, parts);
        openTmoip(parts[1].toInt());
        auto *const field = find<QWidget>(parts[0]);
        enter(field, parts[2], Qt::Key_Shift);
        m_bench.report({ (parts[3] + u':' + parts[4]).toLatin1() }); // a half-typed text stays
        const QString waiting = u"Configuring... One Moment"_s;
        QCOMPARE(sentBy([&] {
                     chassis().sendFrame("U0:UPDT:0");
                     QVERIFY(WindowBench::takeSteps({
                         { [&] { return WindowBench::box(waiting) && WindowBench::box(waiting)->isActiveWindow(); },
                           [&] {
                               QTest::mouseClick(WindowBench::box(waiting), Qt::LeftButton);
                               chassis().sendFrame("U0:UPDT:1");
                           } },
                         { [] { return WindowBench::boxCount() == 0; }, [] {} },
                     }));
                 }),
                 kNothing);
        QCOMPARE(field->property("text"), parts[2]);
        const QByteArrayList sent{ (parts[3] + u':' + parts[2]).toLatin1() };
        const auto click = [this] { QTest::mouseClick(&m_bench.find<QWidget>(u"lblRFFQch1"_s), Qt::LeftButton); };
        QCOMPARE(sentBy(click), sent);
        QCOMPARE(sentBy(click), kNothing);
        QCOMPARE(field->property("text"), parts[2]);
    }

    void flowAndStatus()
    {
        openTmoip(0);
        const auto colorOn = [&](const QByteArray &report) {
            m_bench.report({ "TM1-2:FLOW:0", "TM1-3:" + report });
            tmoip()->UpdateAllDynamicParamsTmr_Tick();
            return find<ledwidget>(u"ledCH3"_s)->getColor() + u' ' + find<QLineEdit>(u"txtPCM3Status"_s)->text();
        };
        QCOMPARE(colorOn("RATE:5000000"), u"Black --"_s);
        QCOMPARE(colorOn("STAT:Transmitting"), u"Black Transmitting"_s);
        QCOMPARE(colorOn("FLOW:1"), u"Green Transmitting"_s);
        QCOMPARE(colorOn("STAT:Link Ok"), u"Green Link Ok"_s);
        QCOMPARE(colorOn("STAT:ok"), u"Red ok"_s);
        QCOMPARE(colorOn("FLOW:2"), u"Black ok"_s);
        QCOMPARE(find<QLineEdit>(u"txtPCM3Rate"_s)->text(), u"5000000"_s);

        find<QTabWidget>(u"tabWidget"_s)->setCurrentIndex(3);
        auto *const flow = find<QPushButton>(u"btnFLOW"_s);
        for (const char *value : { "1", "0" }) {
            const QByteArrayList set{ QByteArray("TM1-3:FLOW:") + value };
            const QString before = flow->text();
            chassis().refuse("TM1-3:FLOW");
            QCOMPARE(sentBy([&] { QTest::mouseClick(flow, Qt::LeftButton); }), set);
            QCOMPARE(flow->text(), before);
            chassis().behave("TM1-3:FLOW");
            QCOMPARE(sentBy([&] { QTest::keyClick(flow, Qt::Key_Space); }), set);
            QCOMPARE(flow->text(), *value == '1' ? u"ON"_s : u"OFF"_s);
        }
        m_bench.report({ "TM1-3:TXBT:18446744073709551615", "TM1-3:RXBT:2", "TM1-3:RETX:3", "TM1-3:DROP:4",
                         "TM1-3:OOPS:5", "TM1-0:TIME:123:04:05:06", "TM1-0:PHYS:Up", "TM1-0:IEBS:7", "TM1-0:IEBR:8" });
        const auto texts = [] {
            QStringList shown;
            for (const char *name : { "TXBT", "RXBT", "RETX", "DROP", "OOPS", "TIME", "PHYS", "IRIG", "IEBS", "IEBR" })
                shown += find<QLineEdit>(u"txt"_s + QLatin1StringView(name))->text();
            return shown.join(u' ');
        };
        QVERIFY(waitUntil([&] { return texts() == "18446744073709551615 2 3 4 5 123:04:05:06 Up Locked 7 8"_L1; }));
    }

    void card()
    {
        openTmoip(0);
        const auto press = [] { QTest::mouseClick(find<QPushButton>(u"btnCommit"_s), Qt::LeftButton); };
        QCOMPARE(sentBy([&] { (press(), press()); }), QByteArrayList({ "TM1-0:COMT:1", "TM1-0:COMT:1" }));
        auto *const source = find<QComboBox>(u"cmbTSRC"_s);
        QCOMPARE(sentBy([&] { pick(source, 0); }), QByteArrayList{ "TM1-0:TSRC:0" });
        QCOMPARE(sentBy([&] { m_bench.report({ "TM1-0:TSRC:1" }); }), kNothing);
        QVERIFY(source->currentText().isEmpty());
        QVERIFY(source->property("shownText") == u"1"_s);
        chassis().refuse("TM1-0:TSRC");
        QCOMPARE(sentBy([&] { pick(source, 0); }), QByteArrayList{ "TM1-0:TSRC:0" });
        QCOMPARE(source->currentText(), QString());

        // A second window
        const QPointer<tmoipWindow> first = tmoip();
        auto *const gateway = find<QLineEdit>(u"txtGWAY"_s);
        QCOMPARE(sentBy([&] { m_bench.action(u"actionTMoIP"_s).trigger(); }), kAsked);
        QCOMPARE(WindowBench::visible<tmoipWindow>().size(), 2);
        // A half-typed text survives a change to another window, and is not sent.
        first->activateWindow();
        QVERIFY(waitUntil([&] { return QApplication::activeWindow() == first; }));
        enter(gateway, u"10.9.9.1"_s, Qt::Key_Shift);
        QCOMPARE(sentBy([&] { m_bench.window().activateWindow(); }), kNothing);
        first->activateWindow();
        QVERIFY(waitUntil([&] { return QApplication::activeWindow() == first; }));
        QCOMPARE(gateway->text(), u"10.9.9.1"_s);
    }

    void tapeGains_data() { addRows(u"CH1|TGAINCH1; CH2|TGAINCH2; CMB1|TGAINCMB"_s); }

    void tapeGains()
    {
        QFETCH(const QStringList, parts);
        auto *const window = m_bench.open<TapeCtrlWindow>(u"actionTape"_s);
        QVERIFY(window);
        QVERIFY(m_bench.open<TapeCtrlWindow>(u"actionTape"_s) == window);
        auto *const slider = window->findChild<QSlider *>(u"sldrTapeGain%1tape1"_s.arg(parts[0]));
        const auto *const label = window->findChild<QLabel *>(u"lblTapeGain%1Valtape1"_s.arg(parts[0]));
        const QByteArray set = "T1:" + parts[1].toLatin1() + ':';
        for (const QString &report : u"12.5=0=12.5;300=255=117 %;-1=0=0 %;Unknown=0=--;100=100=39 %"_s.split(u';')) {
            const QStringList words = report.split(u'=');
            QCOMPARE(sentBy([&] { m_bench.report({ set + words[0].toLatin1() }); }), kNothing);
            QCOMPARE(QString::number(slider->value()) + u'=' + label->text(), words[1] + u'=' + words[2]);
        }
        const auto act = [&] { QTest::keyClick(slider, Qt::Key_End); };
        chassis().refuse(set.chopped(1));
        QCOMPARE(sentBy(act), QByteArrayList{ set + "255" });
        QVERIFY(slider->value() == 100);
        QVERIFY(label->text() == "39 %"_L1);
        chassis().behave(set.chopped(1));
        QCOMPARE(sentBy(act), QByteArrayList{ set + "255" });
        QVERIFY(slider->value() == 255);
        QVERIFY(label->text() == "100 %"_L1);
    }

    void tapeFrequency()
    {
        auto *const window = m_bench.open<TapeCtrlWindow>(u"actionTape"_s);
        auto *const line = window->findChild<QLineEdit *>(u"lineTapeFreqtape1"_s);
        const auto *const timer = window->findChild<FocusReturn *>();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QCOMPARE(line->text(), u"10.5M"_s);
        const QString entries = u"2.2M=2200000=2.2M;70,5k=70500=70.5K;1 m=1000000=1M;999=999=999"
                                ";fast==999;M==999;-5==999;1.2.3M==999"_s;
        for (const QString &words : entries.split(u';')) {
            const QStringList entry = words.split(u'=');
            const QByteArrayList set{ "T1:TFREQ:" + entry[1].toLatin1() };
            QCOMPARE(sentBy([&] { enter(line, entry[0]); }), entry[1].isEmpty() ? kNothing : set);
            QVERIFY(line->text() == entry[2]);
            QVERIFY(!line->hasFocus());
            QVERIFY(!timer->isRunning());
        }
        enter(line, u"7"_s, Qt::Key_8);
        m_bench.report({ "T1:TFREQ:1500" });
        QCOMPARE(line->text(), u"78"_s); // half-typed, so it stays
        QVERIFY(waitUntil([&] { return line->text() == "1.5K"_L1; }));
        QVERIFY(!line->hasFocus());
        QVERIFY(!timer->isRunning());
        QTest::keyClick(window, Qt::Key_Escape);
        QVERIFY(waitUntil([] { return WindowBench::visible<TapeCtrlWindow>().isEmpty(); }));
        QVERIFY(m_bench.open<TapeCtrlWindow>(u"actionTape"_s));
    }

    void lamps()
    {
        const auto check = [](LedIndicator &&lamp, const QString &images) {
            QCOMPARE(lamp.getColor(), u"Black"_s);
            const QStringList names{ u"Red"_s, u"Green"_s, u"green"_s, u"Yellow"_s, u""_s, u"Red"_s, u"Black"_s };
            for (const QString &name : names) {
                lamp.setColor(name);
                const QString color = name.isEmpty() || name == "green"_L1 ? u"Black"_s : name;
                QVERIFY(lamp.getColor() == color);
                QVERIFY(lamp.accessibleDescription() == color);
                const QPixmap image(images + color.toLower() + u".png"_s);
                QVERIFY(!image.isNull());
                QCOMPARE(lamp.findChild<QLabel *>(u"LED"_s)->pixmap().toImage(), image.toImage());
            }
        };
        check(ledwidget(), u":/led-circle-"_s);
        check(ledSquare(), u":/led_square_"_s);
    }

    /// The last case, since settings are read back after an unanswered set.
    void closedWhileUnanswered()
    {
        openTmoip(0);
        const QPointer<tmoipWindow> window = tmoip();
        chassis().ignore("TM1-0:GWAY");
        const QByteArrayList sent = sentBy([&] {
            enter(find<QLineEdit>(u"txtGWAY"_s), u"10.9.9.9"_s);
            window->close();
            QVERIFY(waitUntil([&] { return !window; }));
        });
        QCOMPARE(sent, QByteArrayList{ "TM1-0:GWAY:10.9.9.9" });
    }

private:
    [[nodiscard]] FarEnd &chassis() { return m_bench.chassis(); }
    [[nodiscard]] static tmoipWindow *tmoip() { return WindowBench::visible<tmoipWindow>().value(0); }
    [[nodiscard]] QByteArrayList sentBy(const std::function<void()> &act) { return m_bench.sentBy(act); }
    /// Opens the window once, with this tab in front.
    void openTmoip(int tab)
    {
        QCOMPARE(sentBy([&] { QVERIFY(m_bench.open<tmoipWindow>(u"actionTMoIP"_s)); }), kAsked);
        QVERIFY(QTest::qWaitForWindowActive(tmoip()));
        find<QTabWidget>(u"tabWidget"_s)->setCurrentIndex(tab);
    }
    /// A control of the window; of those with one name, the visible one.
    template <typename W>
    [[nodiscard]] static W *find(const QString &name)
    {
        auto found = tmoip()->findChildren<W *>(name);
        std::ranges::stable_partition(found, [](const QWidget *widget) { return widget->isVisible(); });
        return found.value(0);
    }

    WindowBench m_bench;
};

QTEST_MAIN(FurtherWindowsTest)
#include "tst_further_windows.moc"
