#include "support/PanelBench.h"
#include "support/Wait.h"

#include "controls/FocusReturn.h"

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
const QByteArray kGreenLamp = "background-color: #24d620;";
const QByteArray kRedLamp = "background-color: #f11029;";
const QByteArray kInLock = "background-color: rgb(229, 227, 225); color: #28c125;";
const QByteArray kOutOfLock = "background-color: rgb(229, 227, 225); color: #f11029;";
const QByteArray kManual = "background-color: rgb(229, 227, 225); color: #000000;";

/// What either receiver reports before each case.
const QByteArray kStart = "NAME:Receiver;FLST:2395.5 2200.5,1485.5 1435.5;IFLS:1 MHz,5 MHz,10 "
                          "MHz;FREQ:2250.5;IFBW:1;AGCF:0;AGCZ:0;SLPA:1;SLPB:2;"
                          "POLA:0;POLB:1;AGCT:1;AFC:1;AFCM:40;CAMP:1;PLYB:0;ACFE:0;ANCF:-20;SYNL:1;MAFL:1;RLST:3;"
                          "SSLV:-85.6;AGCA:100;AGCB:-100";

const QList<std::pair<QByteArray, int>> kBoxes{ { "IFBW", 3 }, { "SLPA", 3 }, { "SLPB", 3 },
                                                { "POLA", 2 }, { "POLB", 2 }, { "AGCT", 5 },
                                                { "AFC", 5 },  { "CAMP", 2 }, { "PLYB", 2 } };

const QByteArrayList kFullScales{ "2500", "6000", "12000" }; // mV, by slope

} // namespace

/// The receivers' panels in the whole window: what keys and clicks send, and what the chassis' answers and reports
/// show. One window serves all cases, until one of them fails.
class ReceiverPanelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void filledFromTheChassis();
    void operatorChanges_data();
    void operatorChanges();
    void unansweredSnapsBack();
    void reports_data();
    void reports();
    void halfTypedEntries();
    void reportsDuringEntry();
    void stepsAheadOfTheAnswers();
    void listChangesWhileOpen();
    void longNames();
    void slavedReceiverFollows();
    void wheelNeedsTheFocus();

private:
    [[nodiscard]] QWidget &widget(const QByteArray &name) { return m_bench->widget(name); }

    std::unique_ptr<PanelBench> m_bench;
};

void ReceiverPanelTest::init()
{
    if (!m_bench) {
        m_bench = std::make_unique<PanelBench>();
        QVERIFY(m_bench->goLive());
        m_bench->stopReadingBack();
        for (const char *name : { "cboPLYBch1", "cboPLYBch2" })
            widget(name).show(); // comes with a tape card
    }
    QByteArrayList frames{ "U0:SLAVE:0" };
    for (const QByteArray &setting : kStart.split(';'))
        frames << "R1:" + setting << "R2:" + setting;
    QVERIFY(m_bench->startCase(frames));
}

void ReceiverPanelTest::cleanup()
{
    if (QTest::currentTestFailed())
        m_bench.reset();
}

void ReceiverPanelTest::filledFromTheChassis()
{
    m_bench.reset();
    m_bench = std::make_unique<PanelBench>();
    for (const QByteArray setting : { "NAME=North", "FREQ=1450.5", "IFBW=2", "AGCF=1", "AGCZ=1", "SLPA=0", "POLA=1",
                                      "AGCT=4", "AFC=4", "AFCM=-75", "CAMP=0", "ANCF=-7" })
        m_bench->chassis().setValue("R2:" + setting.split('=')[0], setting.split('=')[1]);
    QVERIFY(m_bench->goLive());
    m_bench->stopReadingBack();
    QCOMPARE(
        m_bench->mistakes("groupBoxRcvr2.title=North|doubleSpinBoxFREQch2.text=1450.5|cboIFBWch2.currentText=10 "
                          "MHz|cboSLPAch2.currentText=50 dB/V|cboPOLAch2.currentText=NEG|cboAGCTch2.currentText=0.1 "
                          "ms|cboCAMPch2.currentText=INV|cboAFCch2.currentText=MANUAL|btnAGCFch2.text=ON|lblRelAbsch2."
                          "text=(Relative)|progBarAGCAch2.maximum=2500|sldrAFCMch2.value=-75|lblRLSTvalch2.text=-75 "
                          "KHz|lineAntennaCFch2.text=-7|doubleSpinBoxFREQch1.text=2250.5|lblRFFQch1.focus=true"),
        QByteArray());
    m_bench.reset();
}

