#include "support/PanelTest.h"

#include "controls/FocusReturn.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList kNothing;

} // namespace

/// The combiner's and the demodulators' panels, in every family of chassis.
class FlowPanelsTest : public PanelTest
{
    Q_OBJECT

private Q_SLOTS:
    void operatorChanges_data();
    void neverRead();
    void reports_data();
    void rates_data();
    void rates();
    void halfTypedRates();
    void focusOfWhatGoes_data();
    void focusOfWhatGoes();
    void modes_data();
    void modes();
    void families_data();
    void families();

private:
    [[nodiscard]] QByteArray hiddenIn(const QByteArray &panel, const QByteArray &suffix);
};

void FlowPanelsTest::operatorChanges_data()
{
    QTest::addColumn<QByteArrayList>("row"); // cards, reports before, control, input, sent, shown
    for (const QByteArray box :
         { "cboVideoModecmb1,C1:CVMD:,0 1", "cboOutputModecmb1,C1:CMOD:,0 1 2", "cboSLPAcmb1,C1:SLPA:,0 1 2",
           "cboSLPBcmb1,C1:SLPB:,0 1 2", "cboPOLAcmb1,C1:POLA:,0 1", "cboPOLBcmb1,C1:POLB:,0 1",
           "cboDemodModedmd@,D@:DMOD:,0 1 2 3 4 5 6 7 8 9 10 13 17", "cboOutputModedmd@,D@:VCFG:,0 1 2 3",
           "cboDerandomizerdmd@,D@:BSDR:,0 1", "cboDQMdmd@,D@:DQMON:,0 1", "cboADEQdmd@,D@:DEQE:,0 1",
           "cboVFBWdmd@,D@:VFIR:,0 1", "cboInputSourcedmd@,U0:SDM@:,1 2 3 A B C" })
        addChoices("K3050", box.split(',')[0], box.split(',')[1], box.split(',')[2]);
    addRows("K3050",
            "C1:SLPA:2|cboSLPAcmb1|1|C1:SLPA:1|progBarAGCAcmb1.maximum=6000|progBarAGCBcmb1.maximum=6000, "
            "C1:SLPB:0|cboSLPBcmb1|2|C1:SLPB:2|progBarAGCBcmb1.maximum=12000|progBarAGCAcmb1.maximum=2500, "
            "C1:CHZC:0|btnAGCZcmb1|click|C1:CHZC:1|btnAGCZcmb1.text=ON|lblRFFQch1.focus=true, "
            "C1:CHZC:1|btnAGCZcmb1|click|C1:CHZC:0|btnAGCZcmb1.text=OFF|btnAGCZcmb1.styleSheet=color:#000000, "
            "C1:CHZ1:0|btnCMBZ1cmb1|click|C1:CHZ1:1|btnCMBZ1cmb1.text=ON|btnCMBZ1cmb1.styleSheet=color:#28c125, "
            "C1:CHZ1:1|btnCMBZ1cmb1|click|C1:CHZ1:0|btnCMBZ1cmb1.text=OFF|lblRFFQch1.focus=true, "
            "C1:CHZ2:0|btnCMBZ2cmb1|click|C1:CHZ2:1|btnCMBZ2cmb1.text=ON|btnCMBZ2cmb1.styleSheet=color:#28c125, "
            "C1:CHZ2:1|btnCMBZ2cmb1|click|C1:CHZ2:0|btnCMBZ2cmb1.text=OFF|lblRFFQch1.focus=true, "
            "D@:ALBW:0|checkBoxAutoBWdmd@|Space|D@:ALBW:1|checkBoxAutoBWdmd@.checked=true, "
            "D@:ALBW:1|checkBoxAutoBWdmd@|Space|D@:ALBW:0|checkBoxAutoBWdmd@.checked=false, "
            "D@:ASRG:0|checkBoxAutoSweepRangedmd@|Space|D@:ASRG:1|checkBoxAutoSweepRangedmd@.checked=true, "
            "D@:ASRG:1|checkBoxAutoSweepRangedmd@|Space|D@:ASRG:0|checkBoxAutoSweepRangedmd@.checked=false, "
            "D@:ASRT:0|checkBoxAutoStepSizedmd@|Space|D@:ASRT:1|checkBoxAutoStepSizedmd@.checked=true, "
            "D@:ASRT:1|checkBoxAutoStepSizedmd@|Space|D@:ASRT:0|checkBoxAutoStepSizedmd@.checked=false, "
            "D@:DMOD:1 D@:TMID:0.7|checkBoxAutoModIndexdmd@|Space|D@:TMID:0|checkBoxAutoModIndexdmd@.checked=true, "
            "D@:DMOD:1 D@:TMID:0|checkBoxAutoModIndexdmd@|Space|D@:TMID:0.35|checkBoxAutoModIndexdmd@.checked=false, "
            "D@:VGN1:0|sldrAnalogGainAdmd@|Right|D@:VGN1:1|lblAnalogGainAValdmd@.text=1dB, "
            "D@:VGN2:254|sldrAnalogGainBdmd@|Right|D@:VGN2:255|lblAnalogGainBValdmd@.text=255dB");
    addChoices("plain", "cboIFBWcmb1", "C1:IFBW:", "0 1 2");
    addChoices("plain", "cboVFBWdmd@", "D@:VFBW:", "0 1 2");
    addChoices("plain", "cboAnalogPoldmd@", "D@:VIDP:", "0 1");
    addRows("plain", "D2:VGN1:50|sldrAnalogGainAdmd2|Right|D2:VGN1:51|lblAnalogGainAValdmd2.text=20 %, "
                     "D2:VGN2:251|sldrAnalogGainBdmd2|Right|D2:VGN2:252|lblAnalogGainBValdmd2.text=98 %");
    addRows("QLN424", "D1:RDRG:820001|cboDQMdmd1|1|D1:CDRG:820031|cboDQMdmd1.currentText=ON, "
                      "D1:RDRG:838002|cboADEQdmd1|0|D1:CDRG:830000|cboADEQdmd1.currentText=OFF");
    addRows("K3050", "D1:DMOD:99|cboDemodModedmd1|0|D1:DMOD:0|cboDemodModedmd1.shownText=PCM-FM, "
                     "D1:DMLS:PCM-FM,NEW D1:DMOD:0|cboDemodModedmd1|1||cboDemodModedmd1.shownText=PCM-FM, "
                     "D1:VFIR:7|cboVFBWdmd1|0|D1:VFIR:0|cboVFBWdmd1.shownText=0.5 MHz, "
                     "D1:VGN1:300|sldrAnalogGainAdmd1|Up|D1:VGN1:255|lblAnalogGainAValdmd1.text=255dB, "
                     "D1:ALBW:on|checkBoxAutoBWdmd1|Space|D1:ALBW:1|checkBoxAutoBWdmd1.standIn=");
    // Never read, then set
    addRows("K3050/silent", "U0:LAGC:0|doubleSpinBoxFREQch1|2300|R1:FREQ:2300.0|doubleSpinBoxFREQch1.text=2300.0, "
                            "U0:LAGC:0|cboIFBWch1|0|R1:IFBW:0|cboIFBWch1.shownText=1 MHz, "
                            "U0:LAGC:0|btnAGCZch1|click|R1:AGCZ:0|btnAGCZch1.text=OFF, "
                            "U0:LAGC:0|cboAFCch1|4|R1:AFC:4|sldrAFCMch1.visible=true|lblRLSTvalch1.text=--, "
                            "R1:AFC:4|sldrAFCMch1|Right|R1:AFCM:1|lblRLSTvalch1.text=1 KHz, "
                            "R1:ACFE:1|lineAntennaCFch1|-7|R1:ANCF:-7|lineAntennaCFch1.text=-7, "
                            "U0:LAGC:0|cboSLPAcmb1|0|C1:SLPA:0|progBarAGCAcmb1.maximum=2500, "
                            "U0:LAGC:0|btnCMBZ1cmb1|click|C1:CHZ1:0|btnCMBZ1cmb1.text=OFF, "
                            "U0:LAGC:0|cboInputSourcedmd1|0|U0:SDM1:1|cboInputSourcedmd1.shownText=RCV.1, "
                            "U0:LAGC:0|cboDemodModedmd1|0|D1:DMOD:0|cboDemodModedmd1.shownText=PCM-FM, "
                            "U0:LAGC:0|cboDQMdmd1|0|D1:DQMON:0|cboDQMdmd1.shownText=OFF, "
                            "U0:LAGC:0|cboVFBWdmd1|0|D1:VFIR:0|cboVFBWdmd1.shownText=0.5 MHz, "
                            "U0:LAGC:0|sldrAnalogGainAdmd2|Home|D2:VGN1:0|lblAnalogGainAValdmd2.text=0dB, "
                            "U0:LAGC:0|checkBoxAutoBWdmd2|Space|D2:ALBW:1|checkBoxAutoBWdmd2.checked=true|"
                            "checkBoxAutoBWdmd2.standIn=, "
                            "D2:DMOD:6|lineDataRateAdmd2|5M|D2:RATEA:5000000|lineDataRateAdmd2.text=5M");
    addRows("plain/silent", "U0:LAGC:0|cboAnalogPoldmd1|0|D1:VIDP:0|cboAnalogPoldmd1.shownText=INV, "
                            "U0:LAGC:0|cboVFBWdmd1|0|D1:VFBW:0|cboVFBWdmd1.shownText=0.5 MHz, "
                            "U0:LAGC:0|cboIFBWcmb1|0|C1:IFBW:0|cboIFBWcmb1.shownText=1 MHz");
    addRows("D2 alone", "U0:SDM2:C|cboInputSourcedmd1|3|U0:SDM2:A|cboInputSourcedmd1.currentText=AUX.1");
}

