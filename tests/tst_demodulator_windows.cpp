#include "channels/DmdChan.h"
#include "controls/FocusReturn.h"
#include "dialogs/demodulator/DmdCtrlWindow.h"
#include "dialogs/demodulator/EyeConstWindow.h"
#include "support/Keys.h"
#include "support/Wait.h"
#include "support/WindowBench.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList kNothing;

/// Reported before each case: a mode and an output configuration that use every control.
const QByteArray kStart = "DMOD:4 VCFG:2 ALBW:0 ASRG:0 ASRT:0 TMID:0.35 IFFL:2000000,10000000,40000000 DFIR:1 BSDP:1 "
                          "BSCP:1 BSCL:2 VIDP:1 BSIL:1 TRKD:3 DAFC:1 VCP1:1 VCP2:1 VDE1:1 VDE2:1 DFAQ:1 BSIC:5 VLPF:1 "
                          "VAFL:2 CPT0:7 CPT1:6 CPT2:2 CPT3:3 CPT4:6 CPT5:7 CPT6:1 CPT7:1 LBWB:0.005 LBWC:0.01 "
                          "SWRG:100 SWRT:1000000 DSDM:2 RDRG:840400 RDRG:85eb90 RDRG:868000 RDRG:870005";

} // namespace

/// The windows of one demodulator: what keys send, and what answers and reports show.
class DemodulatorWindowsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_bench.links().fit({ LinkBench::kRegisterDemodulators });
        QVERIFY(m_bench.goLive());
        m_bench.stopReadingBack();
    }
    void init()
    {
        QCOMPARE(sentOn(kStart), kNothing);
        open(0);
    }
    void cleanup() { delete m_window; }

    void choices_data();
    void choices();
    void entries_data();
    void entries();
    void halfTypedEntries();
    void valuesThatAreNoNumber();
    void lockedControls_data();
    void lockedControls();
    void layouts();
    void closedWhileUnanswered();

private:
    [[nodiscard]] DmdChan *channel() { return m_bench.demodulator(0); }
    [[nodiscard]] FarEnd &card() { return m_bench.chassis(); }
    [[nodiscard]] QComboBox *box(const QString &name) { return m_window->findChild<QComboBox *>(u"cbo"_s + name); }
    [[nodiscard]] QLineEdit *line(const QString &name) { return m_window->findChild<QLineEdit *>(u"line"_s + name); }
    [[nodiscard]] bool isFocusReturned() const { return m_window->focusWidget()->objectName() == "lblFocusdmd"_L1; }
    [[nodiscard]] QByteArrayList sentBy(const std::function<void()> &act) { return m_bench.sentBy(act); }
    /// Frames sent because of what the card reports.
    [[nodiscard]] QByteArrayList sentOn(const QByteArray &settings)
    {
        return sentBy([&] { m_bench.report(("D1:" + QByteArray(settings).replace(" ", " D1:")).split(' ')); });
    }
    /// Opens the advanced window, or, for a variant of -1, the eye window in its place.
    void open(int variant)
    {
        delete m_window;
        if (variant < 0)
            m_window = new EyeConstWindow(nullptr, channel(), &m_open);
        else
            m_window = new DmdCtrlWindow(variant, nullptr, channel(), &m_open);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }
    /// Names of the boxes and lines that are @p which, without "cbo", "line" and "dmd".
    [[nodiscard]] QString controls(const std::function<bool(const QWidget *)> &which) const
    {
        QStringList names;
        for (const QWidget *control : m_window->findChildren<QWidget *>(QRegularExpression(u"^(cbo|line)"_s))) {
            if (which(control))
                names += control->objectName().remove(QRegularExpression(u"^(cbo|line)|dmd$"_s));
        }
        names.sort();
        return names.join(u' ');
    }

    WindowBench m_bench;
    QPointer<QDialog> m_window;
    bool m_open = false;
};