void ReceiverPanelTest::operatorChanges_data()
{
    QTest::addColumn<PanelBench::Change>("change");
    const auto row = [](const QByteArrayList &reports, const QByteArray &control, const QByteArray &input,
                        const QByteArray &sent, const QByteArrayList &shown) {
        QTest::newRow((reports.join(' ') + ' ' + control + ' ' + input).constData())
            << PanelBench::Change{ reports, control, input, sent, shown };
    };
    const auto tune = [&row](const QByteArray &ranges, const QByteArray &start, const QByteArray &input,
                             const QByteArray &arrives) {
        row({ "R1:FLST:" + ranges, "R1:FREQ:" + start }, "doubleSpinBoxFREQch1", input,
            arrives.isEmpty() ? arrives : "R1:FREQ:" + arrives,
            { "doubleSpinBoxFREQch1.text=" + (arrives.isEmpty() ? "2250.5" : arrives) });
    };
    const QByteArray two = "2395.5 2200.5,1485.5 1435.5";
    for (const auto &[typed, arrives] : { std::pair("2300", "2300.0"), std::pair("1450.5", "1450.5"),
                                          std::pair("2200.4", "1485.5"), std::pair("2395.6", "1435.5") })
        tune(two, "2250.5", typed, arrives);
    for (const char *refused : { "2250.5", "3000", "1800", "2200.3" })
        tune(two, "2250.5", refused, "");
    for (const char *bound : { "2395.3", "2200.8", "1435.3" })
        tune("2395.3 2200.8,1485.8 1435.3", "2250.5", bound, bound);
    tune("2395.5 2200.5", "2250.50", "3000", ""); // confirmed with another spelling
    tune("", "2250.5", "2300", "");
    for (const char *nonsense : { "2395.5", "inf -inf", "2395.5  2200.5", "a b" })
        tune(nonsense, "2250.5", "2300", "");
    tune(two, "2250.5", "2265,5", "2265.5");                     // a decimal comma, not a digit separator
    tune("2199.9 2200.0,2299.9 2300.0", "2250.5", "2199.9", ""); // the wrong way round, each leads to the other

    const auto walk = [&tune](const QByteArray &ranges, const QByteArray &low, const QByteArray &high) {
        tune(ranges, low, "Up", high);
        tune(ranges, high, "Down", low);
    };
    // Not every sum of tenths is exact: each last digit takes both ways over both edges.
    for (char tenth = '0'; tenth <= '9'; ++tenth) {
        const QByteArray point = QByteArray(".") + tenth;
        const QByteArray ranges = "2395" + point + " 2200" + point + ",1485" + point + " 1435" + point;
        walk(ranges, "1485" + point, "2200" + point);
        walk(ranges, "2395" + point, "1435" + point);
    }
    walk("2395.5 2200.5", "2200.9", "2201.0");
    walk("2395.3 2200.8", "2395.3", "2200.8");

    for (const QByteArray n : { "1", "2" }) {
        for (const auto &[mnemonic, count] : kBoxes) {
            const QByteArray setting = 'R' + n + ':' + mnemonic + ':';
            const QByteArray box = "cbo" + mnemonic + "ch" + n;
            for (int index = 0; index < count; ++index) {
                const QByteArray value = QByteArray::number(index);
                QByteArrayList shown{ box + ".currentIndex=" + value };
                if (mnemonic.startsWith("SLP"))
                    shown += "progBarAGC" + mnemonic.last(1) + "ch" + n + ".maximum=" + kFullScales[index];
                row({ setting + QByteArray::number((index + 1) % count) }, box, value, setting + value, shown);
            }
        }
        for (const QByteArray button : { "AGCF", "AGCZ" }) {
            const QByteArray setting = 'R' + n + ':' + button + ':';
            const QByteArray name = "btn" + button + "ch" + n;
            row({ setting + '0' }, name, "click", setting + '1', { name + ".text=ON", "lblRFFQch1.focus=true" });
            row({ setting + '1' }, name, "click", setting + '0', { name + ".text=OFF", "lblRFFQch1.focus=true" });
        }
    }
    row({ "R1:SSLV:-80" }, "btnAGCZch1", "click", "R1:AGCZ:1",
        { "progBarSSLVch1.minimum=0", "progBarSSLVch1.maximum=160", "progBarSSLVch1.value=0" });
    row({ "R1:ACFE:0" }, "checkBoxAntennaCFch1", "Space", "R1:ACFE:1", { "lineAntennaCFch1.enabled=true" });
    row({ "R1:ACFE:1" }, "checkBoxAntennaCFch1", "Space", "R1:ACFE:0", { "lineAntennaCFch1.enabled=false" });
    row({ "R1:AFC:2" }, "cboAFCch1", "4", "R1:AFC:4",
        { "sldrAFCMch1.visible=true", "lblAFCAutoManch1.text=Offset", "lblRLSTvalch1.text=40 KHz",
          "lblRLSTvalch1.styleSheet=" + kManual });
    row({ "R1:AFC:4" }, "cboAFCch1", "3", "R1:AFC:3",
        { "sldrAFCMch1.visible=false", "lblAFCAutoManch1.text=Loop Stress" });
    row({ "R1:AFC:4" }, "sldrAFCMch1", "Right", "R1:AFCM:41", { "lblRLSTvalch1.text=41 KHz" });
    row({ "R1:ACFE:1" }, "lineAntennaCFch1", "-7", "R1:ANCF:-7", { "lineAntennaCFch1.text=-7" });
    row({ "R1:ACFE:1" }, "lineAntennaCFch1", "007", "R1:ANCF:7", { "lblRFFQch1.focus=true" });
    row({ "R1:ACFE:1" }, "lineAntennaCFch1", "-20", "", { "lblRFFQch1.focus=true" });
    for (const char *noNumber : { "abc", "99999999999" })
        row({ "R1:ACFE:1" }, "lineAntennaCFch1", noNumber, "R1:ANCF:0", { "lineAntennaCFch1.text=0" });

    // What a control cannot show is replaced by whatever is chosen.
    row({ "R1:FREQ:9999" }, "doubleSpinBoxFREQch1", "2300", "R1:FREQ:2300.0", { "doubleSpinBoxFREQch1.text=2300.0" });
    row({ "R1:FLST:300 199.9", "R1:FREQ:abc" }, "doubleSpinBoxFREQch1", "199.9", "R1:FREQ:199.9",
        { "doubleSpinBoxFREQch1.text=199.9" }); // which the box holds meanwhile
    row({ "R1:IFBW:3" }, "cboIFBWch1", "0", "R1:IFBW:0", { "cboIFBWch1.shownText=1 MHz" });
    row({ "R1:AFC:4", "R1:AFCM:x" }, "sldrAFCMch1", "Right", "R1:AFCM:1", { "lblRLSTvalch1.text=1 KHz" });
    row({ "R1:AGCF:on" }, "btnAGCFch1", "click", "R1:AGCF:0", { "btnAGCFch1.text=OFF" });
    row({ "R1:ACFE:on" }, "checkBoxAntennaCFch1", "Space", "R1:ACFE:1",
        { "checkBoxAntennaCFch1.checked=true", "checkBoxAntennaCFch1.standIn=" });
}