void FlowPanelsTest::neverRead()
{
    endBench(); // as it starts
    setUp("K3050/silent");
    QCOMPARE(bench().mistakes(
                 "doubleSpinBoxFREQch1.text=--|cboIFBWch1.currentIndex=-1|cboSLPAch1.shownText=|btnAGCFch1.text=--|"
                 "lineAntennaCFch1.text=--|checkBoxAntennaCFch1.standIn=--|checkBoxAntennaCFch1.checked=false|"
                 "sldrAFCMch1.value=0|lblRLSTvalch1.text=--|progBarSSLVch1.format=dBm|progBarAGCAch1.format=V|"
                 "lblSYNLmarkch1.text=--|btnAGCZcmb1.text=--|lblCMBstatuscmb1.text=--|lblCMBmodecmb1.text=--|"
                 "cboInputSourcedmd1.currentIndex=-1|cboDemodModedmd1.currentIndex=-1|cboDemodModedmd1.shownText=|"
                 "cboVFBWdmd1.count=2|cboVFBWdmd1.currentIndex=-1|lineDataRateAdmd1.text=--|lineDataRateBdmd1.text=--|"
                 "lblAnalogGainAValdmd1.text=--|sldrAnalogGainAdmd1.value=0|checkBoxAutoModIndexdmd1.standIn=--|"
                 "lblAnalogBWBValdmd1.text=--|lblAnalogAVoltagedmd1.text=--|lblFreqOffsetValdmd1.text=--|"
                 "lblPeakDevValdmd1.text=--"),
             QByteArray());
    for (const QByteArray entry : { "lineDataRateAdmd1", "doubleSpinBoxFREQch1" }) { // Return sends nothing
        const QByteArrayList warnings = PanelBench::warningsDuring([&] {
            widget(entry).setFocus();
            QCOMPARE(bench().sentBy([&] { QTest::keyClick(&widget(entry), Qt::Key_Return); }), kNothing);
        });
        QCOMPARE(warnings, kNothing);
        QCOMPARE(bench().mistakes(entry + ".text=--"), QByteArray());
    }
}

