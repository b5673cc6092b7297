#include "channels/BistChan.h"
#include "channels/SpectralChan.h"
#include "support/ChannelBench.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Gives the function that adds a conversation with a chassis of these cards.
auto on(const QByteArray &cards)
{
    return [cards](const QByteArray &lines, const QByteArray &record, const Getter &get = {},
                   const QByteArray &held = {}) {
        QTest::addRow("%s on %s", lines.constData(), cards.constData())
            << cards << QString::fromLatin1(lines) << QString::fromLatin1(record) << get << QString::fromLatin1(held);
    };
}

/// Every report of these is kept, none is signalled, and a set that fails changes nothing.
template <typename C>
void addStatusRows(const QByteArray &cards, const QByteArray &keys,
                   std::initializer_list<QString (C::*)() const> getters)
{
    for (qsizetype i = 0; i < qsizetype(getters.size()); ++i) {
        const QByteArray key = keys.split(' ').at(i);
        on(cards)("report " + key + ":3; report " + key + ":4; report " + key + ":4; lose " + key + ":7", key + ":7",
                  of(getters.begin()[i]), "4 < 4");
    }
}

void addCombinerRows()
{
    const auto row = on(LinkBench::kCombiner);
    row("report C1:AIFB:5; lose C1:AIFB:1", "C1:AIFB:1", of(&CmbrChan::getAIFB), "Unknown < Unknown");
    row("set C1:GCZV:0; report C1:GCZV:5", "C1 GCZV 5", of(&CmbrChan::getGCZV), "5 < 0");
    row("report C1:IFLS:a,b c", "C1 IFLS a,b c", of(&CmbrChan::ifBandwidths), "a/b c < 1 MHz,5 MHz,10 MHz");
    row("lose C1:CMOD:2", "C1:CMOD:2; C1 CMOD 0", of(&CmbrChan::getCMOD), "0 < Unknown");
    using C = CmbrChan;
    addStatusRows<C>(LinkBench::kCombiner,
                     "C1:CLCK C1:CLCS C1:AGCA C1:AGCB C1:CH1IN C1:CH1OUT C1:CH2IN C1:CH2OUT C1:TP2 C1:TP4",
                     { &C::getCLCK, &C::getCLCS, &C::getAGCA, &C::getAGCB, &C::getAGCCh1In, &C::getAGCCh1Out,
                       &C::getAGCCh2In, &C::getAGCCh2Out, &C::getTP2, &C::getTP4 });
}