void ReceiverPanelTest::operatorChanges()
{
    QFETCH(PanelBench::Change, change);
    m_bench->verify(change);
}

void ReceiverPanelTest::unansweredSnapsBack()
{
    const QByteArrayList before = m_bench->everythingShown();
    for (const char *setting : { "R1:FREQ", "R1:AFC", "R1:AGCZ" })
        m_bench->chassis().ignore(setting);
    const QByteArrayList sent = m_bench->sentBy([this] {
        m_bench->operate("doubleSpinBoxFREQch1", "2300");
        m_bench->operate("cboAFCch1", "4");
        m_bench->operate("btnAGCZch1", "click");
    });
    QCOMPARE(sent, (QByteArrayList{ "R1:FREQ:2300.0", "R1:AFC:4", "R1:AGCZ:1" }));
    QCOMPARE(m_bench->everythingShown(), before);
    m_bench.reset();
}

void ReceiverPanelTest::reports_data()
{
    QTest::addColumn<QByteArrayList>("reports");
    QTest::addColumn<QByteArrayList>("shown");
    const auto row = [](const QByteArrayList &reports, const QByteArrayList &shown) {
        QTest::newRow(reports.join(' ').constData()) << reports << shown;
    };
    row({ "R1:SYNL:0" }, { "lblSYNLch1.styleSheet=" + kRedLamp, "lblSYNLch2.styleSheet=" + kGreenLamp });
    row({ "R1:SYNL:7" }, { "lblSYNLch1.styleSheet=" + kGreenLamp });
    row({ "R1:RLST:-12.5" }, { "lblRLSTvalch1.styleSheet=" + kInLock, "lblRLSTvalch1.text=-12.5 KHz" });
    row({ "R1:AFC:3", "R1:MAFL:0" }, { "lblRLSTvalch1.styleSheet=" + kOutOfLock });
    row({ "R1:AFC:4", "R1:MAFL:0", "R1:RLST:-12.5" },
        { "lblRLSTvalch1.styleSheet=" + kManual, "lblRLSTvalch1.text=40 KHz" });
    row({ "R1:SSLV:-70.6" }, { "progBarSSLVch1.format=-71 dBm", "progBarSSLVch1.value=-71" });
    row({ "R1:SSLV:-0.4" }, { "progBarSSLVch1.format=0 dBm" });
    row({ "R1:SSLV:-300" }, { "progBarSSLVch1.value=-140" });
    row({ "R1:SSLV:1e20" }, { "progBarSSLVch1.format=1e+20 dBm", "progBarSSLVch1.value=20" });
    row({ "R1:SSLV:abc" }, { "progBarSSLVch1.format=-86 dBm" });
    row({ "R1:AGCZ:5", "R1:SSLV:-70.6" }, { "progBarSSLVch1.format=-71" });
    row({ "R1:AGCZ:1", "R1:SSLV:2.4" }, { "progBarSSLVch1.format=2 dB", "lblCARRch1.styleSheet=" + kRedLamp });
    row({ "R1:AGCZ:1", "R1:SSLV:2.5" }, { "lblCARRch1.visible=true", "lblCARRch1.styleSheet=" + kGreenLamp });
    row({ "R1:AGCA:2500" }, { "progBarAGCAch1.format=2.5 V", "progBarAGCAch1.value=2500" });
    row({ "R1:POLA:1", "R1:AGCA:2500" }, { "progBarAGCAch1.format=2.5 V", "progBarAGCAch1.value=0" });
    row({ "R1:POLA:1", "R1:AGCA:-9e300" }, { "progBarAGCAch1.value=6000" });
    row({ "R1:SLPA:0", "R1:AGCA:9000" }, { "progBarAGCAch1.value=2500", "progBarAGCAch2.maximum=6000" });
    row({ "R1:AGCB:-1500" }, { "progBarAGCBch1.value=1500" });
    row({ "R1:AGCB:1234.5678" }, { "progBarAGCBch1.format=1.23457 V" });
    row({ "R1:AGCA:-0" }, { "progBarAGCAch1.format=0 V" });

    row({ "R1:ACFE:1" }, { "lblRelAbsch1.text=(Antenna)", "lblRelAbsch1.styleSheet=color:#fcfd0f" });
    row({ "R1:ACFE:1", "R1:ACFE:0" }, { "lblRelAbsch1.text=(Absolute)", "lblRelAbsch1.styleSheet=color:#000000" });
    row({ "R1:AGCZ:1", "R1:ACFE:1" }, { "lblRelAbsch1.text=(Relative)", "lblRelAbsch1.styleSheet=color:#28c125" });
    row({ "R1:AGCZ:1", "R1:ACFE:1", "R1:AGCZ:0" }, { "lblRelAbsch1.text=(Antenna)" });
    row({ "R1:AGCZ:1", "R1:AGCZ:0" },
        { "lblCARRch1.visible=false", "progBarSSLVch1.minimum=-140", "progBarSSLVch1.maximum=20" });

    for (const auto &[mnemonic, count] : kBoxes) {
        const QByteArray setting = "R2:" + mnemonic + ':';
        const QByteArray box = "cbo" + mnemonic + "ch2";
        for (const QByteArray &value : QByteArrayList{ "-1", QByteArray::number(count), "x", "" })
            row({ setting + '0', setting + value }, { box + ".currentIndex=-1", box + ".shownText=" + value });
    }
    for (const char *offset : { "-120 -120 -120 KHz", "+050 50 +050 KHz", "12.5 0 12.5 KHz", "300 200 300 KHz",
                                "1e308 0 1e308 KHz", " 0 --" }) {
        const QByteArray text(offset);
        const QByteArrayList words = text.split(' ');
        row({ "R1:AFC:4", "R1:AFCM:" + words[0] },
            { "sldrAFCMch1.value=" + words[1], "lblRLSTvalch1.text=" + words.mid(2).join(' ') });
    }
    row({ "R2:FREQ:1450.3" }, { "doubleSpinBoxFREQch2.text=1450.3", "doubleSpinBoxFREQch1.text=2250.5" });
    for (const char *shown : { "abc 199.9 abc", "9999 5250.1 9999", "nan 199.9 nan", " 199.9 --" }) {
        const QByteArrayList words = QByteArray(shown).split(' ');
        row({ "R2:FREQ:" + words[0] },
            { "doubleSpinBoxFREQch2.value=" + words[1], "doubleSpinBoxFREQch2.text=" + words[2] });
    }
    row({ "R2:AGCF:1", "R2:AGCF:2" }, { "btnAGCFch2.text=2", "btnAGCFch2.styleSheet=color:#28c125" });
    row({ "R2:IFLS:1 MHz" }, { "cboIFBWch2.count=1", "cboIFBWch2.currentIndex=-1", "cboIFBWch2.shownText=1" });
    row({ "R2:IFLS:a,b,c,d" }, { "cboIFBWch2.count=4", "cboIFBWch2.shownText=b", "cboIFBWch1.count=3" });
    row({ "R2:NAME:Mast", "R2:ACFE:1", "R2:ANCF:9" }, { "groupBoxRcvr2.title=Mast", "checkBoxAntennaCFch2.checked=true",
                                                        "lineAntennaCFch2.enabled=true", "lineAntennaCFch2.text=9" });
    row({ "R1:PLYB:1" },
        { "doubleSpinBoxFREQch1.enabled=false", "progBarSSLVch1.visible=false", "progBarAGCAch1.visible=false",
          "progBarAGCBch1.visible=false", "doubleSpinBoxFREQch2.enabled=true", "progBarSSLVch2.visible=true" });
    row({ "R1:PLYB:1", "R1:PLYB:0" }, { "doubleSpinBoxFREQch1.enabled=true", "progBarSSLVch1.visible=true" });
}

