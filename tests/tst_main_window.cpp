#include "channels/UniversalChan.h"
#include "controls/FocusReturn.h"
#include "support/Wait.h"
#include "support/WindowBench.h"

#include <QSerialPort>
#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList kNothing;
const QByteArray kReportsOff = "\x02U0:TRON:OFF\x0D";
const QByteArrayList kEveryPanel{ LinkBench::kReceivers, LinkBench::kCombiner, LinkBench::kOlderDemodulators };
/// What opens the windows that do not block the main one.
const QByteArrayList kWindows{
    "actionSystemCardsConfiguration", "actionSystemChannelNaming", "actionCombiner_Zero", "actionDemod1_EyeConst",
    "actionDemod3_EyeConst",          "btnAdvanceddmd1",           "btnAdvanceddmd3"
};
const QStringList kWaiting{ u"Configuring... One Moment"_s, u"Loading Preset...."_s };
const QString kAbout = u"Name: HURLO ZIRVO Remote Software\rVersion: 2.1.0.9"_s;

/// Initials of the texts of the open boxes.
QByteArray openBoxes()
{
    QByteArray initials;
    for (const QString &text : kWaiting + QStringList{ kAbout }) {
        const QMessageBox *const box = WindowBench::box(text);
        const QString title = text == kAbout ? u"ZIRVO Remote Software"_s : QString();
        if (box && box->isModal() && box->windowTitle() == title && box->icon() == QMessageBox::Information)
            initials += text.front().toLatin1();
    }
    return initials.size() == WindowBench::boxCount() ? initials : "others";
}

} // namespace

/// The one window: from the empty form to live panels, its menus and boxes, and its end.
class MainWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::setApplicationVersion(u"2.1.0.9"_s); }
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup() { m_bench.reset(); }

    void panelsComeWithTheChannels_data();
    void panelsComeWithTheChannels();
    void namesAndLinks();
    void timers();
    void menus();
    void boxes_data();
    void boxes();
    void end_data();
    void end();

private:
    [[nodiscard]] FarEnd &chassis() { return m_bench->chassis(); }
    [[nodiscard]] bool isVisible(const QString &name) { return m_bench->find<QWidget>(name).isVisible(); }
    [[nodiscard]] QDoubleSpinBox &frequency(qsizetype place = 0)
    {
        return m_bench->find<QDoubleSpinBox>(u"doubleSpinBoxFREQch%1"_s.arg(place + 1));
    }
    [[nodiscard]] QByteArray entries(bool (QAction::*is)() const);
    void pick(const QStringList &path);
    void act(const QByteArray &what);

    std::unique_ptr<WindowBench> m_bench;
};

/// Names of the menu entries with a property.
QByteArray MainWindowTest::entries(bool (QAction::*is)() const)
{
    QByteArrayList names;
    for (const QAction *action : m_bench->window().findChildren<QAction *>()) {
        if (action->objectName().startsWith(u"action") && (action->*is)())
            names += action->objectName().mid(6).toLatin1();
    }
    std::sort(names.begin(), names.end());
    return names.join(' ');
}

void MainWindowTest::pick(const QStringList &path)
{
    QWidget *menu = m_bench->window().menuBar();
    for (const QString &text : path) {
        const auto actions = menu->actions();
        QAction *const entry = *std::find_if(actions.begin(), actions.end(),
                                             [&](const QAction *action) { return action->text() == text; });
        entry->trigger();
        menu = entry->menu();
    }
}