void addDemodulatorRows()
{
    using D = DmdChan;
    const auto row = on(LinkBench::kOlderDemodulators);
    row("set D1:TMID:0.350; report D1:TMID:-0; set D1:TMID:0", "D1 TMID 0.00", of(&D::getTMID), "0.00 < 0.35");
    row("report D1:LBWB:0.0050", "D1 LBWB 0.0050", of(&D::getLBWB), "0.0050 < 0.005");
    row("report D1:DMLS:0 PCM-FM,1 TRELLIS FM,9 MULTI-H CPM,RAW,,13 FM X",
        "D1 DMLS 0 PCM-FM,1 TRELLIS FM,9 MULTI-H CPM,RAW,,13 FM X", of(&D::demodModes),
        "PCM-FM/TRELLIS FM/MULTI-H CPM/RAW//FM < "
        "0 PCM-FM,1 TRELLIS FM,2 PM,3 BPSK,4 QPSK,8 SOQPSK,9 MULTI-H CPM,10 OQPSK");
    row("report D1:IFFL:2000000,1500000", "D1 IFFL 2000000,1500000", of(&D::ifFilters),
        "Auto/2 MHz/1.5 MHz < 2000000,10000000,40000000");
    row("report D1:VFFL:500000,x", "D1 VFFL 500000,x", of(&D::videoFilters), "0.5 MHz/0 MHz < 500000,5000000");
    row("report D1:VFLS:6 MHz,,7", "D1 VFLS 6 MHz,,7", of(&D::videoFilterBandwidths),
        "6 MHz//7 < 0.5 MHz,5 MHz,10 MHz");
    row("report D2:DDCF:80; report D2:DDCF:80; lose D2:DDCF:90",
        "D2 DDCF 80; D2:IFFL; D2 IFFL 2000000,10000000,40000000; D2:VFFL; D2 VFFL 500000,5000000; D2 DDCF 80; "
        "D2:DDCF:90; D1 D2 DDCF 70");
    row(
        "report D1:ZZZZ:5; report D1:ZZZZ:6; report D1:ZZZZ:; lose D1:ZZZZ:7", "D1:ZZZZ:7",
        [](const Channel *channel) { return qobject_cast<const D *>(channel)->unknownValue(u"ZZZZ"_s); }, "6 < ");

    row("report U0:SDM2:2; set D2:DSRC:3; refuse U0:SDM3; set D3:DSRC:2; lose U0:SDM1:9; set D2:DSRC:3",
        "D2 U0 SDM2 2; U0:SDM2:3; D2 U0 SDM2 3; U0:SDM3:2; D3 U0 SDM3 1; U0:SDM1:9; D1 U0 SDM1 1", of(&D::getDSRC),
        "3 < 2");
    const QByteArray secondAlone = "DEMOD2 MPU 1.2 K3050 S2";
    on(secondAlone)("report U0:SDM1:3; report U0:SDM3:3; report U0:SDM2:2; set D2:DSRC:2", "D2 U0 SDM2 2",
                    of(&D::getDSRC), "2 < 1");

    addStatusRows<D>(LinkBench::kOlderDemodulators,
                     "D1:DLCK D1:BLCK D1:FOFF D1:PDEV D1:VLV1 D1:FSLK D1:BS0L D1:BTER D1:BERG D1:BTCB D1:BTCE D1:BERC "
                     "D1:BTLK D1:BTLS D1:BETI D1:BAVL",
                     { &D::getDLCK, &D::getBLCK, &D::getFOFF, &D::getPDEV, &D::getVLV1, &D::getFSLK, &D::getBS0L,
                       &D::getBTER, &D::getBERG, &D::getBTCB, &D::getBTCE, &D::getBERC, &D::getBTLK, &D::getBTLS,
                       &D::getBETI, &D::getBAVL });
    row("report D1:MSE0:3", "");
}