void FlowPanelsTest::reports_data()
{
    QTest::addColumn<QByteArrayList>("row"); // cards, reports, everything that they change
    addRows("K3050",
            "C1:CLCS:1|lblCMBstatuscmb1.styleSheet=<one>|lblCMBmodecmb1.text=Channel 1, "
            "C1:CLCS:2|lblCMBstatuscmb1.styleSheet=<one>|lblCMBmodecmb1.text=Channel 2, "
            "C1:CLCK:0|lblCMBstatuscmb1.styleSheet=<bad>|lblCMBstatuscmb1.text=Unlocked, "
            "C1:POLA:0 C1:AGCA:9000|cboPOLAcmb1.currentIndex=0|progBarAGCAcmb1.text=9 V|progBarAGCAcmb1.value=2500, "
            "C1:POLB:0 C1:AGCB:1234.5678|cboPOLBcmb1.currentIndex=0|progBarAGCBcmb1.text=1.23457 V|"
            "progBarAGCBcmb1.value=1234, C1:NAME:A&B|groupBoxCmbr1.title=A&&B, "
            "C1:CVMD:2 C1:CVMD:-1 C1:CHZ1:2 C1:SLPA:3 C1:POLA:x C1:IMPA:1 C2:CMOD:1 C1:CLCK:2 C1:CLCS:3 C1:AGCA:abc|"
            "btnCMBZ1cmb1.text=2|cboPOLAcmb1.currentIndex=-1|cboSLPAcmb1.currentIndex=-1|"
            "cboVideoModecmb1.currentIndex=-1, "
            "D@:DVBW:3500000 D@:RATEA:10500000 D@:RATEB:1234 D@:NAME:South D@:FOFF:-12.5 D@:PDEV:3500000 D@:VLV1:1234 "
            "D@:AFMS:1|lblAnalogBWAValdmd@.text=3.5 MHz|lblAnalogBWBValdmd@.text=3.5 MHz|lineDataRateAdmd@.text=10.5M|"
            "lineDataRateBdmd@.text=1.234K|groupBoxDmd@.title=South|lblFreqOffsetValdmd@.text=-12.5 KHz|"
            "lblPeakDevValdmd@.text=3.500 MHz|lblAnalogAVoltagedmd@.text=1.23 V|checkBoxAutoFMSweepdmd@.checked=true, "
            "D1:DVBW:900000|lblAnalogBWAValdmd1.text=900 KHz|lblAnalogBWBValdmd1.text=900 KHz, "
            "D1:DVBW:750|lblAnalogBWAValdmd1.text=750|lblAnalogBWBValdmd1.text=750, "
            "D1:RATEA:999|lineDataRateAdmd1.text=999, D1:RATEB:1000|lineDataRateBdmd1.text=1K, "
            "D@:DLCK:0|lblDemoddmd@.styleSheet=<bad>|lblDemodmarkdmd@.text=Lost, "
            "D@:DLCK:1|lblDemoddmd@.styleSheet=<good>|lblDemodmarkdmd@.text=Lock, "
            "D@:BLCK:0|lblBitSyncdmd@.styleSheet=<bad>|lblBitSyncmarkdmd@.text=Lost, "
            "D@:VFBW:0, D@:VFIR:0|cboVFBWdmd@.currentIndex=0, D@:VIDP:1|cboAnalogPoldmd@.currentIndex=1, "
            "D@:VFIR:0 D@:VFFL:100,200,300|cboVFBWdmd@.count=3|cboVFBWdmd@.currentIndex=0, "
            "D1:VFFL:100,200,300 D1:VFIR:2|cboVFBWdmd1.count=3|cboVFBWdmd1.currentIndex=2, "
            "D1:VFFL:100,200,300|cboVFBWdmd1.count=3, D1:VFFL:100|cboVFBWdmd1.count=1|cboVFBWdmd1.currentIndex=-1, "
            "D1:VGN1:12.5 D1:VGN2:300 D1:VGN1:-1|lblAnalogGainAValdmd1.text=-1dB|sldrAnalogGainAdmd1.value=0|"
            "lblAnalogGainBValdmd1.text=300dB|sldrAnalogGainBdmd1.value=255, "
            "D1:FOFF:1e308 D1:PDEV:1e308 D1:VLV1:-1e308 D1:DVBW:1e308 D1:RATEA:1e308|"
            "lblFreqOffsetValdmd1.text=1e308 KHz|lblPeakDevValdmd1.text=1e+302 MHz|"
            "lblAnalogAVoltagedmd1.text=-1e+305 V|lblAnalogBWAValdmd1.text=1e+302 MHz|"
            "lblAnalogBWBValdmd1.text=1e+302 MHz|lineDataRateAdmd1.text=1e308, "
            "D1:DMLS:AQPSK,PCM-FM|cboDemodModedmd1.count=2|cboDemodModedmd1.currentIndex=0, "
            "D1:DMLS:PCM-FM|cboDemodModedmd1.count=1|cboDemodModedmd1.currentIndex=-1, "
            "D1:VCFG:4 D1:BSDR:x U0:SDM1:9 U0:SDM1:x U0:SDM1:-2147483648 U0:SLAVE:3 D1:FOFF:abc "
            "D1:DLCK:2 D1:DFAQ:1 D4:BSDR:1|cboDerandomizerdmd1.currentIndex=-1|"
            "cboInputSourcedmd1.currentIndex=-1|cboOutputModedmd1.currentIndex=-1, U0:SLAVE:1 U0:SLAVE:0, "
            "U0:SLAVE:1|lblSlavedch1.visible=true|lblSlavedch2.visible=true|lblSlaveddmd1.visible=true|"
            "lblSlaveddmd2.visible=true|lblSlaveddmd3.visible=true, "
            "U0:SLAVE:2|lblSlaveddmd1.visible=true|lblSlaveddmd2.visible=true|lblSlaveddmd3.visible=true, "
            "R2:PLYB:1|cboPLYBch2.currentIndex=1|doubleSpinBoxFREQch2.enabled=false|progBarSSLVch2.visible=false|"
            "progBarAGCAch2.visible=false|progBarAGCBch2.visible=false");
    addRows("QLDX203",
            "R1:PLYB:1 R1:PLYB:0, "
            "R2:PLYB:1|cboPLYBch2.currentIndex=1|doubleSpinBoxFREQch2.enabled=false|progBarSSLVch2.visible=false|"
            "progBarAGCAch2.visible=false|progBarAGCBch2.visible=false|progBarAGCAcmb1.visible=false|"
            "progBarAGCBcmb1.visible=false");
    addRows("plain", "D1:VGN1:128|lblAnalogGainAValdmd1.text=50 %|sldrAnalogGainAdmd1.value=128, "
                     "D1:VGN1:12.5|lblAnalogGainAValdmd1.text=12.5|sldrAnalogGainAdmd1.value=0, "
                     "D1:VGN1:99999999|lblAnalogGainAValdmd1.text=39215685 %|sldrAnalogGainAdmd1.value=255, "
                     "D3:VGN2:254|lblAnalogGainBValdmd3.text=99 %|sldrAnalogGainBdmd3.value=254, D1:VFFL:100, "
                     "D1:VFIR:0, D1:VFBW:0|cboVFBWdmd1.currentIndex=0, "
                     "D1:VFLS:a,b|cboVFBWdmd1.count=2, D1:VFLS:a|cboVFBWdmd1.count=1|cboVFBWdmd1.currentIndex=-1, "
                     "C1:IFLS:a,b,c,d|cboIFBWcmb1.count=4, C1:IFLS:a|cboIFBWcmb1.count=1|cboIFBWcmb1.currentIndex=-1");
    addRows("K412W", "D3:VFBW:2|cboVFBWdmd3.currentIndex=2"); // hidden, but filled
    addRows("D2 alone", "U0:SDM2:B|cboInputSourcedmd1.currentIndex=4, U0:SDM1:B");
}