void DemodulatorWindowsTest::choices_data()
{
    const QString sources = u"Data A=0,Clock A=1,Data B=2,Clock B=3,Analog A=6,Analog B=7"_s;
    QString outputs;
    for (int output = 0; output < 8; ++output)
        outputs += u"; 0|Video%1dmd|Video %1 Output|CPT%1|"_s.arg(output) + sources;
    addRows(u"-1|Mode||DSDM|Off=0,Constellation=1,Eye Pattern=2,SDI=3; 0|DataPoldmd|Data Polarity|BSDP|INV=0,NORM=1; "
            u"0|ClkPoldmd|Clock Polarity|BSCP|INV=0,NORM=1; "
            "1|ClkPhasedmd|Clock Phase|BSCL|0=0,90=1,180=2,270=3; 0|AnalogPoldmd|Analog Polarity|VIDP|INV=0,NORM=1; "
            "0|Interleavingdmd|Interleaving|BSIL|OFF=0,ON=1; 0|FastAquiredmd|Fast Aquire|DFAQ|OFF=0,ON=1; "
            "0|LoopBWDivdmd|Loop BW Divider|TRKD|1=0,1/2=1,1/4=2,1/8=3; 0|FMSweepdmd|FM Sweep|DAFC|OFF=0,ON=1; "
            "0|Couplingdmd|Coupling|VCP1 VCP2|DC=0,AC=1; 0|DeEmphasisdmd|De-Emphasis|VDE1 VDE2|OFF=0,ON=1; "
            "0|FIRFilterBWdmd|IF FIR Filter BW|DFIR|Auto=-1,2 MHz=0,10 MHz=1,40 MHz=2; "
            "0|InputCodedmd|Input Code|BSIC|NRZ-L=0,NRZ-I=1,NRZ-M=2,NRZ-S=3,BiP-L=4,BiP-I=5,BiP-M=6,BiP-S=7; "
            "0|LowPassFilterdmd|Low Pass Filter|VLPF|OFF=0,ON=1; "
            "1|AnalogFilter|Analog Filter|VAFL|De-Emphasis=0,6 MHz LPF=1,27 MHz LPF=2,WB-Bypass=3"_s +
            outputs);
}

/// Every item is shown when its value is reported, and sends that value when chosen; a refused choice is undone.
void DemodulatorWindowsTest::choices()
{
    QFETCH(const QStringList, parts);
    open(parts[0].toInt());
    const QStringList items = parts[4].split(u',');
    const QByteArray mnemonic = "D1:" + parts[3].first(4).toLatin1();
    const auto text = [&items](qsizetype item) { return items[item].section(u'=', 0, 0); };
    const auto frames = [&](qsizetype item) {
        const QString value = u':' + items[item].section(u'=', 1);
        return (u"D1:"_s + parts[3].split(u' ').join(value + u" D1:"_s) + value).toLatin1().split(' ');
    };
    for (int item = 0; item < items.size(); ++item) {
        const auto other = (item + 1) % items.size();
        QCOMPARE(sentOn(frames(other).join(' ').replace("D1:", "")), kNothing);
        QCOMPARE(box(parts[1])->currentText(), text(other));
        card().refuse(mnemonic);
        QCOMPARE(sentBy([&] { pick(box(parts[1]), item); }), frames(item));
        QCOMPARE(box(parts[1])->currentText(), text(other));
        card().behave(mnemonic);
        QCOMPARE(sentBy([&] { pick(box(parts[1]), item); }),
                 frames(item).first(1)); // a second setting holds it already
        QCOMPARE(box(parts[1])->currentText(), text(item));
    }
    // A value without an item is shown as text, and any item replaces it; a refused choice is undone.
    QCOMPARE(sentOn(mnemonic.last(4) + ":99"), kNothing);
    card().refuse(mnemonic);
    QCOMPARE(sentBy([&] { pick(box(parts[1]), 0); }).first(1), frames(0).first(1));
    QVERIFY(box(parts[1])->currentIndex() == -1);
    QVERIFY(box(parts[1])->property("shownText") == u"99"_s);
    card().behave(mnemonic);
    QCOMPARE(sentOn(mnemonic.last(4) + ":Unknown"), kNothing);
    QVERIFY(box(parts[1])->currentIndex() == -1);
    QVERIFY(box(parts[1])->property("shownText") == QString());

    const auto labels = m_window->findChildren<QLabel *>();
    QVERIFY(labels.isEmpty() || std::any_of(labels.begin(), labels.end(), [&](const QLabel *label) {
                return label->buddy() == box(parts[1]) && label->text() == parts[2] && label->isVisible();
            }));
}