void addRegisterRows()
{
    using D = DmdChan;
    const Getter texts = [](const Channel *channel) { // of the registers, and of the last one outside the table
        QStringList held;
        for (const char *const number : { "82", "84", "85", "86", "87", "83", "39", "3a", "3B", "40" })
            held += qobject_cast<const D *>(channel)->getDREG(QLatin1StringView(number));
        return held.join(u' ');
    };
    const auto older = on(LinkBench::kOlderDemodulators);
    const auto newer = on(LinkBench::kRegisterDemodulators);
    for (const auto &row : { older, newer }) {
        row("report D1:RDRG:834000; report D1:RDRG:830001; report D1:RDRG:830000", "D1 ADEQ 1; D1 RDRG 1; D1 ADEQ 0");
        row("report D1:RDRG:39012C; report D1:RDRG:39012c; report D1:RDRG:3a012C; report D1:RDRG:3B012C",
            "D1 FGA1 300; D1 RDRG 39012c; D1 FGA2 300; D1 MPUV 300");
        row("report D1:RDRG:85aBcD; report D1:RDRG:85aBcD", "D1 DFWD aBcD; D1 RDRG 85aBcD");
        row("set D1:DFWD:eb90; set D1:DFWD:1; set D1:DFWD:eb90",
            "D1:CDRG:851; D1 DFWD 1; D1:CDRG:85eb90; D1 DFWD eb90");
        row("set D1:MEAN:7; set D1:BEPO:fff9", "D1:CDRG:867; D1 MEAN 7; D1:CDRG:87fff9; D1 BEPO fff9");
        row("set D1:DREG:85,eb90; set D1:DREG:3a,0016; set D1:DREG:40,1; set D1:DREG:3A,0100",
            "D1:CDRG:3A0100; D1 FGA2 256");
        row("set D1:DREG:85eb90; set D1:DREG:407", "D1:CDRG:85eb90; D1 DFWD eb90; D1:CDRG:407; D1 RDRG 407");
        row("refuse D1:CDRG; set D1:BEPO:0006; lose D1:CDRG:860006",
            "D1:CDRG:870006; D1 BEPO 0005; D1:CDRG:860006; D1 MEAN 8000");
    }
    older("report D1:RDRG:820030; report D1:RDRG:840200", "D1 RDRG 820030; D1 RDRG 840200", texts,
          "Unknown Unknown eb90 8000 0005 0000 0015 0016 0017 840200 < 820030");
    older("set D1:DDQM:1; set D1:DFSZ:2048; set D1:ADEQ:1; set D1:DDQM:0; set D1:DFSZ:1; set D1:ADEQ:0",
          "D1:DQMON:1; D1 DDQM 1; D1:DQMFS:2048; D1 DFSZ 2048; D1:DEQE:1; D1 ADEQ 1; "
          "D1:DQMON:0; D1 DDQM 0; D1:DQMFS:1; D1 DFSZ 1; D1:DEQE:0; D1 ADEQ 0");
    older("refuse D1:DQMON; set D1:DDQM:1; set D1:DFSZ:1024; report D1:DQMFS:5; report D1:DEQE:1; lose D1:DQMON:1",
          "D1:DQMON:1; D1 DDQM 0; D1 DFSZ 5; D1 ADEQ 1; D1:DQMON:1; D1 DDQM 0");
    newer("report D1:RDRG:820030; report D1:RDRG:820031; report D1:RDRG:820010; report D1:RDRG:840200; report "
          "D1:RDRG:40abcd",
          "D1 DDQM 1; D1 RDRG 820031; D1 DDQM 0; D1 DFSZ 0200; D1 RDRG 40abcd", texts,
          "0010 0200 eb90 8000 0005 0000 0015 0016 0017 40abcd < Unknown");
    newer("set D1:DDQM:1; set D1:DDQM:1; set D1:DDQM:0; refuse D1:CDRG; set D1:DDQM:1",
          "D1:CDRG:820031; D1 DDQM 1; D1:CDRG:820001; D1 DDQM 0; D1:CDRG:820031; D1 DDQM 0");
    newer("report D1:RDRG:82abcd; set D1:DDQM:1; set D1:ADEQ:1; set D1:ADEQ:0; set D1:DFSZ:0100",
          "D1 RDRG 82abcd; D1:CDRG:82abfd; D1 DDQM 1; D1:CDRG:834000; D1 ADEQ 1; D1:CDRG:830000; D1 ADEQ 0; "
          "D1:CDRG:840100; D1 DFSZ 0100");
    newer("refuse D1:CDRG; set D1:DREG:40beef", "D1:CDRG:40beef; D1 RDRG Unknown");
    newer("report D1:SLAVE:2; set D1:DDQM:1; set D1:DSRC:2; set D1:DREG:85,1",
          "D1 SLAVE 2; D1:CDRG:820031; D1 DDQM 1; D2:CDRG:820031; D2 DDQM 1; U0:SDM1:2; D1 U0 SDM1 2; "
          "D1:CDRG:851; D1 DFWD 1");
}

