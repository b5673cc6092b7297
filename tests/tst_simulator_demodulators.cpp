#include "support/SimHarness.h"

#include <QTest>

#include <QtEndian>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// What the head asks at the start, and the status values.
const QByteArray kCombiner =
    "NAME CVMD CMOD IFLS IFBW CHZC CHZ1 CHZ2 SLPA SLPB POLA POLB IMPA IMPB ABAL CAMF CAMP CLCK "
    "CLCS AGCA AGCB CH1IN CH1OUT CH2IN CH2OUT TP2 TP4";
const QByteArray kDemodulator =
    "NAME DMLS IFFL VFFL VFLS DMOD VCFG BSDR ALBW ASRG ASRT TMID AFMS VGN1 VGN2 DVBW RATEA RATEB VFBW CPT0 CPT1 CPT2 "
    "CPT3 CPT4 CPT5 CPT6 CPT7 VIDP BSDP BSCP BSCL BSIL VCP1 VCP2 VLPF BSIC DFAQ DFIR VFIR VFIR2 DAFC LBWB LBWC SWRG "
    "SWRT TRKD VDE1 VDE2 DDCF DSDM VAFL VAF2 BTEN BTTL REST BTMO BTER BERG BTCB BTCE BERC BTLK BTLS BETI BAVL LDPCR "
    "LDPCB LDPCD LDPCS FBPW WPFM FSPT FSLN THRS FSLK SCBE SRT0 B0LB FCS0 MFS0 DC0E AG0E CF0E MF0E SEI0 HI0Z BS0L AFIR "
    "AVF1 AVF2 AVF3 CSFQ CSDR CSLB CSLC DLCK BLCK FOFF PDEV VLV1 MSE0 SLAVE";

/// How near the first axis of an eye block comes to the middle where symbols are decided.
double opening(const QByteArray &frame)
{
    const QByteArray bytes = QByteArray::fromHex(frame.mid(4));
    double nearest = 1;
    for (qsizetype at = 0; at + 4 <= bytes.size(); at += qsizetype(4) * 16)
        nearest = std::min(nearest, qAbs(qFromBigEndian<qint16>(bytes.constData() + at) / 32768.0));
    return nearest;
}

} // namespace

/// Demodulators and combiner of the shipped simulator.
class SimulatorDemodulatorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startUp_data();
    void startUp();
    void conversations_data();
    void conversations();
    void preset();
    void eyeLink();
};

void SimulatorDemodulatorsTest::startUp_data()
{
    QTest::addColumn<QByteArray>("demodulators");
    QTest::newRow("demod-k3050") << "D1 D2 D3"_ba;
    QTest::newRow("qln424") << "D1 D2 D3"_ba;
    QTest::newRow("k412w") << "D1 D2"_ba;
    QTest::newRow("qldx") << "D1 D2"_ba;
}

void SimulatorDemodulatorsTest::startUp()
{
    QFETCH(QByteArray, demodulators);
    const QString family = QString::fromLatin1(QTest::currentDataTag());
    SimHarness sim({ u"--family"_s, family, u"--report-hz=25"_s });
    const auto steps = [](const QByteArray &address, QByteArray queries, const QByteArray &answer) {
        return address + ':' + queries.replace(" ", " > " + answer + ';' + address + ':') + " > " + answer;
    };
    QCOMPARE(sim.talk(steps("C1", kCombiner, ":.+")), ""_ba);
    for (const QByteArray address : { "D1", "D2", "D3" }) {
        const bool fitted = demodulators.contains(address);
        const bool older = family.endsWith(u"k3050");
        QCOMPARE(sim.talk(steps(address, kDemodulator, fitted ? ":.+" : "")), ""_ba);
        QCOMPARE(sim.talk(steps(address, "DQMON DQMFS DEQE", older ? ":.+" : "")), ""_ba);
        QCOMPARE(sim.talk("U0:SDM" + address.last(1) + " > :[123ABC]"), ""_ba);
        for (const QByteArray number : { "82", "84", "85", "86", "87", "83", "39", "3A", "3B", "3b" })
            QCOMPARE(sim.talk(address + ":RDRG:" + number + " > " + (fitted ? ".*:" + number + "[0-9a-f]{4}" : "NAK")),
                     ""_ba);
    }
    QCOMPARE(sim.talk("C1:CLCK >> :1; D1:DLCK >> :1; D1:BLCK >> :1; U0:TRON:ON > ACK.*"), ""_ba);
    const QByteArray reports = (sim.framesUntil("C1:TP4") + sim.framesUntil("C1:TP4")).join(' ');
    for (const char *status : { "D1:DLCK:1 D1:BLCK:1 D1:FOFF:", "D2:PDEV:", " D2:BTLS:", "C1:CLCK:1 C1:CLCS:" })
        QVERIFY2(reports.contains(status), status);
}

