#include "support/SimHarness.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// What the head asks at the start, and the status values, after each address.
const QByteArray kQueries =
    "T1 NAME TFREQ TGAINCH1 TGAINCH2 TGAINCMB SLAVE;TM1-2 FLOW;TM1-3 OOPS;TM1-4 FLOW;TM2-0 ADDR CHAN;TM2-1 FLOW;TM2-3 "
    "OOPS;"
    "TM1-0 ADDR MASK GWAY PORT IRIG TSRC NTPS TIME PHYS IEBS IEBR IREV CHAN NAME;"
    "TM1-1 NAME FLOW PROT RMIP PORT HEAD BUFF MTUS RBUF INPZ ID10 SPRT ENDN STAT RATE RRAT TXRT TXBT RXBT RETX DROP "
    "OOPS;"
    "SP1 SPAN DATA;SP2 SPAN;SP3 SPAN;SP4 SPAN;"
    "S1 CFRQ CATT_1 CATT_2 SCD1 SCD2 FMDV UNBL SCG1 SCG2 PNGN CBND CERR SCR1 SCR2 PRNR APNR SCF1 SCF2 BSINT CMOD C1EN "
    "C2EN PCEN IFSL CPRN CDLE CREF CPWR CEXT CDSC DDSF NAME SLAVE";

/// Steps in which the `fitted` units answer every query and the others none.
QByteArray queries(const QByteArray &fitted)
{
    QByteArrayList steps;
    for (const QByteArray &unit : kQueries.split(';')) {
        const QByteArrayList words = unit.split(' ');
        for (const QByteArray &mnemonic : words.sliced(1))
            steps.append(words.first() + ':' + mnemonic + (fitted.contains(words.first()) ? " > :.+" : " >"));
    }
    return steps.join(';');
}

/// Whether the lines that stand 20 dB over a quiet band reach from `first` to `last` in the next block but one: a block
/// may have begun before the last change.
bool hasHump(SimHarness &sim, const QByteArray &address, int first, int last)
{
    sim.framesUntil(address + ":RFFT");
    const QByteArray lines = QByteArray::fromHex(sim.framesUntil(address + ":RFFT").last().mid(9));
    const auto stands = [](char line) { return static_cast<unsigned char>(line) > 150 - 124 + 20; };
    const auto left = std::find_if(lines.cbegin(), lines.cend(), stands) - lines.cbegin();
    const auto right = lines.crend() - std::find_if(lines.crbegin(), lines.crend(), stands) - 1;
    return lines.size() == 256 && qAbs(left - first) <= 3 && qAbs(right - last) <= 3;
}

} // namespace

/// Tape, telemetry over IP and the spectral link of the shipped simulator.
class SimulatorFurtherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conversations_data();
    void conversations();
    void speaksUnasked();
};

void SimulatorFurtherTest::conversations_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<bool>("spectral");
    QTest::addColumn<QByteArray>("steps");
    const auto row = [](const char *tag, const QByteArray &steps, bool spectral = false,
                        const QString &family = u"demod-k3050"_s) {
        QTest::newRow(tag) << family << spectral << steps;
    };
    row("all fitted", queries("T1 TM1-0 TM1-1 TM1-2 TM1-3"));
    row("all on the spectral link", queries("SP1 SP2 SP3 S1"), true);
    row("no tape", queries("TM1-0 TM1-1 TM1-2 TM1-3"), false, u"qln424"_s);
    row("second TMoIP card alone",
        queries("TM2-0 TM2-1 TM2-3") + ";TM2-0:ADDR > :10.9.2.20; TM2-0:PHYS >> :Up; TM2-1:FLOW:1 > ACK;"
                                       "TM2-1:STAT >> :No Clock; TM2-2:STAT > :Transmitting; TM2-2:RATE > :5000000",
        false, u"gaps"_s);
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
    row("spectral link",
        "U0:VER > :SPEC-.*; U0:SYSID:ZX-17 > ACK; U0:SYSID > :ZX-17; U0:CLST > (?!.*010[1-9])(?=.*,0136).*:0170 .*;"
        "U0:TLST > :; U0:SLAVE > :0; U0:TMRF > :1; U0:SYSOPT > :.+; U0:ABSSI > :0; U0:NAME > :Spectral 7; R1:FREQ >;"
        "SP1:SPAN:0.09 > NAK; SP1:SPAN:100 > ACK; SP2:DATA:2 > NAK; SP2:RFFT:0 > NAK; S1:CFRQ:1450.5 > ACK;"
        "S1:CFRQ > :1450.5; S1:CERR:1 > NAK; $set S1 CPWR -60 > ok; S1:CPWR > S1:CPWR:-60 S1:CPWR:-60;"
        "$refuse SP3 1 > ok.*; SP3:SPAN > NAK; U0:TRON:ON > ACK; U0:TMRF >> .*S1:RTMP:41 .*; $power-cycle 0 > ok;"
        "U0:SYSID >> :; U0:TRON > :OFF",
        true);
}

void SimulatorFurtherTest::conversations()
{
    QFETCH(QString, family);
    QFETCH(bool, spectral);
    QFETCH(QByteArray, steps);
    SimHarness sim({ u"--family"_s, family });
    QVERIFY(!spectral || (sim.close() && sim.open("ttyUSB2", "spectral")));
    QCOMPARE(sim.talk(steps), ""_ba);
}

void SimulatorFurtherTest::speaksUnasked()
{
    SimHarness sim({ u"--report-hz=25"_s });
    QHash<QByteArray, int> seen;
    const auto collect = [&](int kept) {
        seen.clear();
        for (const QDeadlineTimer end(2000); !end.hasExpired();)
            ++seen[sim.nextFrame().left(kept)];
    };
    sim.order("set U0 TRON ON");
    collect(10);
    for (const char *status : { "TM1-0:TIME", "TM1-0:IEBR", "TM1-1:STAT", "TM1-2:RATE", "TM1-3:OOPS" })
        QVERIFY2(qAbs(seen.value(status) - 6) <= 2, status);
    QVERIFY(sim.close() && sim.open("ttyUSB2", "spectral") && !sim.sees(POLLIN, 300));
    sim.order("set SP1 DATA 1");
    QVERIFY2(hasHump(sim, "SP1", 77, 179), "4 MHz occupied of 10, the carrier in the middle");
    sim.order("set R1 FREQ 2252.5");
    QVERIFY2(hasHump(sim, "SP1", 26, 128), "tuned 2 MHz higher");
    sim.order("set SP1 SPAN 20");
    QVERIFY2(hasHump(sim, "SP1", 77, 128), "twice the span");
    QVERIFY(sim.order("set SP2 DATA 1") == "ok" && sim.order("set SP3 DATA 1") == "ok");
    QVERIFY2(hasHump(sim, "SP2", 64, 192), "5 MHz occupied of 10");
    QVERIFY2(hasHump(sim, "SP3", 77, 160), "the better of both");
    collect(3);
    for (const QByteArray address : { "SP1", "SP2", "SP3" }) {
        QVERIFY2(qAbs(seen.value(address) - 10) <= 4, address);
        QCOMPARE(sim.talk(address + ":DATA:0 > .*ACK.*"), ""_ba);
    }
    QVERIFY(!sim.sees(POLLIN, 400));
}

QTEST_GUILESS_MAIN(SimulatorFurtherTest)
#include "tst_simulator_further.moc"