void DemodulatorWindowsTest::entries_data()
{
    // Line | title | text of the refusal | refused texts | report, text shown, typed text, set, text after the ACK |
    // ...
    addRows(u"BitSyncLoopBWdmd|BitSync Loop BW|Valid Range: 0.1% to 100%|0.09 100.01 150 nan|"
            "LBWB:0.005 0.50 50 LBWB:0.50000 50.00|LBWB:1 100.00 0.1 LBWB:0.00100 0.10; "
            "CarrierLoopBWdmd|Carrier Loop BW|Valid Range: 0.1% to 100%|0.09 100.01|"
            "LBWC:0.01234 1.23 100 LBWC:1.00000 100.00|LBWC:0.001 0.10 12,5 LBWC:0.12500 12.50; "
            "SweepRangedmd|Sweep Range|Valid Range: 1kHz to 500kHz|0.9 500.1 5k|"
            "SWRG:250.5000 250.5 1 SWRG:1 1|SWRG:12.34567 12.3457 499.6 SWRG:500 500; "
            "StepSizedmd|Sweep Rate|Valid Range: 1Hz/sec to 20MHz/sec|0 20.1M 25M fast|SWRT:999 999 2M SWRT:2000000 2M|"
            "SWRT:999999 999.999K 20m SWRT:20000000 20M|SWRT:10500000 10.5M 1,5k SWRT:1500 1.5K; "
            "ModIndexdmd|Mod Index|Valid Range: 0.30 to 0.40|0.29 0.41 0|TMID:0.4 0.40 0.3 TMID:0.30 0.30|"
            "TMID:0 0.00 0,4 TMID:0.40 0.40; DQMFrameSizedmd|DQM FSize|Valid Range: 128 to 16384|127 16385|"
            "RDRG:844000 16384 128 CDRG:840080 128|RDRG:840080 128 16384 CDRG:844000 16384; "
            "DQMFrameWorddmd|DQM FWord|Valid Range: 0 to 65535|-1 65536 none|RDRG:85EB90 60304 65535 CDRG:85ffff 65535|"
            "RDRG:85ffff 65535 0 CDRG:850000 0; DQMManualMeandmd|DQM Mean|Valid Range: 0 to 1.0|-0.01 1.01|"
            "RDRG:86ffff 1.00 0.5 CDRG:867fff 0.50|RDRG:864000 0.25 1 CDRG:86ffff 1.00; "
            "DQMBEPOffsetdmd|DQM BEPO|Valid Range: -32768 to 32767|-32769 32768|RDRG:877fff 32767 -1 CDRG:87ffff -1|"
            "RDRG:878000 -32768 5 CDRG:870005 5|RDRG:87ffff -1 -32768 CDRG:878000 -32768"_s);
}

void DemodulatorWindowsTest::entries()
{
    QFETCH(const QStringList, parts);
    QLineEdit *const field = line(parts[0]);
    for (const QString &entry : parts.sliced(4)) {
        const QStringList words = entry.split(u' ');
        const QByteArrayList set{ "D1:" + words[3].toLatin1() };
        QCOMPARE(sentOn(words[0].toLatin1()), kNothing);
        QCOMPARE(field->text(), words[1]);
        QCOMPARE(sentBy([&] { QTest::keyClick(field, Qt::Key_Return); }), kNothing); // the text may be rounded
        card().refuse(set[0].first(7));
        QCOMPARE(sentBy([&] { enter(field, words[2]); }), set);
        QCOMPARE(field->text(), words[1]);
        card().behave(set[0].first(7));
        QCOMPARE(sentBy([&] { enter(field, words[2]); }), set);
        QCOMPARE(sentBy([&] { enter(field, u' ' + words[2]); }), kNothing);
        QCOMPARE(field->text(), words[4]);
    }
    const QString before = field->text();
    for (const QString &typed : parts[3].split(u' ')) {
        QCOMPARE(sentBy([&] { enter(field, typed); }), kNothing);
        QVERIFY(field->text() == before);
        QVERIFY(isFocusReturned());
        const auto boxes = m_window->findChildren<QMessageBox *>();
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(QStringList({ boxes[0]->windowTitle(), boxes[0]->text() }), parts.sliced(1, 2));
        QVERIFY(boxes[0]->isModal());
        QVERIFY(boxes[0]->icon() == QMessageBox::Warning);
        QTest::keyClick(boxes[0], Qt::Key_Return);
        QVERIFY(waitUntil([&] { return !m_window->findChild<QMessageBox *>(); }));
        QVERIFY(QTest::qWaitForWindowActive(m_window));
    }
}