void FlowPanelsTest::rates_data()
{
    QTest::addColumn<QByteArrayList>("row"); // cards, mode, output, typed, sent, shown, warning
    addRows("K3050", "0|A|10.5M|10500000|10.5M, 0|A|10.5m|10500000|10.5M, 0|A|512k|512000|512K, 0|A|1.5K|1500|1.5K, "
                     "0|A|2,5M|2500000|2.5M, 0|A|999|999|999, 0|A|100|100|100, 0|A|5000K||5M, 4|A|25M|25000000|25M, "
                     "6|B|10.5M|10500000|10.5M, 99|A|1M||5M, 17|A|14M|14000000|14M");
    for (const QByteArray mode :
         { "0 22", "1 22", "2 20", "3 20", "4 40", "5 40", "6 20", "7 20", "8 40", "9 37", "10 40", "13 22" }) {
        const QByteArray code = mode.split(' ')[0], highest = mode.split(' ')[1];
        addRows("K3050", code + "|A|" + highest + "M|" + highest + "000000|" + highest + 'M');
        for (const QByteArray &typed : { highest + ".000001M", QByteArray("99.9") })
            addRows("K3050", code + "|A|" + typed + "||5M|Data Rate A: Valid Range: 100Hz to " + highest + "MHz");
    }
    for (const QByteArray typed : { "25M", "99", "-1M", "M", "fast", "nan" })
        addRows("K3050", "0|A|" + typed + "||5M|Data Rate A: Valid Range: 100Hz to 22MHz");
    addRows("K3050", "17|A|14.1M||5M|Data Rate A: Valid Range: 14MHz, 17|A|13.9M||5M|Data Rate A: Valid Range: 14MHz, "
                     "7|B|21M||5M|Data Rate B: Valid Range: 100Hz to 20MHz");
}