void SimulatorDemodulatorsTest::conversations_data()
{
    QTest::addColumn<QByteArray>("steps");
    const auto row = [](const char *tag, const char *steps) { QTest::newRow(tag) << QByteArray(steps); };
    row("ranges",
        "D1:TMID:0 > ACK; D1:TMID:0.29 > NAK; D1:TMID:0.40 > ACK; D1:LBWB:0.00099 > NAK; D1:LBWC:1.0 > ACK;"
        "D1:SWRG:501 > NAK; D1:SWRT:20000000 > ACK; D1:DFIR:-1 > ACK; D1:DFIR:4 > NAK; D1:VFIR:4 > ACK;"
        "D1:CPT0:4 > NAK; D1:CPT7:7 > ACK; D1:DSDM:4 > NAK; D1:DLCK:1 > NAK; D1:VGN1:256 > NAK;"
        "D1:RATEA:22000000 > ACK; D1:RATEA:22000001 > NAK; D1:RATEA:99 > NAK; D1:RATEB:25000000 > NAK;"
        "D1:DMOD:4 > ACK; D1:RATEA:40000000 > ACK; D1:DMOD:11 > NAK; D3:RATEA:14100000 > NAK; D1:IFFL > :40000000,.*;"
        "D1:DMOD:0 > ACK.*; D1:RATEA > .*:22000000; D1:RATEA:1000000 > .*ACK.*; D1:IFFL > .*:5000000,.*;"
        "D1:VFFL > .*:2500000,.*; D1:DDCF:2 > .*ACK.*; D1:IFFL > .*:625000,.*");
    row("registers",
        "D1:CDRG:820003 > ACK; D1:DQMON:1 > ACK; D1:RDRG:82 > D1:RDRG:820033; D1:DQMON:0 > ACK;"
        "D1:RDRG:82 > D1:RDRG:820003; D1:CDRG:820010 > ACK; D1:DQMON > :0; D1:DEQE:1 > ACK;"
        "D1:RDRG:83 > D1:RDRG:834000; D1:CDRG:830001 > ACK; D1:DEQE > :1; D1:DQMFS:4001 > NAK; D1:DQMFS:4000 > ACK;"
        "D1:RDRG:84 > D1:RDRG:844000; D1:CDRG:85FFFE > ACK; D1:CDRG:85 > NAK; D1:RDRG:85 > D1:RDRG:85fffe;"
        "D1:CDRG:84007f > NAK; D1:CDRG:3A0001 > NAK; D1:CDRG:85xyzw > NAK; D1:RDRG:77 > NAK; D1:RDRG >; D1:CDRG >;"
        "D1:85 >; D1:85:0001 > NAK");
    row("sources", "U0:SDM1:A > ACK; D1:DLCK >> :0; U0:SDM1:4 > NAK; U0:SDM1:3 > ACK; D1:DLCK >> :1; C1:CMOD:2 > ACK;"
                   "D1:DLCK >> :0; C1:CMOD:0 > ACK; D1:DLCK >> :1; U0:SLAVE:2 > ACK; D3:SLAVE > :2; C1:SLAVE > :2");
    row("lock",
        "D1:BLCK >> :1; D1:PDEV > :17.....; D1:VLV1 > :20[2-6].; D1:FOFF > :-?[0-6][.].; D1:FSLK > :1;"
        "$signal 2250.5 -130 > ok; D1:DLCK >> :0; D1:BLCK > :0; D1:FSLK > :0; $signal 2250.5 -58 > ok; D1:BLCK >> :1;"
        "D1:RATEA:5100000 > ACK; D1:DLCK >> :0; D1:RATEA:5010000 > ACK; D1:DLCK >> :1; D1:DMOD:1 > ACK; D1:DLCK >> :0;"
        "D2:BLCK >> :1; R2:FREQ:2260.5 > ACK; D2:DLCK >> :0; D2:PDEV > :0");
    row("bit errors",
        "D1:BLCK >> :1; D1:BTEN:1 > ACK; D1:BTLK >> :1; D1:BETI >> :1; D1:BTCB > :[0-9]{7}; D1:BTCE > :0;"
        "R1:IFBW:3 > ACK; $signal 2250.5 -94 > ok; D1:BTCE >> :[1-9].*; D1:BTER >> :.*e-.*; $signal 2250.5 -130 > ok;"
        "D1:BTLK >> :0; D1:BTLS > :[1-9].*; D1:REST:1 > ACK; D1:REST > :0; D1:BTLS > :0; D1:BTCB > :0");
    row("combiner",
        "C1:CLCS >> :0; $signal 2275.5 -130 > ok; C1:CLCS >> :1; C1:CLCK > :1; $signal 2250.5 -130 > ok;"
        "C1:CLCK >> :0; C1:CLCS > :0; $signal 2275.5 -60 > ok; C1:CLCS >> :2; C1:CLCK > :1; C1:IFBW:7 > NAK;"
        "C1:AGCA >> :(2[5-9]|3[0-2])..; C1:POLA:1 > ACK; C1:AGCA > :-....; C1:CH2OUT > :(2[.][5-9]|3[.][0-2]).;"
        "C1:CHZ2:1 > ACK; C1:CH2OUT > :-?0[.]..; C1:CH2IN > :[23][.].*; C1:CHZC:1 > ACK; C1:TP4 > :-?0[.]..");
}