void addFurtherRows()
{
    using K = TmoipCard;
    using S = TmoipChan;
    const auto tmoip = on(LinkBench::kTmoip);
    tmoip("report U0:TLST:TM2", "", of(&UniversalChan::getTLST), "TM1 2.1 < Unknown");
    tmoip("report TM1-2:FLOW:1; report TM1-4:FLOW:1; report TM1-0:FLOW:1; report TM1:TSRC:3; report TM1-0:MASK:1",
          "TM1-2 FLOW 1; TM1-0 TM1 TSRC 3; TM1-0 MASK 1", of(&K::getMASK), "1 < 255.255.255.0");
    tmoip("report TM1-0:NAME:x; report TM1-0:COMT:1; report TM1-0:IREV:1; report TM1-0:TIME:327:14:05:09", "",
          of(&K::getTIME), "327:14:05:09 < Unknown");
    tmoip("refuse TM1-0:ADDR; set TM1-0:ADDR:1; refuse TM1-3:PORT; set TM1-3:PORT:1; lose TM1-0:GWAY:1",
          "TM1-0:ADDR:1; TM1-0 ADDR 10.0.0.5; TM1-3:PORT:1; TM1-3 PORT 5001; TM1-0:GWAY:1; TM1-0 GWAY 10.0.0.1");
    tmoip("report TM1-1:DROP:5; report TM1-1:DROP:6; report TM1-1:DROP:6", "", of(&S::getDROP), "6 < 5");
    tmoip("report TM1-1:STAT:5; report TM1-1:STAT:6; report TM1-1:STAT:6", "", of(&S::getSTAT), "6 < 6");

    using P = SpectralChan;
    const auto spectral = on(LinkBench::kSpectral);
    spectral("report SP2:SPAN:5; report SP2:NAME:x; report SP2:RFFT:1; report SP2:RFFT:2", "", of(&P::getRFFT),
             "2 < 1");
    spectral("set SP2:DATA:1; set SP2:DATA:1; set SP2:SPAN:10; set SP2:NAME:x; lose SP1:SPAN:3",
             "SP2:DATA:1; SP2:DATA:1; SP2:SPAN:10; SP1:SPAN:3", of(&P::getSPAN), "10 < Unknown");

    const auto selfTest = on(LinkBench::kSelfTest);
    const Getter values = [](const Channel *channel) {
        const auto *const test = qobject_cast<const BistChan *>(channel);
        return QStringList{ test->value(u"CATT_1"_s), test->value(u"RZZZ"_s), test->value(u"SLAVE"_s),
                            test->value(u"NAME"_s) }
            .join(u'/');
    };
    selfTest("report S1:CATT_1:9; report S1:RZZZ:5; report S1:SLAVE:1; set S1:NAME:Test; set S1:NAME:New; "
             "lose S1:CATT_1:8",
             "S1:NAME:New; S1:CATT_1:8", values, "9/5//New < Unknown");
}

/// The eye link of three demodulators, and a client's link that takes no channels until a test hands them over.
struct EyeBench
{
    explicit EyeBench(const QByteArray &cards = LinkBench::kOlderDemodulators) : chassis({ cards })
    {
        eye.GenerateChannelList(&chassis.link);
    }
    void send(const QByteArrayList &frames) { chassis.bench.eye().send("\2" + frames.join("\4\2") + "\4"); }
    [[nodiscard]] QByteArray block(const QString &address) const
    {
        return qobject_cast<DmdChan *>(chassis.channel(address))->lastEyeBlock().toHex();
    }

    ChannelBench chassis;
    SerialPortController eye{ nullptr, SerialPortController::EYE_CONST_LINK, {} };
    SerialPortController client{ nullptr, SerialPortController::REMOTE_EYE_AND_STATUS_LINK, {} };
};

} // namespace

/// The models of all channels: what is cached, what is signalled and what goes to the card.
class ChannelsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySetter_data();
    void everySetter();
    void conversation_data();
    void conversation();
    void changedBackWhileUnanswered();
    void initialTexts();
    void eyeBlocks();
    void eyeBlocksForASlowClient();
};