void FlowPanelsTest::rates()
{
    QFETCH(QByteArrayList, row);
    setUp(row[0]);
    bench().report({ "D1:DMOD:" + row[1] });
    const QByteArray field = "lineDataRate" + row[2] + "dmd1", setting = "D1:RATE" + row[2];
    const auto enter = [&] { bench().operate(field, row[3]); };
    const QByteArrayList sent = row[4].isEmpty() ? kNothing : QByteArrayList{ setting + ':' + row[4] };
    for (const QByteArray &shown : { QByteArray("5M"), row[5] }) {
        if (shown != row[5])
            bench().chassis().refuse(setting);
        QByteArrayList warnings;
        QCOMPARE(bench().sentBy([&] { warnings = PanelBench::warningsDuring(enter); }), sent);
        QCOMPARE(warnings, row.mid(6));
        QCOMPARE(bench().mistakes(field + ".text=" + shown + "|lblRFFQch1.focus=true"), QByteArray());
        QVERIFY(!bench().focusReturn().isRunning());
        bench().chassis().behave(setting);
    }
}

void FlowPanelsTest::halfTypedRates()
{
    setUp("K3050");
    for (const QByteArray place : { "A2", "B3" }) {
        const QByteArray field = "lineDataRate" + place.first(1) + "dmd" + place.last(1);
        const QByteArray setting = 'D' + place.last(1) + ":RATE" + place.first(1) + ':';
        bench().focusReturn().stop();
        PanelBench::type(widget(field), u"7M"_s);
        QVERIFY(bench().focusReturn().isRunning());
        bench().report({ setting + "9000000" });
        QCOMPARE(bench().mistakes(field + ".text=7M"), QByteArray());
        QCOMPARE(bench().sentBy([&] { QTest::keyClick(&widget(field), Qt::Key_Return); }),
                 QByteArrayList{ setting + "7000000" });

        PanelBench::type(widget(field), u"3"_s);
        QCOMPARE(bench().sentBy([this] { bench().window().RemoveControlFocusTmr_Tick(); }), kNothing);
        QCOMPARE(bench().mistakes(field + ".text=7M|lblRFFQch1.focus=true"), QByteArray());
        bench().report({ setting + "8000000" }); // no half-typed text any more
        QCOMPARE(bench().mistakes(field + ".text=8M"), QByteArray());
        const QByteArray other = place.startsWith('A') ? "B" : "A";
        PanelBench::type(widget(field), u"3"_s); // given up by the Return in the other field
        const auto enter = [&] { bench().operate("lineDataRate" + other + "dmd" + place.last(1), "4M"); };
        QCOMPARE(bench().sentBy(enter), QByteArrayList{ 'D' + place.last(1) + ":RATE" + other + ":4000000" });
        QCOMPARE(bench().mistakes(field + ".text=8M"), QByteArray());
    }
}