void DemodulatorWindowsTest::halfTypedEntries()
{
    const auto *const timer = m_window->findChild<FocusReturn *>();
    QLineEdit *const field = line(u"BitSyncLoopBWdmd"_s);
    enter(field, u"7"_s, Qt::Key_8);
    QVERIFY(timer->isRunning());
    QCOMPARE(sentOn("LBWB:0.02"), kNothing);
    QCOMPARE(field->text(), u"78"_s); // half-typed, so it stays
    timer->findChild<QTimer *>()->setInterval(1);
    QVERIFY(waitUntil([&] { return field->text() == "2.00"_L1; }));
    QVERIFY(isFocusReturned());
    QVERIFY(timer->isRunning());
    timer->findChild<QTimer *>()->setInterval(FocusReturn::kDelayMs);
    enter(field, u"9"_s, Qt::Key_9); // given up by the Return in another field
    QCOMPARE(sentBy([&] { enter(line(u"StepSizedmd"_s), u"5"_s); }), QByteArrayList{ "D1:SWRT:5" });
    QVERIFY(!timer->isRunning());
    QVERIFY(field->text() == "2.00"_L1);

    card().ignore("D1:LBWB");
    enter(field, u"3"_s);
    card().sendFrame("D1:LBWB:0.01"); // older than the entry
    QVERIFY(waitUntil([&] { return channel()->getLBWB() == "0.01"_L1; }));
    QCoreApplication::processEvents();
    QCOMPARE(field->text(), u"3"_s);
    (void)sentBy([] {}); // until the time-out
    QCOMPARE(field->text(), u"1.00"_s);
    card().behave("D1:LBWB");
}

void DemodulatorWindowsTest::valuesThatAreNoNumber()
{
    QCOMPARE(sentOn("LBWB:Unknown SWRG:Unknown SWRT:abc LBWC:1e308 TMID:1e300 RDRG:84zzzz"), kNothing);
    QStringList texts;
    for (const char *name : { "BitSyncLoopBW", "SweepRange", "StepSize", "CarrierLoopBW", "DQMFrameSize" })
        texts += line(QLatin1StringView(name) + "dmd"_L1)->text();
    QCOMPARE(texts.join(u' '), u"-- -- abc 1e308 zzzz"_s);
    QVERIFY(line(u"ModIndexdmd"_s)->text().size() < 10);

    QLineEdit *const field = line(u"SweepRangedmd"_s);
    QCOMPARE(sentBy([&] { QTest::keyClick(field, Qt::Key_Return); }), kNothing);
    QCOMPARE(field->text(), u"--"_s);
    card().refuse("D1:SWRG");
    for (const QString &back : { u"--"_s, u"70"_s }) { // refused, then accepted
        const auto type = [&] {
            QTest::mouseClick(field, Qt::LeftButton, {}, field->rect().center());
            QTest::keyClicks(field, u"70"_s); // replaces the text shown
            QTest::keyClick(field, Qt::Key_Return);
        };
        QCOMPARE(sentBy(type), QByteArrayList{ "D1:SWRG:70" });
        QCOMPARE(field->text(), back);
        card().behave("D1:SWRG");
    }
}

void DemodulatorWindowsTest::lockedControls_data()
{
    QString rows =
        u"VCFG:2|; VCFG:0|ClkPol DataPol; VCFG:1|AnalogPol Coupling DeEmphasis; DMOD:11 ALBW:1 ASRG:1 "
        u"ASRT:1|; "
        "DMOD:0 ASRG:1|CarrierLoopBW Interleaving LoopBWDiv ModIndex%2; "
        "DMOD:0 ALBW:1|%1 Interleaving LoopBWDiv ModIndex%2; DMOD:1 TMID:0|%1 FMSweep Interleaving%2; "
        "DMOD:1 TMID:0.35|%1 FMSweep Interleaving LoopBWDiv%2; DMOD:9|%1 FMSweep FastAquire Interleaving%2"_s.arg(
            u"BitSyncLoopBW CarrierLoopBW"_s, u" StepSize SweepRange"_s);
    for (const int mode : { 2, 3, 4, 5, 6, 7, 8, 10, 13, 17 })
        rows += u"; DMOD:%1|; DMOD:%1 ALBW:1|BitSyncLoopBW CarrierLoopBW LoopBWDiv; DMOD:%1 ASRG:1|SweepRange; "
                "DMOD:%1 ASRT:1|StepSize"_s.arg(mode);
    addRows(rows);
}