void ChannelsTest::everySetter_data()
{
    QTest::addColumn<QByteArray>("cards");
    QTest::addColumn<QString>("addresses"); // the second and third are the first one's slaves
    QTest::addColumn<QString>("slaving");   // roles in which the first one's sets are copied
    QTest::addColumn<QString>("alwaysSent");
    QTest::newRow("receivers") << QByteArray(LinkBench::kReceivers) << u"R1 R2"_s << u"1"_s << u""_s;
    QTest::newRow("combiner") << QByteArray(LinkBench::kCombiner) << u"C1"_s << u""_s << u"AIFB CAMF CAMP"_s;
    QTest::newRow("demodulators") << QByteArray(LinkBench::kOlderDemodulators) << u"D1 D2 D3"_s << u"1 2"_s
                                  << u"AFIR AVF1 AVF2 AVF3 CSDR CSFQ CSLB CSLC REST"_s;
    QTest::newRow("tape") << QByteArray(LinkBench::kTape) << u"T1"_s << u""_s << u""_s;
    QTest::newRow("TMoIP card") << QByteArray(LinkBench::kTmoip) << u"TM1-0"_s << u""_s << u"COMT NAME"_s;
    QTest::newRow("TMoIP stream") << QByteArray(LinkBench::kTmoip) << u"TM1-2"_s << u""_s << u"ENDN ID10 SPRT"_s;
}

void ChannelsTest::everySetter()
{
    QFETCH(QByteArray, cards);
    QFETCH(QString, addresses);
    QFETCH(QString, slaving);
    QFETCH(QString, alwaysSent);

    ChannelBench chassis({ cards });
    const QString first = addresses.section(u' ', 0, 0);
    const QString kind = kindOf(first) + u':';
    Settings settings = channelSettings();
    settings.removeIf([&kind](const auto &setting) {
        static const QStringList ownWays = u"DSRC DREG DFWD MEAN BEPO DFSZ DDQM ADEQ"_s.split(u' ');
        return !setting.key().startsWith(kind) || ownWays.contains(setting.key().section(u':', 1));
    });
    const QStringList silent{ u"D:BS0L"_s, u"C:AIFB"_s, u"TM:COMT"_s, u"TM:NAME"_s };
    for (const QString &role : { u"0"_s, u"1"_s, u"2"_s }) {
        const QString signalled = first == u"TM1-0"_s ? QString() : first + u" SLAVE "_s + role;
        QCOMPARE(chassis.play(u"report %1:SLAVE:%2"_s.arg(first, role)), signalled);
        QStringList expected;
        for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
            setting->set(chassis.channel(first), u"1"_s + role);
            const QString mnemonic = setting.key().section(u':', 1);
            const bool isCopied = setting->toSlaves && slaving.contains(role);
            for (const QString &address : isCopied ? addresses.split(u' ') : QStringList{ first }) {
                expected << u"%1:%2:1%3"_s.arg(address, mnemonic, role);
                if (!silent.contains(setting.key()))
                    expected << u"%1 %2 1%3"_s.arg(address, mnemonic, role) +
                                    (mnemonic == u"TMID"_s ? u".00"_s : u""_s);
            }
        }
        QCOMPARE(chassis.takeRecord(), expected);

        for (const Setting &setting : settings) // what is held already
            setting.set(chassis.channel(first), u"1"_s + role);
        QStringList sent;
        for (const QString &entry : chassis.takeRecord()) {
            if (entry.contains(u':'))
                sent += entry.section(u':', 1, 1);
        }
        QCOMPARE(sent.join(u' '), alwaysSent);
    }
}

