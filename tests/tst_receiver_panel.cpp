#include "controls/FocusReturn.h"
#include "support/PanelTest.h"
#include "support/Wait.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QMenuBar>
#include <QTest>

#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList kNothing;
const QByteArray kReceivers = "receivers";

} // namespace

/// The receivers' panels.
class ReceiverPanelTest : public PanelTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(kReceivers); }
    void operatorChanges_data();
    void reports_data();
    void halfTypedEntries();
    void reportsDuringEntry();
    void stepsAheadOfTheAnswers();
    void listChangesWhileOpen();
    void longNames();
    void slavedReceiverFollows();
    void wheelNeedsTheFocus();
};

void ReceiverPanelTest::operatorChanges_data()
{
    QTest::addColumn<QByteArrayList>("row");
    const auto tune = [](const QByteArray &ranges, const QByteArray &start, const QByteArray &input,
                         const QByteArray &arrives) {
        const QByteArray sent = arrives.isEmpty() ? arrives : "R1:FREQ:" + arrives;
        addRows(kReceivers, "R1:FLST:" + QByteArray(ranges).replace(' ', '_') + " R1:FREQ:" + start +
                                "|doubleSpinBoxFREQch1|" + input + '|' + sent +
                                "|doubleSpinBoxFREQch1.text=" + (arrives.isEmpty() ? "2250.5" : arrives));
    };
    const QByteArray two = "2395.5 2200.5,1485.5 1435.5";
    for (const auto &[typed, arrives] :
         { std::pair("2300", "2300.0"), std::pair("1450.5", "1450.5"), std::pair("2200.4", "1485.5"),
           std::pair("2395.6", "1435.5"), std::pair("2265,5", "2265.5"), // a decimal comma, not a digit separator
           std::pair("2250.5", ""), std::pair("3000", ""), std::pair("1800", ""), std::pair("2200.3", "") })
        tune(two, "2250.5", typed, arrives);
    for (const char *bound : { "2395.3", "2200.8", "1435.3" })
        tune("2395.3 2200.8,1485.8 1435.3", "2250.5", bound, bound);
    tune("2395.5 2200.5", "2250.50", "3000", ""); // confirmed with another spelling
    for (const char *nonsense : { "", "2395.5", "inf -inf", "2395.5  2200.5", "a b" })
        tune(nonsense, "2250.5", "2300", "");
    tune("2199.9 2200.0,2299.9 2300.0", "2250.5", "2199.9", ""); // wrong order of bounds: each leads to the other

    const auto walk = [&tune](const QByteArray &ranges, const QByteArray &low, const QByteArray &high) {
        tune(ranges, low, "Up", high);
        tune(ranges, high, "Down", low);
    };
    // Not every sum of tenths is exact: steps in both directions over both edges, for each last digit.
    for (char tenth = '0'; tenth <= '9'; ++tenth) {
        const QByteArray point = QByteArray(".") + tenth;
        const QByteArray ranges = "2395" + point + " 2200" + point + ",1485" + point + " 1435" + point;
        walk(ranges, "1485" + point, "2200" + point);
        walk(ranges, "2395" + point, "1435" + point);
    }
    walk("2395.5 2200.5", "2200.9", "2201.0");
    walk("2395.3 2200.8", "2395.3", "2200.8");

    for (const QByteArray box : { "IFBW,0 1 2", "SLPA,0 1 2", "SLPB,0 1 2", "POLA,0 1", "POLB,0 1", "AGCT,0 1 2 3 4",
                                  "AFC,0 1 2 3 4", "CAMP,0 1", "PLYB,0 1" })
        addChoices(kReceivers, "cbo" + box.split(',')[0] + "ch@", "R@:" + box.split(',')[0] + ':', box.split(',')[1],
                   "12");
    addRows(kReceivers,
            "R@:SLPA:1|cboSLPAch@|0|R@:SLPA:0|progBarAGCAch@.maximum=2500, "
            "R@:SLPA:2|cboSLPAch@|1|R@:SLPA:1|progBarAGCAch@.maximum=6000, "
            "R@:SLPB:0|cboSLPBch@|2|R@:SLPB:2|progBarAGCBch@.maximum=12000, "
            "R@:AGCF:0|btnAGCFch@|click|R@:AGCF:1|btnAGCFch@.text=ON|lblRFFQch1.focus=true, "
            "R@:AGCF:1|btnAGCFch@|click|R@:AGCF:0|btnAGCFch@.text=OFF|lblRFFQch1.focus=true, "
            "R@:AGCZ:0|btnAGCZch@|click|R@:AGCZ:1|btnAGCZch@.text=ON|lblRFFQch1.focus=true, "
            "R@:AGCZ:1|btnAGCZch@|click|R@:AGCZ:0|btnAGCZch@.text=OFF|lblRFFQch1.focus=true",
            "12");
    addRows(kReceivers, "R1:SSLV:-80|btnAGCZch1|click|R1:AGCZ:1|progBarSSLVch1.minimum=0|progBarSSLVch1.maximum=160|"
                        "progBarSSLVch1.value=0, "
                        "R1:ACFE:0|checkBoxAntennaCFch1|Space|R1:ACFE:1|lineAntennaCFch1.enabled=true, "
                        "R1:ACFE:1|checkBoxAntennaCFch1|Space|R1:ACFE:0|lineAntennaCFch1.enabled=false, "
                        "R1:AFC:2|cboAFCch1|4|R1:AFC:4|sldrAFCMch1.visible=true|lblAFCAutoManch1.text=Offset|"
                        "lblRLSTvalch1.text=40 KHz|lblRLSTvalch1.styleSheet=<manual>, "
                        "R1:AFC:4|cboAFCch1|3|R1:AFC:3|sldrAFCMch1.visible=false|lblAFCAutoManch1.text=Loop Stress, "
                        "R1:AFC:4|sldrAFCMch1|Right|R1:AFCM:41|lblRLSTvalch1.text=41 KHz, "
                        "R1:ACFE:1|lineAntennaCFch1|-7|R1:ANCF:-7|lineAntennaCFch1.text=-7, "
                        "R1:ACFE:1|lineAntennaCFch1|007|R1:ANCF:7|lblRFFQch1.focus=true, "
                        "R1:ACFE:1|lineAntennaCFch1|-20||lblRFFQch1.focus=true, "
                        "R1:ACFE:1|lineAntennaCFch1|abc|R1:ANCF:0|lineAntennaCFch1.text=0, "
                        "R1:ACFE:1|lineAntennaCFch1|99999999999|R1:ANCF:0|lineAntennaCFch1.text=0");
    // A value that a control cannot show is replaced by whatever is chosen.
    addRows(kReceivers,
            "R1:FREQ:9999|doubleSpinBoxFREQch1|2300|R1:FREQ:2300.0|doubleSpinBoxFREQch1.text=2300.0, "
            "R1:FLST:300_199.9 R1:FREQ:abc|doubleSpinBoxFREQch1|199.9|R1:FREQ:199.9|doubleSpinBoxFREQch1.text=199.9, "
            "R1:IFBW:3|cboIFBWch1|0|R1:IFBW:0|cboIFBWch1.shownText=1 MHz, "
            "R1:AFC:4 R1:AFCM:x|sldrAFCMch1|Right|R1:AFCM:1|lblRLSTvalch1.text=1 KHz, "
            "R1:AGCF:on|btnAGCFch1|click|R1:AGCF:0|btnAGCFch1.text=OFF, "
            "R1:ACFE:on|checkBoxAntennaCFch1|Space|R1:ACFE:1|checkBoxAntennaCFch1.checked=true|"
            "checkBoxAntennaCFch1.standIn=");
}