void FlowPanelsTest::focusOfWhatGoes_data()
{
    QTest::addColumn<QByteArrayList>(
        "row"); // cards, report that shows a control, its name, report that hides or disables it
    addRows("K3050", "D1:DMOD:6|lineDataRateBdmd1|D1:DMOD:4, D2:DMOD:4|checkBoxAutoSweepRangedmd2|D2:DMOD:0, "
                     "D3:VCFG:0|sldrAnalogGainAdmd3|D3:VCFG:1, R1:ACFE:1|lineAntennaCFch1|R1:ACFE:0, "
                     "R2:AFC:4|sldrAFCMch2|R2:AFC:0");
}

/// Further keys must not reach the next control.
void FlowPanelsTest::focusOfWhatGoes()
{
    QFETCH(QByteArrayList, row);
    setUp(row[0]);
    bench().report({ row[1] });
    widget(row[2]).setFocus();
    QCOMPARE(bench().mistakes(row[2] + ".focus=true"), QByteArray());
    bench().report({ row[3] });
    QCOMPARE(bench().mistakes("lblRFFQch1.focus=true"), QByteArray());
}

void FlowPanelsTest::modes_data()
{
    QTest::addColumn<QByteArrayList>("row"); // cards, mode, name, hidden, hidden with digital outputs, disabled
    addRows("K3050", "0|PCM-FM|freq rateB B demod|freq rateB A B demod|SweepRange StepSize ModIndex, "
                     "1|TRELLIS FM|freq rateB B|freq rateB A B|BW SweepRange StepSize, "
                     "2|PM|peak rateB B|peak rateB A B|ModIndex, 3|BPSK|peak rateB B|peak rateB A B|ModIndex, "
                     "4|QPSK|peak rateB|peak rateB A B|ModIndex, 5|UQPSK|peak rateB|peak rateB A B|ModIndex, "
                     "6|AQPSK|peak|peak A B|ModIndex, 7|AUQPSK|peak|peak A B|ModIndex, "
                     "8|SOQPSK|peak rateB B|peak rateB A B|ModIndex, "
                     "9|MULTI-H CPM|peak rateB B|peak rateB A B|BW SweepRange StepSize ModIndex, "
                     "10|OQPSK|peak rateB B|peak rateB A B|ModIndex, "
                     "13|FM|freq rateB B demod|freq rateB A B demod|SweepRange StepSize ModIndex, "
                     "17|NTSC-Video|freq rateB B demod|freq rateB B demod|SweepRange StepSize ModIndex, 99|PCM-FM|||");
    addRows("plain",
            "0|PCM-FM|freq rateB B demod bitSync|freq rateB A B demod bitSync|SweepRange StepSize ModIndex, "
            "8|SOQPSK|peak rateB B|peak rateB A B|ModIndex, "
            "13|FM|freq rateB B demod bitSync|freq rateB A B demod bitSync|SweepRange StepSize ModIndex, "
            "17|NTSC-Video|freq rateB B demod bitSync|freq rateB B demod bitSync|SweepRange StepSize ModIndex");
    addRows("QLN424", "0|PCM-FM|freq rateB B demod|freq rateB A B demod|SweepRange StepSize ModIndex");
}