void ReceiverPanelTest::reports()
{
    QFETCH(QByteArrayList, reports);
    QFETCH(QByteArrayList, shown);
    QCOMPARE(m_bench->sentBy([&] { m_bench->report(reports); }), kNothing);
    m_bench->refreshStatus();
    QCOMPARE(m_bench->actual(shown), shown);
}

void ReceiverPanelTest::halfTypedEntries()
{
    m_bench->report({ "R1:ACFE:1" });
    const QByteArrayList confirmed{ "doubleSpinBoxFREQch1.text=2250.5", "lineAntennaCFch1.text=-20",
                                    "lblRFFQch1.focus=true" };
    for (const char *field : { "doubleSpinBoxFREQch1", "lineAntennaCFch1" }) {
        m_bench->focusReturn().stop();
        PanelBench::type(widget(field), u"2300"_s);
        QVERIFY(m_bench->focusReturn().isRunning());
        QCOMPARE(m_bench->sentBy([this] { m_bench->window().RemoveControlFocusTmr_Tick(); }), kNothing);
        QCOMPARE(m_bench->actual(confirmed), confirmed);
    }

    PanelBench::type(widget("lineAntennaCFch1"), u"5"_s);
    QCOMPARE(m_bench->sentBy([this] { m_bench->operate("doubleSpinBoxFREQch1", "3000"); }), kNothing);
    QCOMPARE(m_bench->mistakes("doubleSpinBoxFREQch1.text=2250.5|lineAntennaCFch1.text=5"), QByteArray());

    // The operator who leaves the field means it.
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"2300"_s);
    QCOMPARE(m_bench->sentBy([this] { QTest::keyClick(&widget("doubleSpinBoxFREQch1"), Qt::Key_Tab); }),
             QByteArrayList{ "R1:FREQ:2300.0" });

    // A menu only borrows the focus.
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"2300"_s);
    QMenuBar *const menus = m_bench->window().menuBar();
    QCOMPARE(m_bench->sentBy([menus] {
        QTest::mouseClick(menus, Qt::LeftButton, {}, menus->actionGeometry(menus->actions().constLast()).center());
        QVERIFY(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    }),
             kNothing);
    QCOMPARE(m_bench->mistakes("doubleSpinBoxFREQch1.text=2300"), QByteArray());
}