void ReceiverPanelTest::reports_data()
{
    QTest::addColumn<QByteArrayList>("row");
    addRows(kReceivers,
            "R1:SYNL:0|lblSYNLch1.styleSheet=<bad>|lblSYNLmarkch1.text=Lost, R1:SYNL:7, "
            "R1:RLST:-12.5|lblRLSTvalch1.text=-12.5 KHz, "
            "R1:AFC:3 R1:MAFL:0|lblRLSTvalch1.styleSheet=<out of lock>|..., "
            "R1:AFC:4 R1:MAFL:0 R1:RLST:-12.5|lblRLSTvalch1.styleSheet=<manual>|lblRLSTvalch1.text=40 KHz|..., "
            "R1:SSLV:-70.6|progBarSSLVch1.format=-71 dBm|progBarSSLVch1.value=-71|..., "
            "R1:SSLV:-0.4|progBarSSLVch1.format=0 dBm|..., R1:SSLV:-300|progBarSSLVch1.value=-140|..., "
            "R1:SSLV:1e20|progBarSSLVch1.format=1e+20 dBm|progBarSSLVch1.value=20|..., R1:SSLV:abc, "
            "R1:AGCZ:5 R1:SSLV:-70.6|progBarSSLVch1.format=-71|..., "
            "R1:AGCZ:1 R1:SSLV:2.4|progBarSSLVch1.format=2 dB|lblCARRch1.styleSheet=<bad>|..., "
            "R1:AGCZ:1 R1:SSLV:2.5|lblCARRch1.visible=true|lblCARRch1.styleSheet=<good>|..., "
            "R1:AGCA:2500|progBarAGCAch1.format=2.5 V|progBarAGCAch1.value=2500|..., "
            "R1:POLA:1 R1:AGCA:2500|progBarAGCAch1.format=2.5 V|progBarAGCAch1.value=0|..., "
            "R1:POLA:1 R1:AGCA:-9e300|progBarAGCAch1.value=6000|..., "
            "R1:SLPA:0 R1:AGCA:9000|progBarAGCAch1.value=2500|progBarAGCAch2.maximum=6000|..., "
            "R1:AGCB:-1500|progBarAGCBch1.value=1500|..., R1:AGCB:1234.5678|progBarAGCBch1.format=1.23457 V|..., "
            "R1:AGCA:-0|progBarAGCAch1.format=0 V|...");
    addRows(kReceivers,
            "R1:ACFE:1|lblRelAbsch1.text=(Antenna)|lblRelAbsch1.styleSheet=color:#fcfd0f|..., "
            "R1:ACFE:1 R1:ACFE:0|lblRelAbsch1.text=(Absolute)|lblRelAbsch1.styleSheet=color:#000000|..., "
            "R1:AGCZ:1 R1:ACFE:1|lblRelAbsch1.text=(Relative)|lblRelAbsch1.styleSheet=color:#28c125|..., "
            "R1:AGCZ:1 R1:ACFE:1 R1:AGCZ:0|lblRelAbsch1.text=(Antenna)|..., "
            "R1:AGCZ:1 R1:AGCZ:0|lblCARRch1.visible=false|progBarSSLVch1.minimum=-140|progBarSSLVch1.maximum=20|..., "
            "R2:FREQ:1450.3|doubleSpinBoxFREQch2.text=1450.3|doubleSpinBoxFREQch2.value=1450.3, "
            "R2:AGCF:1 R2:AGCF:2|btnAGCFch2.text=2|btnAGCFch2.styleSheet=color:#28c125, "
            "R2:IFLS:1_MHz|cboIFBWch2.count=1|cboIFBWch2.currentIndex=-1|cboIFBWch2.shownText=1|..., "
            "R2:IFLS:a,b,c,d|cboIFBWch2.count=4, "
            "R2:NAME:Mast R2:ACFE:1 R2:ANCF:9|groupBoxRcvr2.title=Mast|checkBoxAntennaCFch2.checked=true|"
            "lineAntennaCFch2.enabled=true|lineAntennaCFch2.text=9|..., "
            "R1:PLYB:1|doubleSpinBoxFREQch1.enabled=false|progBarSSLVch1.visible=false|progBarAGCAch1.visible=false|"
            "progBarAGCBch1.visible=false|cboPLYBch1.currentIndex=1, R1:PLYB:1 R1:PLYB:0");
    for (const QByteArray mnemonic : { "IFBW", "SLPA", "SLPB", "POLA", "POLB", "AGCT", "AFC", "CAMP", "PLYB" }) {
        for (const QByteArray value : { "-1", "9", "x", "" })
            addRows(kReceivers, "R2:" + mnemonic + ":0 R2:" + mnemonic + ':' + value + "|cbo" + mnemonic +
                                    "ch2.currentIndex=-1|cbo" + mnemonic + "ch2.shownText=" + value + "|...");
    }
    addRows(kReceivers, "R1:AFC:4 R1:AFCM:-120|sldrAFCMch1.value=-120|lblRLSTvalch1.text=-120 KHz|..., "
                        "R1:AFC:4 R1:AFCM:+050|sldrAFCMch1.value=50|lblRLSTvalch1.text=+050 KHz|..., "
                        "R1:AFC:4 R1:AFCM:12.5|sldrAFCMch1.value=0|lblRLSTvalch1.text=12.5 KHz|..., "
                        "R1:AFC:4 R1:AFCM:300|sldrAFCMch1.value=200|lblRLSTvalch1.text=300 KHz|..., "
                        "R1:AFC:4 R1:AFCM:|sldrAFCMch1.value=0|lblRLSTvalch1.text=--|..., "
                        "R2:FREQ:abc|doubleSpinBoxFREQch2.value=199.9|doubleSpinBoxFREQch2.text=abc, "
                        "R2:FREQ:9999|doubleSpinBoxFREQch2.value=5250.1|doubleSpinBoxFREQch2.text=9999, "
                        "R2:FREQ:|doubleSpinBoxFREQch2.value=199.9|doubleSpinBoxFREQch2.text=--");
}