void FlowPanelsTest::modes()
{
    static const QByteArrayList parts{ "freq lblFreqOffset lblFreqOffsetVal",
                                       "peak lblPeakDev lblPeakDevVal",
                                       "rateB lblDataRateB lineDataRateB",
                                       "A frameAnalogA",
                                       "B frameAnalogB",
                                       "demod lblDemod lblDemodmark",
                                       "bitSync lblBitSync lblBitSyncmark" };
    QFETCH(QByteArrayList, row);
    setUp(row[0]);
    for (const QByteArray place : { "D1:2", "D3:2", "D1:1", "D3:1", "D1:0", "D3:0" }) { // address and outputs
        const QByteArray suffix = "dmd" + place.mid(1, 1);
        bench().report({ place.first(3) + "DMOD:" + row[1], place.first(3) + "VCFG:" + place.last(1) });
        QByteArrayList hidden;
        for (const QByteArray &part : parts) {
            const QByteArrayList names = part.split(' ');
            if (widget(names[1] + suffix).isHidden())
                hidden += names[0];
            QCOMPARE(widget(names.last() + suffix).isHidden(), hidden.contains(names[0]));
        }
        QByteArrayList expected = (place.endsWith('1') ? row[4] : row[3]).split(' ');
        if (place.startsWith("D3") && !expected.contains("freq")) // the third never shows it
            expected.prepend("freq");
        QCOMPARE(hidden.join(' '), expected.join(' ').trimmed());
        QByteArrayList disabled{ "BW", "SweepRange", "StepSize", "ModIndex" };
        disabled.removeIf([&](const QByteArray &box) { return widget("checkBoxAuto" + box + suffix).isEnabled(); });
        QCOMPARE(disabled.join(' '), row[5]);
        QCOMPARE(bench().mistakes("cboDemodMode" + suffix + ".currentText=" + row[2]), QByteArray());
    }
}