void ChannelsTest::conversation_data()
{
    QTest::addColumn<QByteArray>("cards");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("record");
    QTest::addColumn<Getter>("get");   // asked of the last line's channel, which then holds:
    QTest::addColumn<QString>("held"); // the value < the one before
    const auto row = on(LinkBench::kReceivers);
    const Getter freq = of(&RcvrChan::getFREQ);
    const Getter afc = of(&RcvrChan::getAFC);
    const Getter bounds = [](const Channel *channel) {
        QStringList texts;
        for (const double bound : qobject_cast<const RcvrChan *>(channel)->frequencyBounds())
            texts += QString::number(bound);
        return texts.join(u' ');
    };
    const Getter bandwidths = [](const Channel *channel) {
        return qobject_cast<const RcvrChan *>(channel)->ifBandwidths().join(u'/');
    };

    row("set R1:FREQ:2250.5", "", freq, "2250.5 < Unknown");
    row("set R1:FREQ:3; set R1:FREQ:3", "R1:FREQ:3; R1 FREQ 3", freq, "3 < 2250.5");
    row("refuse R1:FREQ; set R1:FREQ:3", "R1:FREQ:3; R1 FREQ 2250.5", freq, "2250.5 < Unknown");
    row("lose R1:FREQ:3", "R1:FREQ:3; R1 FREQ 2250.5", freq, "2250.5 < Unknown");
    row("ask R1:FREQ:3", "R1:FREQ; R1 FREQ 3", freq, "3 < 2250.5");
    row("ask R1:AFC:1; report R1:AFC:1", "R1:AFC; R1 AFC 1; R1 AFC 1", afc, "1 < Unknown");
    row("refuse R1:FREQ; ask R1:FREQ:3", "R1:FREQ; R1:FREQ", freq, "2250.5 < Unknown");
    row("set R1:CINP:3; report R1:CINP:4", "R1:CINP:3; R1 CINP 3; R1 CINP 4", of(&RcvrChan::getCINP), "4 < Unknown");
    row("report R1:FLST:2300 2200,,5000 4400", "R1 FLST 2300 2200,,5000 4400", bounds,
        "2300 2200 5000 4400 < 2395.5 2200.5,1485.5 1435.5");
    row("report R1:IFLS:20 MHz,40 MHz", "R1 IFLS 20 MHz,40 MHz", bandwidths, "20 MHz/40 MHz < 1 MHz,5 MHz,10 MHz");

    // The owner precedes the address; unknown addresses and mnemonics are ignored.
    row("ask R2:AFC:3", "R2:AFC; R1 R2 AFC 3", afc, "1 < Unknown");
    row("report R3:AFC:3; report R0:AFC:3; report R11:AFC:3; report r1:AFC:3; report :AFC:3; report R1:CARL:3; "
        "report U0:SDM1:3; report R1:AFC",
        "", afc, "1 < Unknown");
    row("ask U0:VER:9.9", "U0:VER");

    // Slaves answer for themselves.
    row("set U0:SLAVE:1; refuse R2:FREQ; set R1:FREQ:3; set R2:AFC:4",
        "U0:SLAVE:1; U0 SLAVE 1; R1 U0 SLAVE 1; R2 U0 SLAVE 1; R1:FREQ:3; R1 FREQ 3; R2:FREQ:3; R2 FREQ 2250.5; "
        "R2:AFC:4; R2 AFC 4; R1:AFC:4; R1 AFC 4",
        afc, "4 < 1");
    row("refuse U0:SLAVE; set U0:SLAVE:1", "U0:SLAVE:1; U0 SLAVE 0; R1 U0 SLAVE 0; R2 U0 SLAVE 0");
    row("report R1:SLAVE:2; set R1:AFC:4", "R1 SLAVE 2; R1:AFC:4; R1 AFC 4", afc, "4 < 1");

    using R = RcvrChan;
    addStatusRows<R>(LinkBench::kReceivers, "R1:SYNL R1:SSLV R1:MAFL R1:RLST R1:AGCA R1:AGCB",
                     { &R::getSYNL, &R::getSSLV, &R::getMAFL, &R::getRLST, &R::getAGCA, &R::getAGCB });
    addStatusRows<UniversalChan>(LinkBench::kReceivers, "U0:LAGC", { &UniversalChan::getLAGC });
    row("ask R1:MVAL:1; report R1:MVAL:1; lose R1:MVAL:4", "R1:MVAL; R1 MVAL 1; R1 MVAL 1; R1:MVAL:4");
    row("ask R1:LSCI:1; report R1:LSCI:1; lose R1:LSCI:4", "R1:LSCI; R1 LSCI 1; R1 LSCI 1; R1:LSCI:4");
    row("ask R1:LSCL:1; report R1:LSCL:1; lose R1:LSCL:4", "R1:LSCL; R1 LSCL 1; R1 LSCL 1; R1:LSCL:4");

    // The system's answers are handled once, whoever asked.
    row("set U0:NAME:Van; ask U0:NAME:Truck", "U0:NAME:Van; U0 NAME Van; U0:NAME; U0 NAME Truck");
    row("set U0:TMRF:1; set U0:TMRF:2; lose U0:TMRF:0", "U0:TMRF:2; U0 TMRF 2; U0:TMRF:0; U0 TMRF 2",
        of(&UniversalChan::getTMRF), "2 < 1");
    row("set U0:TIME:3; set U0:TIME:3; lose U0:TIME:4; report U0:TIME:5", "U0:TIME:3; U0:TIME:4; U0:TIME",
        of(&UniversalChan::getTIME), "5 < 3");
    row("set U0:LOGC:3; set U0:LOGC:3; lose U0:LOGC:4; report U0:LOGC:5", "U0:LOGC:3; U0:LOGC:4; U0:LOGC",
        of(&UniversalChan::getLOGC), "5 < 3");
    row("set U0:ABSSI:3; set U0:ABSSI:3; lose U0:ABSSI:4", "U0:ABSSI:3; U0:ABSSI:4", of(&UniversalChan::getABSSI),
        "3 < Unknown");
    row("report U0:SYSOPT:3", "", of(&UniversalChan::getSYSOPT), "3 < Unknown");
    row("report U0:TLST:,", "", of(&UniversalChan::getTLST), ", < Unknown");
    row("ask U0:PLIST:a b; report U0:PDONE:1; report U0:PDONE:1; report U0:UPDT:0",
        "U0:PLIST; U0 PLIST a b; U0 PDONE 1; U0 PDONE 1; U0 UPDT 0");

    addCombinerRows();
    addDemodulatorRows();
    addRegisterRows();
    addFurtherRows();
}