void ReceiverPanelTest::reportsDuringEntry()
{
    m_bench->report({ "R1:ACFE:1" });
    // Playback takes the field away in the middle of an entry.
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"2300"_s);
    QCOMPARE(m_bench->sentBy([this] { m_bench->report({ "R1:FREQ:2260.5", "R1:PLYB:1", "R1:PLYB:0" }); }), kNothing);
    QCOMPARE(m_bench->mistakes("doubleSpinBoxFREQch1.text=2260.5"), QByteArray());
    // Otherwise the entry is the operator's until it is committed or given up.
    for (const auto &[field, report, sent] : { std::tuple("doubleSpinBoxFREQch1", "R1:FREQ:2275.5", "R1:FREQ:2300.0"),
                                               std::tuple("lineAntennaCFch1", "R1:ANCF:-3", "R1:ANCF:2300") }) {
        PanelBench::type(widget(field), u"2300"_s);
        const QByteArrayList frames = m_bench->sentBy([&, name = field, arrives = report] {
            m_bench->report({ arrives });
            QTest::keyClick(&widget(name), Qt::Key_Return);
        });
        QCOMPARE(frames, QByteArrayList{ sent });
    }
    PanelBench::type(widget("doubleSpinBoxFREQch1"), u"23"_s);
    m_bench->report({ "R1:FREQ:9999" }); // no frequency of the box; giving up leads to it all the same
    QCOMPARE(m_bench->mistakes("doubleSpinBoxFREQch1.text=23"), QByteArray());
    m_bench->window().RemoveControlFocusTmr_Tick();
    QCOMPARE(m_bench->sentBy([this] { m_bench->operate("doubleSpinBoxFREQch1", "Up"); }), kNothing); // from where?
    QCOMPARE(m_bench->mistakes("doubleSpinBoxFREQch1.text=9999"), QByteArray());
}