void FlowPanelsTest::families_data()
{
    QTest::addColumn<QByteArrayList>("row"); // cards, panels, hidden of combiner and demodulators in mode AQPSK
    const QByteArray noAgc = "lblCMBZ1 lblCMBZ2 btnCMBZ1 btnCMBZ2 lblVideoMode cboVideoMode lblAGCZ btnAGCZ lblAGCAP "
                             "cboPOLA lblAGCAS cboSLPA lblAGCBP cboPOLB lblAGCBS cboSLPB lblAGCA progBarAGCA lblAGCB "
                             "progBarAGCB";
    const QByteArray reduced =
        "lblSlaved lblChanDemod lblAnalogBWA lblAnalogBWAVal lblInputSource cboInputSource lblOutputMode cboOutputMode "
        "frameAutoSettings lblDQM cboDQM lblAE cboADEQ btnAdvanced lblAnalogALevel lblAnalogAVoltage lblDataRateA "
        "lineDataRateA lblDerandomizer cboDerandomizer frameOffsetPeak";
    const QByteArray full =
        "lblSlaved lblChanDemod checkBoxAutoFMSweep lblAnalogPol cboAnalogPol lblPeakDev lblPeakDevVal";
    for (const char *cards : { "plain", "QLN412W" }) // the kind contains K412W, not the model
        addRows(cards, "Cmbr1 Dmd1 Dmd2 Dmd3|" + noAgc + '|' + reduced);
    addRows("QLN424", "Cmbr1 Dmd1 Dmd2 Dmd3|" + noAgc + " lblIFBW cboIFBW|" + full + " lblVFBW cboVFBW");
    addRows("K412W", "Cmbr1|" + noAgc + '|' + reduced + " lblVFBW cboVFBW lblAnalogPol cboAnalogPol");
    addRows("QLDX203", "Rcvr1 Rcvr2 Cmbr1 Dmd1 Dmd2 Dmd3||" + reduced);
    for (const char *cards : { "QLDX204", "QLDX206", "QLDX208" })
        addRows(cards, "Cmbr1 Dmd1 Dmd2 Dmd3||" + reduced);
    addRows("K3050", "Rcvr1 Rcvr2 Cmbr1 Dmd1 Dmd2 Dmd3|lblIFBW cboIFBW|" + full + " lblAnalogBWA lblAnalogBWAVal");
    addRows("both", "Cmbr1 Dmd1 Dmd2 Dmd3|lblIFBW cboIFBW|" + full + " lblAnalogBWA lblAnalogBWAVal");
}

/// Names without suffix of the hidden parts of a panel, except those in a hidden frame.
QByteArray FlowPanelsTest::hiddenIn(const QByteArray &panel, const QByteArray &suffix)
{
    const auto isHidden = [](const QWidget *part) {
        return part->isHidden() && part->testAttribute(Qt::WA_WState_ExplicitShowHide);
    };
    QByteArrayList names;
    for (const QWidget *part : widget(panel).findChildren<QWidget *>()) {
        const QByteArray name = part->objectName().toLatin1();
        if (name.endsWith(suffix) && isHidden(part) && !isHidden(part->parentWidget()))
            names += name.chopped(suffix.size());
    }
    return sorted(names);
}

void FlowPanelsTest::families()
{
    QFETCH(QByteArrayList, row);
    setUp(row[0]);
    QByteArrayList panels{ "Rcvr1", "Rcvr2", "Cmbr1", "Dmd1", "Dmd2", "Dmd3" };
    panels.removeIf([this](const QByteArray &name) { return !widget("groupBox" + name).isVisible(); });
    QCOMPARE(panels.join(' '), row[1]);
    QCOMPARE(hiddenIn("groupBoxCmbr1", "cmb1"), sorted(row[2].split(' ')));
    for (const QByteArray n : { "1", "2" })
        QCOMPARE(hiddenIn("groupBoxDmd" + n, "dmd" + n), sorted(row[3].split(' ')));
}

QTEST_MAIN(FlowPanelsTest)
#include "tst_flow_panels.moc"