void ChannelsTest::conversation()
{
    QFETCH(QByteArray, cards);
    QFETCH(QString, lines);
    QFETCH(QString, record);
    QFETCH(Getter, get);
    QFETCH(QString, held);

    ChannelBench chassis({ cards });
    QCOMPARE(chassis.play(lines), record);
    if (get) {
        const QString last = lines.split(u"; "_s).last();
        const Channel *const channel = chassis.channel(last.section(u':', 0, 0).section(u' ', -1));
        const QByteArray mnemonic = last.section(u':', 1, 1).toLatin1();
        QCOMPARE(get(channel) + u" < "_s + channel->previousValue(QLatin1StringView(mnemonic)), held);
    }
}

void ChannelsTest::changedBackWhileUnanswered()
{
    ChannelBench chassis({ LinkBench::kReceivers });
    const Setting frequency = channelSettings()[u"R:FREQ"_s];
    for (const QString &value : { u"3"_s, u"2250.5"_s })
        frequency.set(chassis.channel(u"R1"_s), value);
    QCOMPARE(chassis.takeRecord().join(u"; "_s), u"R1:FREQ:3; R1 FREQ 3; R1:FREQ:2250.5; R1 FREQ 2250.5"_s);
}

/// Current and previous text of a channel that has not been answered yet.
void ChannelsTest::initialTexts()
{
    CommandLinkBench chassis;
    const DmdChan demodulator(nullptr, u"2"_s, &chassis.link, false);
    const CmbrChan combiner(nullptr, u"1"_s, &chassis.link);
    QString previous;
    for (const auto *const mnemonic :
         { "NAME", "SLAVE", "DMOD", "BTER", "BAVL", "LDPCS", "CDS1", "SCBE", "AG0E", "CF0E" })
        previous += demodulator.previousValue(QLatin1StringView(mnemonic)) + u'/';
    QCOMPARE(previous, u"Chan Name/0/Unknown/Uknown/Uknown/Uknown/Uknown/Uknown/Uknown/Unknown/"_s);
    QCOMPARE(
        (QStringList{ demodulator.getDMOD(), demodulator.getBTER(), demodulator.getLDPCS(), demodulator.getVITE() }),
        (QStringList{ u"Unknown"_s, u"Unknown"_s, u"Uknown"_s, u"Uknown"_s }));
    QCOMPARE(demodulator.ifFilters(), u"Auto 0 1 2 3"_s.split(u' '));
    QCOMPARE(combiner.getCMOD() + combiner.getCAMF() + combiner.getCAMP() + combiner.getGCZV(), u"Unknown0"_s);
}

