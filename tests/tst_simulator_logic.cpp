#include "simulator/console/Script.h"
#include "simulator/radio/DemodulationMode.h"
#include "simulator/radio/EyeSampler.h"
#include "support/SimBench.h"

#include <QTemporaryFile>
#include <QTest>

#include <QtEndian>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// What makes the head create a unit, looked for in the whole card list.
const QList<std::pair<QByteArray, QString>> kUnitRules{
    { "R1", u"(?=.*0103).*0121"_s },
    { "R2", u"(?=.*0104).*0122"_s },
    { "C1", u".*010[59]"_s },
    { "D1", u"(?=.*K30[56]0).*DEMOD1|(?!.*K30[56]0).*(0101 K412|0101 K414V|0101 K9V|0107 K9V)"_s },
    { "D2", u"(?=.*K30[56]0).*DEMOD2|(?!.*K30[56]0).*(0102 K412|0102 K414V|0102 K9V|0108 K9V)"_s },
    { "D3", u"(?=.*K30[56]0).*DEMOD3|(?!.*K30[56]0).*(0109 K412|0109 K414V|0109 K424V)"_s },
    { "T1", u".*0110"_s },
    { "spectral or self-test", u".*(0170|0136)"_s },
};

/// What the head queries at the start and shows as status, after the units that answer it.
const QByteArray kQueries =
    "R1,R2:NAME ACFE ANCF CAMP CAMF AMIP FLST CIFS FREQ IFLS IFBW AGCF AGCZ SLPA SLPB POLA POLB IMPA IMPB AGCT AFC "
    "AFCM PLYB AIFB CINP CIF1 CATN MANG SYNL SSLV MAFL RLST AGCA AGCB;"
    "C1:NAME CVMD CMOD IFLS IFBW CHZC CHZ1 CHZ2 SLPA SLPB POLA POLB IMPA IMPB ABAL CAMF CAMP CLCK CLCS AGCA AGCB "
    "CH1IN CH1OUT CH2IN CH2OUT TP2 TP4;"
    "D1,D2,D3:NAME DMLS IFFL VFFL VFLS DMOD VCFG BSDR ALBW ASRG ASRT TMID AFMS VGN1 VGN2 DVBW RATEA RATEB VFBW CPT0 "
    "CPT1 CPT2 CPT3 CPT4 CPT5 CPT6 CPT7 VIDP BSDP BSCP BSCL BSIL VCP1 VCP2 VLPF BSIC DFAQ DFIR VFIR VFIR2 DAFC LBWB "
    "LBWC SWRG SWRT TRKD VDE1 VDE2 DDCF DSDM VAFL VAF2 BTEN BTTL REST BTMO BTER BERG BTCB BTCE BERC BTLK BTLS BETI "
    "BAVL LDPCR LDPCB LDPCD LDPCS FBPW WPFM FSPT FSLN THRS FSLK SCBE SRT0 B0LB FCS0 MFS0 DC0E AG0E CF0E MF0E SEI0 "
    "HI0Z BS0L AFIR AVF1 AVF2 AVF3 CSFQ CSDR CSLB CSLC DLCK BLCK FOFF PDEV VLV1 MSE0 SLAVE;"
    "older D1,older D2,older D3:DQMON DQMFS DEQE;"
    "T1:NAME TFREQ TGAINCH1 TGAINCH2 TGAINCMB SLAVE;"
    "TM1-0,TM2-0:ADDR MASK GWAY PORT IRIG TSRC NTPS TIME PHYS IEBS IEBR IREV CHAN NAME;"
    "TM1-1,TM1-3,TM2-1,TM1-4:NAME FLOW PROT RMIP PORT HEAD BUFF MTUS RBUF INPZ ID10 SPRT ENDN STAT RATE RRAT TXRT TXBT "
    "RXBT RETX DROP OOPS;"
    "S:SP1,S:SP2,S:SP3,S:SP4:SPAN DATA;"
    "S:S1:CFRQ CATT_1 CATT_2 SCD1 SCD2 FMDV UNBL SCG1 SCG2 PNGN CBND CERR SCR1 SCR2 PRNR APNR SCF1 SCF2 BSINT CMOD "
    "C1EN C2EN PCEN IFSL CPRN CDLE CREF CPWR CEXT CDSC DDSF NAME SLAVE";