/// A menu entry, a button, a key, or the time limit of a wait box; anything else is a report of the chassis.
void MainWindowTest::act(const QByteArray &what)
{
    if (what == "about")
        pick({ u"Help"_s, u"About"_s });
    else if (what == "return")
        QTest::keyClick(WindowBench::box(kAbout), Qt::Key_Return);
    else if (what == "close")
        m_bench->window().close();
    else if (what.startsWith("btn"))
        m_bench->find<QPushButton>(QString::fromLatin1(what)).click();
    else if (what.startsWith("action"))
        m_bench->action(QString::fromLatin1(what)).trigger();
    else if (QTimer *const limit = m_bench->runningTimer(60'000); limit && what == "endless")
        limit->stop();
    else if (limit && what == "over")
        limit->start(1);
    else
        chassis().sendFrame("U0:" + what);
}

void MainWindowTest::panelsComeWithTheChannels_data()
{
    QTest::addColumn<QByteArray>("cards");
    QTest::addColumn<QByteArrayList>("addresses");
    const QByteArray first = "0103 MPU 2.3 TUNER A1 X,0121 FPGA1 1.9 TUNER A1 X";
    const QByteArray second = "0104 MPU 2.3 TUNER A2 X,0122 FPGA1 1.9 TUNER A2 X";
    QTest::newRow("two receivers") << first + ',' + second << QByteArrayList{ "R1", "R2" };
    QTest::newRow("first receiver alone") << first << QByteArrayList{ "R1" };
    QTest::newRow("second receiver alone") << second << QByteArrayList{ "R2" };
    QTest::newRow("empty chassis") << QByteArray() << kNothing;
    QTest::newRow("unknown cards") << QByteArray("0199 MPU 1.0 PUMP Z9 X,77,a b c d e") << kNothing;
}

void MainWindowTest::panelsComeWithTheChannels()
{
    QFETCH(QByteArray, cards);
    QFETCH(QByteArrayList, addresses);
    ZIRVOFSMainWindow &window = m_bench->window();
    chassis().setValue("U0:CLST", cards);
    chassis().ignore("U0:TMRF"); // keeps the start-up one step before its end
    chassis().setAnswering(true);
    m_bench->start();
    QVERIFY(isVisible(u"lblCountdown"_s));
    m_bench->commandLink()->EstablishCommTmr_Tick();
    QVERIFY(chassis().waitForFrame("U0:TMRF"));
    QVERIFY(!isVisible(u"lblCountdown"_s));
    QVERIFY(!isVisible(u"groupBoxRcvr1"_s));
    QVERIFY(!isVisible(u"groupBoxRcvr2"_s));
    chassis().sendFrame("U0:TMRF:1");
    QVERIFY(m_bench->goLive());
    QCOMPARE(isVisible(u"groupBoxRcvr1"_s), addresses.size() > 0);
    QCOMPARE(isVisible(u"groupBoxRcvr2"_s), addresses.size() > 1);

    for (qsizetype place = 0; place < addresses.size(); ++place) {
        QCOMPARE(m_bench->sentBy([&] { QTest::keyClick(&frequency(place), Qt::Key_Up); }),
                 QByteArrayList{ addresses[place] + ":FREQ:2250.6" });
    }
    for (const QString &value : { u"230"_s, u"231"_s }) { // accepted, then refused
        for (const QString &module : { u"R1"_s, u"R2"_s, u"R3"_s, u"R"_s, u"U0"_s, u""_s })
            window.UpdateSetting(module, u"FREQ"_s, value + module.right(1), value == "231"_L1, u"2400"_s);
        for (qsizetype place = 0; place < addresses.size(); ++place)
            QCOMPARE(frequency(place).text(), value + QLatin1Char(addresses[place].back()) + u".0"_s);
    }

    window.RemoveControlFocusTmr_Tick(); // whether there is a receiver or not
    QCOMPARE(window.focusWidget(), &m_bench->find<QWidget>(u"lblRFFQch1"_s));
}

void MainWindowTest::namesAndLinks()
{
    const ZIRVOFSMainWindow &window = m_bench->window();
    QVERIFY(!window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
    QCOMPARE(window.windowTitle(), u"ZIRVO Local Software"_s);
    QVERIFY(m_bench->goLive());
    QCOMPARE(window.windowTitle(), u"(SystemID: RACK-7) ZIRVO Local Display (SystemName: Range 4)"_s);
    m_bench->report({ "U0:NAME:North %1" });
    QCOMPARE(window.windowTitle(), u"(SystemID: RACK-7) ZIRVO Local Display (SystemName: North %1)"_s);

    m_bench->report({ "U0:PLIST:day  night" }); // the part after the last blank is not a name
    QCOMPARE(window.PresetNames().join(u','), u"day,"_s);

    QStringList opened;
    for (SerialPortController *const link : window.SerialPortControllers()) {
        opened += u"%1 %2"_s.arg(link->portType()).arg(link->port().portName().section(u'/', -1));
        QVERIFY(link->port().isOpen());
        const bool shares = link->portType() != SerialPortController::SPECTRAL_LINK;
        QCOMPARE(link->channels(), shares ? m_bench->commandLink()->channels() : QList<Channel *>());
    }
    QCOMPARE(opened.join(u','), u"3 ttyUSB0,4 ttyUSB1,0 ttyUSB4,1 ttyUSB5,5 ttyUSB2"_s);
    QCOMPARE(WindowBench::boxCount(), 0);
}

void MainWindowTest::timers()
{
    m_bench->links().fit(kEveryPanel);
    QVERIFY(m_bench->goLive());
    m_bench->report({ "R1:SYNL:1", "R2:SYNL:1", "C1:CLCK:0", "D1:DLCK:1", "D3:DLCK:0" });
    QList<QLabel *> lamps;
    for (const QString &name : { u"SYNLch1"_s, u"SYNLch2"_s, u"CMBstatuscmb1"_s, u"Demoddmd1"_s, u"Demoddmd3"_s })
        lamps += &m_bench->find<QLabel>(u"lbl"_s + name);
    QByteArray lit; // by tick: receivers 1 and 2, combiner 3, demodulators 4 and 5
    for (int tick = 0; tick < 9; ++tick) {
        std::ranges::for_each(lamps, [](QLabel *lamp) { lamp->setStyleSheet({}); });
        m_bench->window().UpdateAllDynamicParamsTmr_Tick();
        for (qsizetype i = 0; i < lamps.size(); ++i)
            lit += lamps[i]->styleSheet().isEmpty() ? QByteArray() : QByteArray::number(i + 1);
        lit += ' ';
    }
    QVERIFY2(QByteArray("12 3 45 ").repeated(4).contains(lit), lit);

    // The timers run by themselves; the focus returns 3 s after the later of two touches.
    const QSignalSpy returns(&m_bench->focusReturn(), &FocusReturn::restoreDue);
    QElapsedTimer sinceTouch;
    m_bench->typeHalfAnEntry();
    for (const Qt::Key key : { Qt::Key_Period, Qt::Key_Backspace }) {
        lamps[0]->setStyleSheet({});
        QVERIFY(waitUntil([&] { return !lamps[0]->styleSheet().isEmpty(); }));
        QTest::keyClick(&frequency(), key);
        sinceTouch.start();
    }
    QVERIFY(waitUntil([&] { return returns.count() > 0; }));
    QVERIFY2(sinceTouch.elapsed() >= 2800, qPrintable(QString::number(sinceTouch.elapsed()))); // coarse timer: 5 %
    QVERIFY(m_bench->isEntryGivenUp(false));
    QVERIFY(m_bench->find<QWidget>(u"lblRFFQch1"_s).hasFocus());
}

void MainWindowTest::menus()
{
    chassis().setValue("U0:SLAVE", "2");
    chassis().setValue("U0:TMRF", "0");
    m_bench->start();
    QCOMPARE(entries(&QAction::isEnabled), "About");
    m_bench->window().DiversitySlaving_triggered();
    m_bench->window().InternalRef_triggered();
    QCOMPARE(entries(&QAction::isChecked), "");
    act("about");
    QVERIFY(WindowBench::takeSteps({ { [] { return openBoxes() == "N"; }, [this] { act("return"); } } }));
    QTimer *const focusTimer = m_bench->runningTimer(3000);
    QVERIFY(focusTimer);
    focusTimer->start(1);
    QVERIFY(waitUntil([this] { return !m_bench->focusReturn().isRunning(); }));
    QVERIFY(m_bench->goLive());
    QCOMPARE(entries(&QAction::isEnabled),
             "About DiversitySlaving ExternalRef FrequencyDiversitySlaving InternalRef LoadPreset NoSlaving SavePreset "
             "SystemCardsConfiguration SystemChannelNaming");

    // Marks in the menus, and an asterisk for every panel marked as slaved.
    const auto marks = [this] {
        const int slaved = isVisible(u"lblSlavedch1"_s) + isVisible(u"lblSlavedch2"_s);
        return entries(&QAction::isChecked) + QByteArray(slaved, '*');
    };
    const QString slaving = u"Slaving"_s;
    const QString reference = u"10 MHz Reference"_s;
    const QList<std::tuple<QString, QString, QByteArray, QByteArray, QByteArray>> choices{
        { slaving, u"Off"_s, "U0:SLAVE", "0", "ExternalRef NoSlaving" },
        { slaving, u"Diversity (Tuners, Demods)"_s, "U0:SLAVE", "1", "DiversitySlaving ExternalRef**" },
        { slaving, u"Frequency Diversity (Demods)"_s, "U0:SLAVE", "2", "ExternalRef FrequencyDiversitySlaving" },
        { reference, u"Internal"_s, "U0:TMRF", "1", "FrequencyDiversitySlaving InternalRef" },
        { reference, u"External"_s, "U0:TMRF", "0", "ExternalRef FrequencyDiversitySlaving" },
    };
    QByteArray before = "ExternalRef FrequencyDiversitySlaving";
    // What an act sends, and the marks after the answer.
    const auto outcome = [&](const std::function<void()> &act) {
        const QByteArray sent = m_bench->sentBy(act).join(' ');
        return sent + '|' + marks();
    };
    QCOMPARE(marks(), before);
    for (const auto &[menu, item, setting, value, after] : choices) {
        const auto choose = [&, path = QStringList{ u"Controls"_s, menu, item }] { pick(path); };
        const QByteArray old = setting + ':' + chassis().value(setting);
        const QByteArray request = setting + ':' + value;
        chassis().refuse(setting);
        QCOMPARE(outcome(choose), request + '|' + before);
        chassis().behave(setting);
        QCOMPARE(outcome(choose), request + '|' + after);
        QCOMPARE(outcome(choose), '|' + after); // the mark stays on the value in force
        QCOMPARE(outcome([&, echo = setting + ":3"] { m_bench->report({ old, echo }); }), '|' + before);
        m_bench->report({ request });
        before = after;
    }
    chassis().refuse("U0:TMRF");
    m_bench->report({ "U0:TMRF:Unknown" }); // as if it had never been read
    QCOMPARE(outcome([this] { m_bench->action(u"actionInternalRef"_s).trigger(); }),
             "U0:TMRF:1|FrequencyDiversitySlaving");
}

void MainWindowTest::boxes_data()
{
    QTest::addColumn<QByteArray>("reports"); // each with the boxes that are open after it
    const auto row = [](const char *name, const char *reports) { QTest::newRow(name) << QByteArray(reports); };
    row("preset", "PDONE:1= PDONE:2= PDONE:0=L PDONE:0=L PDONE:2=L PDONE:1= PDONE:1= PDONE:0=L PDONE:1=");
    row("configuration", "UPDT:1= UPDT:2= UPDT:0=C UPDT:0=C UPDT:2=C UPDT:1= UPDT:1= UPDT:0=C UPDT:1=");
    row("preset opened first, ends first", "PDONE:0=L UPDT:0=CL PDONE:1=C UPDT:1=");
    row("preset opened first, ends last", "PDONE:0=L UPDT:0=CL UPDT:1=L PDONE:1=");
    row("preset opened last, ends first", "UPDT:0=C PDONE:0=CL PDONE:1=C UPDT:1=");
    row("preset opened last, ends last", "UPDT:0=C PDONE:0=CL UPDT:1=L PDONE:1=");
    row("preset, no end", "PDONE:0=L endless=L PDONE:0=L over=");
    row("configuration, no end", "UPDT:0=C endless=C UPDT:0=C over=");
    row("about", "about=N return=");
}

void MainWindowTest::boxes()
{
    QFETCH(QByteArray, reports);
    QVERIFY(m_bench->goLive());
    QList<WindowBench::Step> steps;
    for (const QByteArray &report : reports.split(' ')) {
        const auto next = [this, what = report.split('=').first(), marker = QByteArray::number(steps.size())] {
            for (const QString &text : kWaiting) { // the operator cannot close it
                if (QMessageBox *const box = WindowBench::box(text)) {
                    QTest::keyClick(box, Qt::Key_Escape);
                    box->close();
                }
            }
            act(what);
            chassis().sendFrame("U0:LAGC:" + marker);
        };
        const auto isTaken = [this, marker = QString::number(steps.size())] {
            return m_bench->system()->getLAGC() == marker;
        };
        const auto isShown = [wanted = report.split('=').last()] { return openBoxes() == wanted; };
        steps += { { [] { return true; }, next }, { isTaken, [] {} }, { isShown, [] {} } };
    }
    const auto take = [&] {
        m_bench->typeHalfAnEntry();
        QVERIFY(WindowBench::takeSteps(steps));
    };
    QCOMPARE(m_bench->sentBy(take), kNothing);
    QVERIFY(m_bench->isEntryGivenUp());
}

void MainWindowTest::end_data()
{
    QTest::addColumn<QByteArray>("moment"); // the last request before the end
    QTest::addColumn<QByteArrayList>("acts");
    const auto row = [](const char *name, const char *moment, const QByteArrayList &acts = {}) {
        QTest::newRow(name) << QByteArray(moment) << acts;
    };
    row("without a link", "");
    row("with a device that does not open", "none");
    row("before anything is known", "U0:TRON:OFF");
    row("while settings are read", "R1:FLST");
    row("live, behind a request", "U0:TMRF:0");
    row("live, with a half-typed text", "U0:TRON:ON");
    row("closed with a half-typed text", "U0:TRON:ON", { "close" });
    row("closed behind a wait box", "U0:TRON:ON", { "PDONE:0", "close" });
    row("closed behind both wait boxes", "U0:TRON:ON", { "UPDT:0", "PDONE:0", "close" });
    row("closed behind the box of a link", "none", { "close" });
    row("closed behind the about box", "U0:TRON:ON", { "about", "close" });
    row("closed behind the list of presets", "U0:TRON:ON", { "actionLoadPreset", "close" });
    row("closed with all windows", "U0:TRON:ON", kWindows + QByteArrayList{ "close" });
    row("closed with all windows and a dialog", "U0:TRON:ON", kWindows + QByteArrayList{ "actionSavePreset", "close" });
}

void MainWindowTest::end()
{
    QFETCH(QByteArray, moment);
    QFETCH(QByteArrayList, acts);
    const bool hasLink = moment.contains(':');
    if (acts.contains(kWindows.back()))
        m_bench->links().fit(kEveryPanel);
    if (moment == "none")
        QVERIFY(QFile::remove(m_bench->links().path(u"ttyUSB0"_s)));
    if (moment == "R1:FLST")
        chassis().ignore(moment);
    if (moment == "U0:TRON:ON" || moment == "U0:TMRF:0") {
        QVERIFY(m_bench->goLive());
        m_bench->typeHalfAnEntry();
    } else if (!moment.isEmpty()) {
        chassis().setAnswering(moment == "R1:FLST");
        m_bench->start();
        m_bench->commandLink()->EstablishCommTmr_Tick();
    }
    if (moment == "U0:TMRF:0") {
        chassis().ignore("U0:TMRF");
        m_bench->action(u"actionExternalRef"_s).trigger();
    }
    QVERIFY(!hasLink || chassis().waitForFrame(moment));
    QVERIFY(moment != "none" || m_bench->words().contains(u"Chassis: not present"_s));
    chassis().setValue("U0:PLIST", "day night ");
    const QByteArray before = chassis().bytes() + (acts.join().contains("Preset") ? "\x02U0:PLIST\x0D" : "");

    QList<WindowBench::Step> steps;
    const qsizetype linkBoxes = moment == "none"; // about the device that does not open
    for (const QByteArray &what : acts)
        steps += { [open = 1 + steps.size() + linkBoxes] { return WindowBench::visible<QWidget>().size() == open; },
                   [this, what] { act(what); } };
    if (!acts.isEmpty()) {
        QTimer::singleShot(0, this, [&] { QVERIFY(WindowBench::takeSteps(steps)); });
        // Before takeSteps() gives up and closes the boxes.
        QTimer::singleShot(8'000, &m_bench->window(), [] { QCoreApplication::exit(1); });
        QCOMPARE(QApplication::exec(), 0);
    }
    m_bench->endWindow();
    QCoreApplication::processEvents(); // sends whatever the end has queued
    if (hasLink)
        m_bench->commandLink()->port().write("!"); // goes out behind it
    QVERIFY(waitUntil([&] { return chassis().bytes() == before + (hasLink ? kReportsOff + '!' : QByteArray()); }));
    QCOMPARE(WindowBench::visible<QWidget>().size(), 0);
}

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