void ChannelsTest::eyeBlocks()
{
    EyeBench bench;
    FarEnd &far = bench.chassis.bench.remoteEyeAndStatus();
    bench.send({ "ED1SD0000000001" });
    QVERIFY(waitUntil([&bench] { return bench.block(u"D1"_s) == "0000000001"; }));
    {
        EyeBench lone("DEMOD2 MPU 1.2 K3050 S2"); // which is also the first of its kind
        for (const QByteArray frame : { "ED2SD0000000002", "ED1SD0000000001" }) {
            lone.send({ frame });
            QVERIFY(waitUntil([&] { return lone.block(u"D2"_s) == frame.last(10); }));
        }
    }

    bench.client.GenerateChannelList(&bench.chassis.link);
    const QByteArray samples = QByteArray("80007Fff").repeated(256);
    // Full blocks of three demodulators at once; wrong sizes, absent demodulators, what is no digit; lower case.
    bench.send({ "ED2" + samples, "ED1" + samples, "ED3" + samples.toLower(), "ED2SD000000000", "ED2SD00000000000",
                 "ED2", "ED4SD0000000002", "ED0SD0000000003", "EDxSD0000000004", "ED1SD:?G:zz~~!!",
                 "ed2sdabcdef09ff" });
    QVERIFY(far.waitForFrames(5));
    QVERIFY(!waitUntil([&far] { return far.frames().size() > 5; }, 50));
    const QByteArray block = ":EYEP:" + samples.toUpper() + "\r\x02";
    QCOMPARE(far.bytes(), "\2D2" + block + "D1" + block + "D3" + block + "D1:EYEP::?G:ZZ~~!!\r\2D2:EYEP:ABCDEF09FF\r");
    QCOMPARE(bench.block(u"D1"_s).first(2), QByteArray("af"));
    QCOMPARE(bench.block(u"D1"_s).size(), 10);
    QCOMPARE(bench.block(u"D2"_s), QByteArray("abcdef09ff"));
    QCOMPARE(bench.block(u"D3"_s), samples.toLower());
}

void ChannelsTest::eyeBlocksForASlowClient()
{
    EyeBench bench;
    bench.client.GenerateChannelList(&bench.chassis.link);
    FarEnd &far = bench.chassis.bench.remoteEyeAndStatus();
    far.setReading(false);
    qint64 most = 0;
    for (int number = 1000; number < 1600; ++number) {
        const QByteArray digits = QByteArray::number(number);
        bench.send({ "ED1" + digits.repeated(512) });
        QVERIFY(waitUntil([&] { return bench.block(u"D1"_s).startsWith(digits); }));
        const auto waiting = qint64(bench.client.txmtRemoteCmdQueue().waitingCount());
        most = qMax(most, bench.client.port().bytesToWrite() + waiting * 2048);
    }
    QVERIFY2(most > 10'000, "the client took everything");
    QVERIFY2(most < 700'000, qPrintable(QString::number(most)));

    far.setReading(true);
    QVERIFY(waitUntil([&bench] { return bench.client.port().bytesToWrite() == 0; }));
    bench.send({ "ED1SDfeedfeed01" });
    QVERIFY(far.waitForFrame("D1:EYEP:FEEDFEED01"));
}

QTEST_MAIN(ChannelsTest)
#include "tst_channels.moc"