void ReceiverPanelTest::halfTypedEntries()
{
    bench().report({ "R1:ACFE:1" });
    const QByteArrayList confirmed{ "doubleSpinBoxFREQch1.text=2250.5", "lineAntennaCFch1.text=-20",
                                    "lblRFFQch1.focus=true" };
    for (const char *field : { "doubleSpinBoxFREQch1", "lineAntennaCFch1" }) {
        bench().focusReturn().stop();
        PanelBench::type(widget(field), u"2300"_s);
        QVERIFY(bench().focusReturn().isRunning());
        QCOMPARE(bench().sentBy([this] { bench().window().RemoveControlFocusTmr_Tick(); }), kNothing);
        QCOMPARE(bench().actual(confirmed), confirmed);
    }

    PanelBench::type(widget("lineAntennaCFch1"), u"5"_s);
    QCOMPARE(bench().sentBy([this] { bench().operate("doubleSpinBoxFREQch1", "3000"); }), kNothing);
    QCOMPARE(bench().mistakes("doubleSpinBoxFREQch1.text=2250.5|lineAntennaCFch1.text=5"), QByteArray());

    // Leaving the field with Tab commits the entry.
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"2300"_s);
    QCOMPARE(bench().sentBy([this] { QTest::keyClick(&widget("doubleSpinBoxFREQch1"), Qt::Key_Tab); }),
             QByteArrayList{ "R1:FREQ:2300.0" });

    // A menu takes the focus only for a while.
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"2300"_s);
    QMenuBar *const menus = bench().window().menuBar();
    QCOMPARE(bench().sentBy([menus] {
        QTest::mouseClick(menus, Qt::LeftButton, {}, menus->actionGeometry(menus->actions().constLast()).center());
        QVERIFY(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    }),
             kNothing);
    QCOMPARE(bench().mistakes("doubleSpinBoxFREQch1.text=2300"), QByteArray());
}