void DemodulatorWindowsTest::lockedControls()
{
    QFETCH(const QStringList, parts);
    QCOMPARE(sentOn(parts[0].toLatin1()), kNothing);
    QCOMPARE(controls([](const QWidget *control) { return !control->isEnabled(); }), parts[1]);
    for (const QLabel *label : m_window->findChildren<QLabel *>())
        QVERIFY(!label->buddy() || label->isEnabled() == label->buddy()->isEnabled());
    QCOMPARE(line(u"SweepRangedmd"_s)->text(), parts[0].contains(u"ASRG:1"_s) ? QString() : u"100"_s);
    QCOMPARE(sentOn("ASRG:0"), kNothing);
    QCOMPARE(line(u"SweepRangedmd"_s)->text() + line(u"StepSizedmd"_s)->text(), u"1001M"_s);
}

/// Bit 0 of the variant chooses the layout; both open with the values in force.
void DemodulatorWindowsTest::layouts()
{
    const auto isHidden = [](const QWidget *control) { return !control->isVisible(); };
    QStringList texts; // of a window that followed the reports, then of one opened after them
    const auto addText = [&texts](const QWidget *w) {
        texts += w->property(w->inherits("QComboBox") ? "currentText" : "text").toString();
        return true;
    };
    QCOMPARE(sentOn(QByteArray(kStart).replace(":1 ", ":0 ").replace(":3 ", ":2 ")), kNothing);
    QCOMPARE(sentOn("NAME:North ASRG:1 DFIR:2147483647 DFIR:0 IFFL:500000,12345678"), kNothing);
    QCOMPARE(box(u"FIRFilterBWdmd"_s)->currentText(), u"0.5 MHz"_s);
    (void)controls(addText);
    QCOMPARE(sentBy([&] { open(2); }), kNothing);
    QCOMPARE(controls(isHidden), u"AnalogFilter ClkPhase"_s);
    (void)controls(addText);
    QCOMPARE(texts.first(texts.size() / 2), texts.last(texts.size() / 2));
    QCOMPARE(m_window->windowTitle(), u"(DMD.1) Advanced Demod Settings (North)"_s);
    QCOMPARE(m_window->findChild<QLabel *>(u"lblMPUvaldmd"_s)->text(), u"v23"_s); // the register holds 0017
    open(3);
    QVERIFY(isFocusReturned());
    QCOMPARE(sentOn("VCFG:0"), kNothing); // locks the clock polarity, which this layout does not have
    QVERIFY(box(u"ClkPhasedmd"_s)->isEnabled());
    QVERIFY(m_window->findChild<QLabel *>(u"lblClkPoldmd"_s)->isEnabled());
    QCOMPARE(controls(isHidden), u"ClkPol Coupling DeEmphasis LowPassFilter"_s);
    open(-1);
    QCOMPARE(sentOn("DSDM:-1"), kNothing);
    QCOMPARE(box(u"Mode"_s)->currentText(), u"Off"_s);
    QCOMPARE(m_window->windowTitle(), u"(DMD.1) Eye/Const/SDI"_s);
}

void DemodulatorWindowsTest::closedWhileUnanswered()
{
    card().ignore("D1:BSDP");
    card().ignore("D1:DSDM");
    const QByteArrayList sent = sentBy([&] {
        pick(box(u"DataPoldmd"_s), 0);
        enter(line(u"StepSizedmd"_s), u"0"_s); // its box stays open
        QVERIFY(m_open);
        m_window->close();
        QVERIFY(waitUntil([&] { return !m_window && !m_open; }));
        open(-1);
        pick(box(u"Mode"_s), 1);
        QVERIFY(m_open);
        QTest::keyClick(m_window, Qt::Key_Escape);
        QVERIFY(waitUntil([&] { return !m_window && !m_open; }));
    });
    QCOMPARE(sent.join(' '), "D1:BSDP:0 D1:DSDM:1"_ba);
    card().behave("D1:BSDP");
    card().behave("D1:DSDM");
    open(0);
    QCOMPARE(box(u"DataPoldmd"_s)->currentText(), u"NORM"_s);
}

QTEST_MAIN(DemodulatorWindowsTest)
#include "tst_demodulator_windows.moc"