void ReceiverPanelTest::stepsAheadOfTheAnswers()
{
    m_bench->chassis().setAnswering(false);
    const auto mark = m_bench->chassis().frames().size();
    for (int step = 0; step < 3; ++step)
        m_bench->operate("doubleSpinBoxFREQch1", "Up");
    for (const char *sent : { "R1:FREQ:2250.6", "R1:FREQ:2250.7", "R1:FREQ:2250.8" }) {
        m_bench->window().RemoveControlFocusTmr_Tick();
        QVERIFY(m_bench->chassis().waitForFrame(sent));
        QCOMPARE(m_bench->mistakes("doubleSpinBoxFREQch1.text=2250.8"), QByteArray());
        m_bench->chassis().ack();
    }
    m_bench->chassis().setAnswering(true);
    QCOMPARE(m_bench->sentBy([this] { m_bench->operate("doubleSpinBoxFREQch1", "Up"); }),
             QByteArrayList{ "R1:FREQ:2250.9" });
    QCOMPARE(m_bench->chassis().framesSince(mark).count("R1:FREQ:2250.7"), 1);
}

/// The list stays under the operator's finger; what is chosen from it means its place in the new list.
void ReceiverPanelTest::listChangesWhileOpen()
{
    auto *const box = qobject_cast<QComboBox *>(&widget("cboIFBWch1"));
    for (const auto &[key, sent] :
         { std::pair(Qt::Key_Return, QByteArrayList{ "R1:IFBW:0" }), std::pair(Qt::Key_Escape, kNothing) }) {
        m_bench->report({ "R1:IFLS:1 MHz,5 MHz,10 MHz", "R1:IFBW:1" });
        QCOMPARE(m_bench->sentBy([&, pressed = key] {
            box->showPopup();
            QTest::keyClick(box->view(), Qt::Key_End);
            m_bench->report({ "R1:IFBW:0", "R1:IFLS:10 MHz,20 MHz", "R1:IFBW:1" });
            QVERIFY(box->view()->currentIndex().data().toString() == "10 MHz"_L1 && box->count() == 3);
            QTest::keyClick(box->view(), pressed);
        }),
                 sent);
        QCOMPARE(m_bench->mistakes("cboIFBWch1.count=2|cboIFBWch1.shownText=" +
                                   QByteArray(sent.isEmpty() ? "20 MHz" : "10 MHz")),
                 QByteArray());
    }
    m_bench->report({ "R1:IFLS:1 MHz,5 MHz,10 MHz", "R1:IFBW:1" });
    box->showPopup();
    m_bench->report({ "R1:IFLS:10 MHz,20 MHz" });
    box->view()->window()->close(); // as a wait box that comes up does
    QVERIFY(
        waitUntil([this] { return m_bench->mistakes("cboIFBWch1.count=2|cboIFBWch1.shownText=20 MHz").isEmpty(); }));
}