void ReceiverPanelTest::reportsDuringEntry()
{
    bench().report({ "R1:ACFE:1" });
    // Playback disables the field with a half-typed text.
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"2300"_s);
    QCOMPARE(bench().sentBy([this] { bench().report({ "R1:FREQ:2260.5", "R1:PLYB:1", "R1:PLYB:0" }); }), kNothing);
    QCOMPARE(bench().mistakes("doubleSpinBoxFREQch1.text=2260.5"), QByteArray());
    // Otherwise a half-typed text stays until it is committed or given up.
    for (const auto &[field, report, sent] : { std::tuple("doubleSpinBoxFREQch1", "R1:FREQ:2275.5", "R1:FREQ:2300.0"),
                                               std::tuple("lineAntennaCFch1", "R1:ANCF:-3", "R1:ANCF:2300") }) {
        PanelBench::type(widget(field), u"2300"_s);
        const QByteArrayList frames = bench().sentBy([&, name = field, arrives = report] {
            bench().report({ arrives });
            QTest::keyClick(&widget(name), Qt::Key_Return);
        });
        QCOMPARE(frames, QByteArrayList{ sent });
    }
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"23"_s);
    bench().report({ "R1:FREQ:9999" }); // out of the box's range, but in force
    QCOMPARE(bench().mistakes("doubleSpinBoxFREQch1.text=23"), QByteArray());
    bench().window().RemoveControlFocusTmr_Tick();
    QCOMPARE(bench().sentBy([this] { bench().operate("doubleSpinBoxFREQch1", "Up"); }),
             kNothing); // no number to step from
    QCOMPARE(bench().mistakes("doubleSpinBoxFREQch1.text=9999"), QByteArray());
}

void ReceiverPanelTest::stepsAheadOfTheAnswers()
{
    bench().chassis().setAnswering(false);
    const auto mark = bench().chassis().frames().size();
    for (int step = 0; step < 3; ++step)
        bench().operate("doubleSpinBoxFREQch1", "Up");
    for (const char *sent : { "R1:FREQ:2250.6", "R1:FREQ:2250.7", "R1:FREQ:2250.8" }) {
        bench().window().RemoveControlFocusTmr_Tick();
        QVERIFY(bench().chassis().waitForFrame(sent));
        QCOMPARE(bench().mistakes("doubleSpinBoxFREQch1.text=2250.8"), QByteArray());
        bench().chassis().ack();
    }
    bench().chassis().setAnswering(true);
    QCOMPARE(bench().sentBy([this] { bench().operate("doubleSpinBoxFREQch1", "Up"); }),
             QByteArrayList{ "R1:FREQ:2250.9" });
    QCOMPARE(bench().chassis().framesSince(mark).count("R1:FREQ:2250.7"), 1);
}