/// How near the first axis of an eye block comes to the middle where symbols are decided.
double opening(const QByteArray &block)
{
    double nearest = 1;
    for (qsizetype at = 0; at + 4 <= block.size(); at += qsizetype(4) * sim::EyeSampler::kSamplesPerSymbol)
        nearest = std::min(nearest, qAbs(qFromBigEndian<qint16>(block.constData() + at) / 32768.0));
    return nearest;
}

} // namespace

/// The parts of the simulator that need neither links nor real time.
class SimulatorLogicTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void families_data();
    void families();
    void conversations_data();
    void conversations();
    void reports();
    void presets();
    void diversity();
    void spectrum();
    void samples();
    void faults();
    void script();
};

void SimulatorLogicTest::families_data()
{
    QTest::addColumn<QByteArray>("made"); // by the head
    QTest::addColumn<QByteArray>("furtherUnits");
    const auto row = [](const char *family, const char *made, const char *further = "") {
        QTest::newRow(family) << QByteArray(made) << QByteArray(further);
    };
    row("demod-k3050", "R1 R2 C1 D1 D2 D3 T1", "TM1-0 TM1-1 TM1-3 S:SP1 S:SP2 S:SP3 S:S1");
    row("qln424", "R1 R2 C1 D1 D2 D3", "TM1-0 TM1-1 TM1-3");
    row("k412w", "R1 R2 C1 D1 D2");
    row("qldx", "R1 R2 C1 D1 D2");
    row("one-receiver", "R1");
    row("gaps", "R2 D2", "TM2-0 TM2-1");
    row("empty", "");
}

void SimulatorLogicTest::families()
{
    QFETCH(QByteArray, made);
    QFETCH(QByteArray, furtherUnits);
    const QString family = QString::fromLatin1(QTest::currentDataTag());
    SimBench bench(family);
    const QString cards = QString::fromLatin1(bench.ask("U0:CLST"));
    QByteArrayList byRule;
    for (const auto &[unit, rule] : kUnitRules) {
        if (QRegularExpression(u"^(%1)"_s.arg(rule)).match(cards).hasMatch())
            byRule.append(unit);
    }
    QCOMPARE(byRule.join(' '), made);
    QByteArrayList fitted = (made + ' ' + furtherUnits).split(' ');
    if (family.endsWith(u"k3050"))
        fitted += { "older D1", "older D2", "older D3" };
    for (const QByteArray &line : kQueries.split(';')) {
        const qsizetype colon = line.lastIndexOf(':');
        for (const QByteArray &unit : line.first(colon).split(',')) {
            const QByteArray address = unit.sliced(unit.lastIndexOf(' ') + 1);
            for (const QByteArray &mnemonic : line.sliced(colon + 1).split(' ')) {
                const QByteArray query = address + ':' + mnemonic;
                QCOMPARE(bench.talk(query + (fitted.contains(unit) ? " > :.+" : " > ")), ""_ba);
            }
        }
    }
    for (const QByteArray number : { "82", "84", "85", "86", "87", "83", "39", "3A", "3B", "3b" })
        QCOMPARE(
            bench.talk("D2:RDRG:" + number + (fitted.contains("D2") ? " > .*:" + number + "[0-9a-f]{4}" : " > NAK")),
            ""_ba);
}