void ReceiverPanelTest::longNames()
{
    m_bench->report({ "R1:NAME:" + QByteArray(5000, 'W'), "R2:NAME:A&B" });
    QVERIFY(widget("groupBoxRcvr1").minimumSizeHint().width() < m_bench->window().width() / 2);
    QCOMPARE(m_bench->mistakes("groupBoxRcvr2.title=A&&B"), QByteArray());
}

void ReceiverPanelTest::slavedReceiverFollows()
{
    m_bench->report({ "U0:SLAVE:1" });
    QCOMPARE(m_bench->sentBy([this] { m_bench->operate("doubleSpinBoxFREQch2", "2300"); }),
             (QByteArrayList{ "R2:FREQ:2300.0", "R1:FREQ:2300.0" }));
    QCOMPARE(m_bench->sentBy([this] { m_bench->operate("cboIFBWch1", "2"); }),
             (QByteArrayList{ "R1:IFBW:2", "R2:IFBW:2" }));
    QCOMPARE(m_bench->mistakes("doubleSpinBoxFREQch1.text=2300.0|cboIFBWch2.currentIndex=2"), QByteArray());
    m_bench->report({ "U0:SLAVE:2" }); // slaves demodulators only
    QCOMPARE(m_bench->sentBy([this] { m_bench->operate("doubleSpinBoxFREQch2", "2310"); }),
             QByteArrayList{ "R2:FREQ:2310.0" });
}

void ReceiverPanelTest::wheelNeedsTheFocus()
{
    m_bench->report({ "R1:AFC:4" });
    for (const auto &[name, sent] : { std::pair("doubleSpinBoxFREQch1", "R1:FREQ:2250.4"),
                                      std::pair("cboIFBWch1", "R1:IFBW:2"), std::pair("sldrAFCMch1", "R1:AFCM:") }) {
        widget("lblRFFQch1").setFocus();
        QCOMPARE(m_bench->sentBy([&] { PanelBench::turnWheel(widget(name)); }), kNothing);
        QVERIFY(widget("lblRFFQch1").hasFocus());
        widget(name).setFocus();
        const QByteArrayList frames = m_bench->sentBy([&] { PanelBench::turnWheel(widget(name)); });
        QVERIFY(frames.size() == 1 && frames.first().startsWith(sent));
    }
}

QTEST_MAIN(ReceiverPanelTest)
#include "tst_receiver_panel.moc"