/// An open list stays as it is; the chosen item is looked up in the new list.
void ReceiverPanelTest::listChangesWhileOpen()
{
    auto *const box = qobject_cast<QComboBox *>(&widget("cboIFBWch1"));
    for (const auto &[key, sent] :
         { std::pair(Qt::Key_Return, QByteArrayList{ "R1:IFBW:0" }), std::pair(Qt::Key_Escape, kNothing) }) {
        bench().report({ "R1:IFLS:1 MHz,5 MHz,10 MHz", "R1:IFBW:1" });
        QCOMPARE(bench().sentBy([&, pressed = key] {
            box->showPopup();
            QTest::keyClick(box->view(), Qt::Key_End);
            bench().report({ "R1:IFBW:0", "R1:IFLS:10 MHz,20 MHz", "R1:IFBW:1" });
            QVERIFY(box->view()->currentIndex().data().toString() == "10 MHz"_L1);
            QVERIFY(box->count() == 3);
            QTest::keyClick(box->view(), pressed);
        }),
                 sent);
        QCOMPARE(bench().mistakes("cboIFBWch1.count=2|cboIFBWch1.shownText=" +
                                  QByteArray(sent.isEmpty() ? "20 MHz" : "10 MHz")),
                 QByteArray());
    }
    bench().report({ "R1:IFLS:1 MHz,5 MHz,10 MHz", "R1:IFBW:1" });
    box->showPopup();
    bench().report({ "R1:IFLS:10 MHz,20 MHz" });
    box->view()->window()->close(); // as a wait box does that opens
    QVERIFY(waitUntil([this] { return bench().mistakes("cboIFBWch1.count=2|cboIFBWch1.shownText=20 MHz").isEmpty(); }));
}

void ReceiverPanelTest::longNames()
{
    bench().report({ "R1:NAME:" + QByteArray(5000, 'W'), "R2:NAME:A&B" });
    QVERIFY(widget("groupBoxRcvr1").minimumSizeHint().width() < bench().window().width() / 2);
    QCOMPARE(bench().mistakes("groupBoxRcvr2.title=A&&B"), QByteArray());
}

void ReceiverPanelTest::slavedReceiverFollows()
{
    bench().report({ "U0:SLAVE:1" });
    QCOMPARE(bench().sentBy([this] { bench().operate("doubleSpinBoxFREQch2", "2300"); }),
             (QByteArrayList{ "R2:FREQ:2300.0", "R1:FREQ:2300.0" }));
    QCOMPARE(bench().sentBy([this] { bench().operate("cboIFBWch1", "2"); }),
             (QByteArrayList{ "R1:IFBW:2", "R2:IFBW:2" }));
    QCOMPARE(bench().mistakes("doubleSpinBoxFREQch1.text=2300.0|cboIFBWch2.currentIndex=2"), QByteArray());
    bench().report({ "U0:SLAVE:2" }); // slaves demodulators only
    QCOMPARE(bench().sentBy([this] { bench().operate("doubleSpinBoxFREQch2", "2310"); }),
             QByteArrayList{ "R2:FREQ:2310.0" });
}

void ReceiverPanelTest::wheelNeedsTheFocus()
{
    bench().report({ "R1:AFC:4" });
    for (const auto &[name, sent] : { std::pair("doubleSpinBoxFREQch1", "R1:FREQ:2250.4"),
                                      std::pair("cboIFBWch1", "R1:IFBW:2"), std::pair("sldrAFCMch1", "R1:AFCM:") }) {
        widget("lblRFFQch1").setFocus();
        QCOMPARE(bench().sentBy([&] { PanelBench::turnWheel(widget(name)); }), kNothing);
        QVERIFY(widget("lblRFFQch1").hasFocus());
        widget(name).setFocus();
        const QByteArrayList frames = bench().sentBy([&] { PanelBench::turnWheel(widget(name)); });
        QVERIFY(frames.size() == 1);
        QVERIFY(frames.first().startsWith(sent));
    }
}

QTEST_MAIN(ReceiverPanelTest)
#include "tst_receiver_panel.moc"