void SimulatorLogicTest::conversations_data()
{
    QTest::addColumn<QByteArray>("steps");
    QTest::addColumn<QString>("family");
    const auto row = [](const char *tag, const char *steps, const QString &family = u"demod-k3050"_s) {
        QTest::newRow(tag) << QByteArray(steps) << family;
    };
    row("no answer", "U0:NOSUCH > ; X9:FREQ > ; D4:DMOD > ; no colon > ; U0:STORE > ; U0:TLST > :TM1 2.1");
    row("refused",
        "U0:NOSUCH:1 > NAK; X9:FREQ:2250.5 > NAK; U0:RESTORE:none > NAK; U0:TLST:1 > NAK; U0:TLST > :TM1 2.1;"
        "U0:STORE:two words > NAK; U0:PLIST > :; U0:TRON:YES > NAK; U0:TRON > :OFF; R2:SSLV:-10 > NAK");
    row("system", "U0:SLAVE:1 > ACK; R2:SLAVE > :1; U0:SLAVE:3 > NAK; U0:SLAVE > :1; U0:TIME:23:10:00 > ACK;"
                  "U0:TIME:12:61:00 > NAK; U0:TIME > :23:1.*; U0:NAME:Van: north > ACK; U0:NAME > :Van: north");
    row("ranges", "R1:FREQ:2395.5 > ACK; R1:FREQ:2395.6 > NAK; R1:FREQ > :2395.5; R1:FREQ:1850.4 > NAK;"
                  "R1:FREQ:1850.3 > ACK; R1:FREQ:1435.4 > NAK; R1:FREQ:1435.5 > ACK; R1:FREQ > :1435.5");
    row("numbers", "R1:FREQ:2e3 > NAK; R1:FREQ:nan > NAK; R1:FREQ: > NAK; R1:IFBW:-1 > NAK; R1:IFBW:7 > NAK;"
                   "R1:IFBW > :4; R1:IFBW:6 > ACK; R1:IFBW > :6; R2:AFCM:-201 > NAK; R2:AFCM:-200 > ACK;"
                   "R2:AFCM > :-200; R2:AFC:5 > NAK; R2:AGCF:2 > NAK; R2:IFGCM:17 x > ACK; R2:IFGCM > :17 x");
    row("tuning", "$signal 2300.5 -50 > ok; R1:FREQ:2300.5 > ACK; R1:SYNL > :0; R1:SYNL >> :1; R1:SSLV >> :-50.0;"
                  "R1:MAFL >> :1; R2:SSLV > :-[67].*; R2:FREQ:2390.5 > ACK; R2:SYNL >> :1; R2:SSLV >> :-(99|100).*;"
                  "R2:MAFL > :0; R2:IFBW:0 > ACK; R2:SSLV >> :-11[234].*");
    row("AGC and AFC",
        "$signal 2300.5 -50 > ok; R1:FREQ:2300.5 > ACK; R1:AGCA >> :3[45]..; R1:AGCB >> :(69|70)..;"
        "R1:POLA:1 > ACK; R1:AGCA > :-3[45]..; R1:ANCF:-20 > ACK; R1:ACFE:1 > ACK; R1:SSLV > :-70.0;"
        "R1:AGCZ:1 > ACK; R1:SSLV > :0.0; R1:AGCF:1 > ACK; $signal 2300.5 -30 > ok; R1:SSLV >> :20.0;"
        "R1:AGCB > :..?; R1:AGCF:0 > ACK; R1:AGCB >> :(19|20)..; $signal 2310.1 -50 > ok; R1:FREQ:2310.0 > ACK;"
        "R1:RLST >> :100; R1:AFCM:-55 > ACK; R1:AFC:4 > ACK; R1:RLST >> :-55; R1:MAFL > :0");
    row("demodulator ranges",
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
    row("demodulator lock",
        "D1:BLCK >> :1; D1:PDEV > :17.....; D1:VLV1 > :20[2-6].; D1:FOFF > :-?[0-6][.].; D1:FSLK > :1;"
        "$signal 2250.5 -130 > ok; D1:DLCK >> :0; D1:BLCK > :0; D1:FSLK > :0; $signal 2250.5 -58 > ok; D1:BLCK >> :1;"
        "D1:RATEA:5100000 > ACK; D1:DLCK >> :0; D1:RATEA:5010000 > ACK; D1:DLCK >> :1; D1:DMOD:1 > ACK; D1:DLCK >> :0;"
        "D2:BLCK >> :1; R2:FREQ:2260.5 > ACK; D2:DLCK >> :0; D2:PDEV > :0");
    row("sweep range", "D1:SWRG:1 > ACK; R1:FREQ:2250.6 > ACK; D1:DLCK >> :0; D1:DLCK >> :1; D2:SWRG:50 > ACK;"
                       "R2:FREQ:2275.6 > ACK; D2:DLCK >> :0; R2:SYNL >> :1; R2:AFC:4 > ACK; D2:DLCK > :0; D2:SWRG:150 "
                       "> ACK; D2:DLCK >> :1");
    row("bit errors", "D1:BLCK >> :1; D1:BTEN:1 > ACK; D1:BTLK >> :1; D1:BETI >> :1; D1:BTCB > :[0-9]{7}; D1:BTCE > :0;"
                      "$signal 2250.5 -130 > ok; D1:BTLK >> :0; $signal 2250.5 -58 > ok; D1:BTLK >> :1; D1:BTLS > :1;"
                      "R1:IFBW:3 > ACK; $signal 2250.5 -94 > ok; D1:BTCE >> :[1-9].*; D1:BTER >> :.*e-.*;"
                      "D1:REST:1 > ACK; D1:REST > :0; D1:BTLS > :0; D1:BTCB > :0");
    row("combiner",
        "C1:CLCS >> :0; $signal 2275.5 -130 > ok; C1:CLCS >> :1; C1:CLCK > :1; $signal 2250.5 -130 > ok;"
        "C1:CLCK >> :0; C1:CLCS > :0; $signal 2275.5 -60 > ok; C1:CLCS >> :2; C1:CLCK > :1; C1:IFBW:7 > NAK;"
        "C1:AGCA >> :(2[5-9]|3[0-2])..; C1:POLA:1 > ACK; C1:AGCA > :-....; C1:CH2OUT > :(2[.][5-9]|3[.][0-2]).;"
        "C1:CHZ2:1 > ACK; C1:CH2OUT > :-?0[.]..; C1:CH2IN > :[23][.].*; C1:CHZC:1 > ACK; C1:TP4 > :-?0[.]..");
    row("tape", "T1:TFREQ:2200000 > ACK; T1:TFREQ > :2200000; T1:TFREQ:2.2 > NAK; T1:TFREQ:9999 > NAK;"
                "T1:TGAINCH2:256 > NAK; T1:TGAINCMB:12.5 > NAK; T1:TGAINCH1:255 > ACK; R1:FREQ:2390.5 > ACK;"
                "R1:CARL >> :0; R1:PLYB:1 > ACK; R1:SSLV >> :-40.0; R1:CARL > :1; T1:TGAINCH1:26 > ACK;"
                "R1:SSLV >> :-59.8; R2:PLYB:1 > ACK; R2:SSLV >> :-45.2; R1:PLYB:0 > ACK; R1:CARL >> :0");
    row("network",
        "TM1-0:PHYS >> :Up; TM1-0:ADDR:10.0.0.256 > NAK; TM1-0:ADDR:10.0.1 > NAK; TM1-0:MASK:a.b.c.d > NAK;"
        "TM1-0:GWAY:1..2.3 > NAK; TM1-0:NTPS:0.0.0.0 > ACK; TM1-0:PORT:1499 > NAK; TM1-0:PORT:65535 > ACK;"
        "TM1-0:ADDR:255.255.255.255 > ACK; TM1-0:ADDR > :255.255.255.255; TM1-0:PHYS > :Up; TM1-0:COMT:0 > NAK;"
        "TM1-0:COMT:1 > ACK; TM1-0:PHYS > :Down; TM1-1:STAT >> :No Link; TM1-0:PHYS >> :Up; TM1-0:GWAY:10.0.0.9 > ACK;"
        "$power-cycle 0 > ok; TM1-0:GWAY > :192.168.7.1; TM1-0:ADDR > :255.255.255.255; TM1-0:IRIG > :Searching;"
        "TM1-0:IRIG >> :Locked; TM1-0:TIME > :123:12:00:..");
    row("streams",
        "TM1-1:MTUS:399 > NAK; TM1-1:MTUS:400 > ACK; TM1-1:RBUF:257 > NAK; TM1-1:PROT:3 > NAK; TM1-1:PORT:65536 > NAK;"
        "TM1-1:RMIP:1.2.3 > NAK; TM1-1:STAT >> :Transmitting; TM1-1:RATE > :5000000; TM1-1:TXRT > :5376344;"
        "TM1-1:DROP >> :[1-9].*; TM1-1:OOPS >> :[1-9].*; TM1-1:RETX > :0; TM1-1:TXBT > :[1-9].{5,};"
        "TM1-2:STAT > :No Flow; TM1-2:TXBT > :0; TM1-2:RRAT > :0; TM1-2:FLOW:1 > ACK; TM1-2:STAT >> :Ok;"
        "TM1-2:RETX >> :[1-9].*; TM1-2:RXBT > :[1-9].*; TM1-2:DROP > :0; TM1-1:FLOW:0 > ACK; TM1-1:RATE >> :0;"
        "D2:RATEA:2000000 > .*ACK.*; TM1-2:RATE >> :2000000; TM1-0:IEBS > :[1-9].*; TM1-0:IEBR > :[1-9].*");
    row("late card", "$set U0 TLST , > ok; TM1-0:ADDR >>; TM1-2:FLOW:1 > NAK; $set TM1-0 TSRC 1 > error.*;"
                     "$set U0 TLST TM1 2.1 > ok; TM1-0:ADDR >> .*TM1-0:ADDR:192.168.7.20");
    row("second TMoIP card alone",
        "TM2-0:ADDR > :10.9.2.20; TM2-0:PHYS >> :Up; TM2-1:FLOW:1 > ACK; TM2-1:STAT >> :No Clock; TM2-2:STAT > "
        ":Transmitting; TM2-2:RATE > :5000000",
        u"gaps"_s);
    row("spectral link",
        "S:U0:VER > :SPEC-.*; S:U0:SYSID:ZX-17 > ACK; S:U0:SYSID > :ZX-17; S:U0:CLST > "
        "(?!.*010[1-9])(?=.*,0136).*:0170 .*;"
        "S:U0:TLST > :; S:U0:SLAVE > :0; S:U0:TMRF > :1; S:U0:SYSOPT > :.+; S:U0:ABSSI > :0; S:U0:NAME > :Spectral 7; "
        "S:R1:FREQ >;"
        "S:SP1:SPAN:0.09 > NAK; S:SP1:SPAN:100 > ACK; S:SP2:DATA:2 > NAK; S:SP2:RFFT:0 > NAK; S:S1:CFRQ:1450.5 > ACK;"
        "S:S1:CFRQ > :1450.5; S:S1:CERR:1 > NAK; S:U0:TRON:ON > ACK; $power-cycle > ok; S:U0:SYSID > :; S:U0:TRON > "
        ":OFF; S:SP1:SPAN > :100");
}

void SimulatorLogicTest::conversations()
{
    QFETCH(QByteArray, steps);
    QFETCH(QString, family);
    QCOMPARE(SimBench(family).talk(steps), ""_ba);
}

/// Each channel at the rate that is set, and spread over the period.
void SimulatorLogicTest::reports()
{
    SimBench bench;
    bench.pass(1);
    QCOMPARE(bench.takeReports(), QByteArrayList());
    QCOMPARE(bench.talk("U0:TRON:ON > ACK; U0:LOGC:1 > ACK; $set R1 NAME A > ok"), ""_ba);
    qsizetype most = 0;
    QHash<QByteArray, int> seen;
    for (int step = 0; step < 2 * sim::kStepsPerSecond; ++step) {
        bench.pass();
        const QByteArrayList texts = bench.takeReports();
        most = std::max(most, texts.size());
        for (const QByteArray &text : texts)
            ++seen[text.first(text.lastIndexOf(':'))];
    }
    for (const char *status : { "R1:SYNL", "R1:SSLV", "R2:MAFL", "R2:RLST", "R1:AGCA", "R2:AGCB", "D1:DLCK", "D2:PDEV",
                                "D3:BTLS", "C1:CLCS" })
        QCOMPARE(seen.value(status), 2 * int(SimBench::kReportHz));
    for (const char *status : { "TM1-0:IEBR", "TM1-1:STAT", "TM1-2:RATE", "TM1-3:OOPS" })
        QVERIFY2(qAbs(seen.value(status) - 6) <= 1, status);
    QCOMPARE(seen.value("U0:LAGC"), 2);
    QVERIFY2(most < 70, "the units report at the same time");
}

/// What a restored preset changes is reported between two messages, after the answer.
void SimulatorLogicTest::presets()
{
    SimBench bench(u"qln424"_s);
    QCOMPARE(bench.talk("U0:STORE:p > ACK; C1:CHZ1:1 > ACK; U0:SDM2:B > ACK; $set D1 85 0001 > ok; D2:DMOD:3 > ACK;"
                        "D1:DQMON:1 > NAK; D2:RATEA:1000000 > ACK; U0:SLAVE:1 > ACK; U0:STORE:b > ACK;"
                        "U0:PLIST > :b p[ ]; U0:DELPR:b > ACK; U0:DELPR:b > NAK; R1:AFC:1 > ACK"),
             ""_ba);
    bench.pass();
    QCOMPARE(bench.takeReports().join(' '), "D2:DDCF:1"_ba);
    QCOMPARE(bench.talk("U0:RESTORE:p > ACK; U0:RESTORE:p > NAK"), ""_ba);
    bench.pass(2);
    QCOMPARE(
        bench.takeReports().join(' '),
        "U0:PDONE:0 U0:SLAVE:0 U0:SDM2:1 C1:CHZ1:0 D1:RDRG:85fe6b D2:DMOD:8 D2:RATEA:6000000 D2:DDCF:0 U0:PDONE:1"_ba);
    QCOMPARE(bench.talk("D1:RDRG:85 > D1:RDRG:85fe6b; D2:RATEA > :6000000; C1:CHZ1 > :0; R1:SLAVE > :0"), ""_ba);
}

/// Carriers add up if they are of one emission; of two the stronger counts.
void SimulatorLogicTest::diversity()
{
    const auto distance = [](double secondRate) { // dBHz of the combined signal
        sim::CombinerUnit combiner;
        combiner.step({ { { sim::IfSignal{ .noiseDistance = 80, .mode = 0, .rate = 1e6 }, -60 },
                          { sim::IfSignal{ .noiseDistance = 77, .mode = 0, .rate = secondRate }, -63 } } });
        return combiner.output().value_or(sim::IfSignal()).noiseDistance;
    };
    QCOMPARE(qRound(distance(1e6) * 10), 818);
    QCOMPARE(distance(2e6), 80.0);
}

/// The lines of a block that stand out of the noise are those of the signal.
void SimulatorLogicTest::spectrum()
{
    const sim::RadioScene scene({ { .frequency = 2250.5, .level = -58, .bandwidth = 4 },
                                  { .frequency = 2275.5, .level = -58, .bandwidth = 5 } },
                                1);
    const auto shows = [&scene](int number, const char *span, double tuning, int first, int last) {
        sim::SpectralUnit unit(number, 1);
        QByteArray block;
        connect(&unit, &sim::Unit::reported, [&block](const QByteArray &text) { block = text; });
        const bool taken = unit.set("SPAN", span);
        unit.sendBlock(scene, { tuning, 2275.5 });
        const QByteArray lines = QByteArray::fromHex(block.sliced(block.lastIndexOf(':') + 1));
        const auto stands = [](char line) { return static_cast<unsigned char>(line) > 150 - 124 + 20; };
        const auto left = std::find_if(lines.cbegin(), lines.cend(), stands) - lines.cbegin();
        const auto right = lines.crend() - std::find_if(lines.crbegin(), lines.crend(), stands) - 1;
        return taken && lines.size() == 256 && qAbs(left - first) <= 2 && qAbs(right - last) <= 2;
    };
    QVERIFY2(shows(1, "10", 2250.5, 77, 179), "4 MHz of 10");
    QVERIFY2(shows(1, "10", 2252.5, 26, 128), "tuned 2 MHz higher");
    QVERIFY2(shows(1, "20", 2252.5, 77, 128), "twice the span");
    QVERIFY2(shows(2, "10", 2252.5, 64, 192), "receiver 2");
    QVERIFY2(shows(3, "10", 2252.5, 26, 192), "combiner");
}

/// Symbols are far from the decision line while the demodulator is locked, and anywhere without a carrier.
void SimulatorLogicTest::samples()
{
    const auto *const mode = sim::DemodulationMode::named(u"QPSK");
    sim::Demodulator demodulator(1);
    demodulator.setControls({ .mode = mode, .rate = 1e7, .sweepRange = 100 });
    const auto step = [&](const std::optional<sim::IfSignal> &input) {
        for (int count = 0; count < sim::kStepsPerSecond; ++count)
            demodulator.step(input, sim::kStepSeconds);
    };
    sim::EyeSampler sampler(1);
    step(sim::IfSignal{ .noiseDistance = 100, .mode = mode->code, .rate = 1e7 });
    const QByteArray eye = sampler.eyePattern(demodulator);
    QCOMPARE(eye.size(), 1024);
    QVERIFY(opening(eye) > 0.3);
    QVERIFY(opening(sampler.constellation(demodulator)) > 0.3);
    QVERIFY(sampler.eyePattern(demodulator) != eye);
    step(std::nullopt);
    QVERIFY(opening(sampler.eyePattern(demodulator)) < 0.15);
    QCOMPARE(sampler.serialData().size(), 5);
}

/// What console commands order, where chance decides.
void SimulatorLogicTest::faults()
{
    const auto refusals = [](quint32 seed) {
        sim::FaultRules rules(seed);
        rules.add(sim::FaultRules::Fault::Refuse, { "R1", "FREQ" }, { .percent = 30 });
        QByteArray verdicts;
        while (verdicts.size() < 100)
            verdicts += rules.strikes(sim::FaultRules::Fault::Refuse, "R1", "FREQ") ? 'x' : '.';
        return verdicts;
    };
    QVERIFY2(qAbs(refusals(7).count('x') - 30) < 15, refusals(7));
    QCOMPARE(refusals(7), refusals(7));
    QVERIFY(refusals(7) != refusals(8));
    sim::FaultRules rules(1);
    rules.delay({ 900, 900 }, { "R1", {} }, 100);
    rules.delay({ 200, 400 }, { "R1", "AFC" }, 100);
    QVERIFY2(qAbs(rules.delayMs("R1", "AFC") - 300) <= 100, "the later command counts");
    rules.garble(20);
    int shortened = 0;
    for (int count = 0; count < 20; ++count)
        shortened += rules.onTheWire("\x02NAME\r") == "\x02NAME" ? 1 : 0;
    QVERIFY2(shortened > 0 && shortened < 20, "both kinds of damage");
    QCOMPARE(rules.onTheWire("\x02NAME\r"), "\x02NAME\r"_ba);
}

void SimulatorLogicTest::script()
{
    const auto due = [](const QByteArray &text) {
        QTemporaryFile file;
        sim::Script script;
        QString error;
        if (!file.open() || file.write(text) != text.size() || !file.flush() || !script.load(file.fileName(), error))
            return error.section(u':', 1).toLatin1();
        const QByteArray first = script.takeDue(1).join(' ');
        return first + '|' + script.takeDue(2).join(' ');
    };
    QCOMPARE(due("@3 c\n@0.5 a\n# @1 x\n\n@2 b d\n@2.02 e"), "a|b d"_ba);
    QCOMPARE(due("a\nwait 1.5\nb\nwait 1\nc\n@1 d\nwait 1\ne"), "a d|b e"_ba);
    for (const char *line : { "@x a", "@-1 a", "@1", "wait x", "wait -1" })
        QCOMPARE(due("@1 a\n"_ba + line), "2: wrong time"_ba);
}

QTEST_GUILESS_MAIN(SimulatorLogicTest)
#include "tst_simulator_logic.moc"