void SimulatorDemodulatorsTest::conversations()
{
    QFETCH(QByteArray, steps);
    SimHarness sim;
    QCOMPARE(sim.talk(steps), ""_ba);
}

void SimulatorDemodulatorsTest::preset()
{
    SimHarness sim({ u"--family=qln424"_s });
    QCOMPARE(sim.talk("U0:STORE:p > ACK; C1:CHZ1:1 > ACK; U0:SDM2:B > ACK; $set D1 85 0001 > ok; D2:DMOD:3 > .*ACK;"
                      "D1:DQMON:1 > NAK"),
             ""_ba);
    sim.write("D2:RATEA:1000000");
    QCOMPARE(sim.framesUntil("D2:DDCF").join(' '), "ACK D2:DDCF:1"_ba);
    sim.write("U0:RESTORE:p");
    QCOMPARE(sim.framesUntil("U0:PDONE:1").join(' '), "ACK U0:PDONE:0 U0:SDM2:1 C1:CHZ1:0 D1:RDRG:85fe6b D2:DMOD:8 "
                                                      "D2:RATEA:6000000 D2:DDCF:0 U0:PDONE:1"_ba);
    QCOMPARE(sim.talk("D1:RDRG:85 > D1:RDRG:85fe6b; D2:RATEA > :6000000; C1:CHZ1 > :0"), ""_ba);
}

void SimulatorDemodulatorsTest::eyeLink()
{
    SimHarness sim;
    QCOMPARE(sim.talk("D2:BLCK >> :1"), ""_ba);
    QVERIFY(sim.close() && sim.open("ttyUSB7", "eye"));
    QVERIFY2(!sim.sees(POLLIN, 200), "nobody asked for it yet");
    const auto framesWith = [&sim](const QByteArray &output, int ms) {
        QByteArray bytes;
        sim.order("set D2 DSDM " + output);
        for (const QDeadlineTimer end(ms); !end.hasExpired();)
            bytes += sim.readBytes(100);
        return bytes.split('\x04').sliced(0, bytes.count('\x04'));
    };
    const QString block = u"\\x02..2[0-9A-F]{2048}"_s;
    for (const auto &[output, form] :
         { std::pair{ "1", block }, { "2", block }, { "3", u"\\x02..2..[0-9A-F]{10}"_s } }) {
        framesWith("0", 300);
        QVERIFY2(!sim.sees(POLLIN, 200), "it ends when asked to, and nothing has piled up");
        const QByteArrayList frames = framesWith(output, 2000);
        QVERIFY(!frames.isEmpty());
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(form));
        for (const QByteArray &frame : frames)
            QVERIFY2(pattern.match(QString::fromLatin1(frame)).hasMatch(), frame.left(20));
        const auto bytes = frames.size() * (frames.first().size() + 1);
        QVERIFY2(bytes > 40'000 && bytes < 250'000, QByteArray::number(bytes));
        QVERIFY(frames.last() != frames.first() && (form != block || opening(frames.last()) > 0.3));
    }
    QCOMPARE(sim.order("signal 2275.5 -130"), "ok"_ba);
    QVERIFY(opening(framesWith("2", 1000).last()) < 0.15);
}

QTEST_GUILESS_MAIN(SimulatorDemodulatorsTest)
#include "tst_simulator_demodulators.moc"
