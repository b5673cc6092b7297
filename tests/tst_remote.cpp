#include "head/StandardProtocol.h"
#include "support/RemoteLinksBench.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArrayList kChassis{ LinkBench::kReceivers, LinkBench::kCombiner, LinkBench::kRegisterDemodulators,
                               LinkBench::kTape, LinkBench::kTmoip };
const QByteArrayList kOlderChassis{ LinkBench::kReceivers, LinkBench::kOlderDemodulators };
const QByteArrayList kSpectralChassis{ LinkBench::kReceivers, LinkBench::kTmoip, LinkBench::kSpectral };

/// Adds the mnemonics of one address, those that behave alike together, "; " between them. The words before them:
/// reports are pushed on the "client" or the "status" link, and not kept if "unstored"; queries are answered, unless
/// "unserved"; a client's set is carried out ("set"; "always" means the value held as well), answered with ACK and
/// forgotten ("echo"), passed to the card ("pass") or refused. What is never queried from the chassis starts with
/// "from" the value.
void add(const QByteArrayList &cards, const QString &address, const QString &texts)
{
    for (const QString &text : texts.split(u"; "_s)) {
        const QString words = text.section(u": "_s, 0, 0);
        QTest::addRow("%s %s", qPrintable(address), qPrintable(text))
            << cards << address << words.section(u" from "_s, 0, 0).split(u' ') << text.section(u": "_s, 1).split(u' ')
            << words.section(u" from "_s, 1);
    }
}

/// Adds a conversation: what is played, and what reached the card, the client and its status link.
void talk(const QByteArrayList &cards, const QByteArray &lines, const QByteArray &card, const QByteArray &client,
          const QByteArray &status = {})
{
    QTest::addRow("%.200s", lines.constData())
        << cards << QString::fromLatin1(lines)
        << QStringList{ QString::fromLatin1(card), QString::fromLatin1(client), QString::fromLatin1(status) };
}

void addSystemTalk()
{
    talk(kSpectralChassis,
         "client U0:VERTSKB?|U0:STYPE?|U0:VERS?|U0:SYSID?|U0:VERTSMAIN?|U0:REMOTE?|U0:CHANS?|U0:CARDS?", "",
         "U0:VERTSKB:1.7+; U0:STYPE:ZIRVO+; U0:VERS:9.8.7+; U0:SYSID:RACK-7+; U0:VERTSMAIN:3.4+; U0:REMOTE:0+; "
         "U0:CHANS:U0,R1,R2,TM1-0,TM1-1,TM1-2,TM1-3,SP1,SP2,SP3,S1+; "
         "U0:CARDS:TUNER;A1;X;0103;MPU;2.30121;FPGA1;1.9,TUNER;A2;X;0104;MPU;2.30122;FPGA1;1.9+");
    talk(kChassis,
         "client U0:VERTSKB:1|U0:STYPE:1|U0:VERS:1|U0:SYSID:1|U0:VERTSMAIN:1|U0:REMOTE:1|U0:CHANS:1|U0:CARDS:1", "",
         "U0:VERTSKB:1-; U0:STYPE:1-; U0:VERS:1-; U0:SYSID:1-; U0:VERTSMAIN:1-; U0:REMOTE:1-; U0:CHANS:1-; "
         "U0:CARDS:1-");
    talk(kChassis, "card U0:TLST:TM2; client U0:TLST?|U0:TLST:TM3", "", "U0:TLST:TM2; U0:TLST:TM1 2.1+; U0:TLST:TM3-");
    talk(kChassis,
         "ask ; client U0:REMOTE?; ask U0:REMOTE:1\x06; client U0:REMOTE?; ask U0:REMOTE:0\x06; client U0:REMOTE?",
         "U0:REMOTE:1", "U0:REMOTE:0+; U0:REMOTE:1+; U0:REMOTE:1+");
    talk(kChassis, "ask U0:REMOTE:\x15; ask ; client U0:REMOTE?; ask ; ask U0:REMOTE:\x15; client U0:REMOTE?",
         "U0:REMOTE:1; U0:REMOTE:0; U0:REMOTE:1", "U0:REMOTE:0+; U0:REMOTE:1+");
    talk(kChassis, "card U0:SLAVE:1; client R1:AFC:4", "R1:AFC:4; R2:AFC:4", "R1:AFC:4+; R1:AFC:4; R2:AFC:4");

    talk(kChassis,
         "client D3:DMOD?|R3:FREQ:1|C2:CMOD?|T2:NAME:1|SP1:SPAN?|S1:NAME?|r1:AFC?|U1:NAME?|TM1-4:FLOW?|TM1-:A:b", "",
         "D3:DMOD:-; R3:FREQ:1-; C2:CMOD:-; T2:NAME:1-; SP1:SPAN:-; S1:NAME:-; r1:AFC:-; U1:NAME:-; TM1-4:FLOW:-; "
         "TM1-:A:b-");
    talk({ LinkBench::kReceivers }, "client TM1:ADDR?|D1:DMOD?|C1:CMOD:1|T1:NAME?", "",
         "TM1:ADDR:-; D1:DMOD:-; C1:CMOD:1-; T1:NAME:-");
    talk(kChassis, "client TM1:ADDR?|TM1-0:MASK?|TM1-3:RMIP?; client TM1-3:FLOW:1; card TM1-0:TIME:7:14:05",
         "TM1-3:FLOW:1",
         "TM1:ADDR:10.0.0.5+; TM1-0:MASK:255.255.255.0+; TM1-3:RMIP:10.0.0.9+; TM1-3:FLOW:1+; TM1-3:FLOW:1",
         "TM1-0:TIME:7:14:05");
    talk({ "DEMOD2 MPU 1.2 K3050 S2" }, "client D1:DMOD?|D2:DMOD?; client D1:DMOD:4", "D2:DMOD:4",
         "D1:DMOD:0+; D2:DMOD:0+; D1:DMOD:4+; D2:DMOD:4");
    // The channel of that very address, or the one at that position of its kind
    talk({ "0104 MPU 2.3 TUNER A2 X,0122 FPGA1 1.9 TUNER A2 X", "DEMOD2 MPU 1.2 K3050 S2", "TM2 2.0" },
         "client U0:CHANS?|R1:AFC?|R2:AFC?|TM2-0:MASK?|TM1-2:FLOW?|TM3-0:MASK?; client TM2-1:FLOW:1|R2:AFC:4; "
         "card R2:SSLV:-3|D2:FOFF:1|TM2-0:PHYS:Up|D2:IFFL:5|R1:SSLV:-4; client D2:IFFL?|TM2-0:PHYS?",
         "TM2-1:FLOW:1; R2:AFC:4",
         "U0:CHANS:U0,R2,D2,TM2-0,TM2-1,TM2-2,TM2-3+; R1:AFC:1+; R2:AFC:1+; TM2-0:MASK:255.255.255.0+; TM1-2:FLOW:0+; "
         "TM3-0:MASK:-; TM2-1:FLOW:1+; R2:AFC:4+; TM2-1:FLOW:1; R2:AFC:4; D2:IFFL:5; D2:IFFL:5+; TM2-0:PHYS:Up+",
         "R2:SSLV:-3; D2:FOFF:1; TM2-0:PHYS:Up; R2:SSLV:-4");
    talk({ LinkBench::kReceivers }, "card U0:TLST:XX; client U0:TLST?; card U0:TLST:TM1x; client TM1:ADDR?", "",
         "U0:TLST:XX; U0:TLST:XX+; U0:TLST:TM1x; TM1:ADDR:-");

    // Text that is not UTF-8: read as Latin-1, and passed on as it is
    talk(kOlderChassis,
         "card R1:NAME:Caf\xe9|D1:ZZZZ:\xe9|R1:MVAL:\xe9; client R1:NAME?|D1:YYYY:\xff|R1:LSCI:\xe4; "
         "client D1:ZZZZ?|D1:YYYY?",
         "D1:YYYY:\xff; R1:LSCI:\xe4",
         "R1:NAME:Caf\xc3\xa9; D1:ZZZZ:\xe9; R1:MVAL:\xe9; R1:NAME:Caf\xc3\xa9+; D1:YYYY:\xff+; R1:LSCI:\xe4+; "
         "D1:YYYY:\xff; R1:LSCI:\xe4; D1:ZZZZ:\xe9+; D1:YYYY:\xff+");
    talk(kSpectralChassis, "card S1:ZZZZ:\xe9; client S1:ZZZZ?", "", "S1:ZZZZ:\xe9; S1:ZZZZ:\xe9+");
    talk(kChassis, "card R1:NAME:\xc3\xa9|R2:NAME:\xc3; client R1:NAME:\xc3\xa9\xc3\xa9", "R1:NAME:\xc3\xa9\xc3\xa9",
         "R1:NAME:\xc3\xa9; R2:NAME:\xc3\x83; R1:NAME:\xc3\xa9\xc3\xa9+; R1:NAME:\xc3\xa9\xc3\xa9");

    talk(kChassis, "client R1:AFC?1|R2:FREQ??|R1:NAME:a:b|R1:FREQ:?|R1:FREQ?:1|R1:FREQ", "R1:NAME:a:b",
         "R1:AFC:1+; R2:FREQ:2250.5+; R1:NAME:a:b+; R1:NAME:a:b");
}

void addRubbish()
{
    const auto row = [](const QByteArray &frames, const QByteArray &answers = {}) {
        talk(kOlderChassis, "client " + frames + "|R1:AFC?", "", answers + "R1:AFC:1+");
    };
    row(":|?|R1|R1?|R1:FREQ|\x06|\x15");
    row("R1:FREQ?:1|R1:FREQ:1?|R1:F:Q?|?:?:?|D1:Z:?");
    row("R1:AF\tC?|R\1:AFC:3|R1:AFC:3\1|R1:AFC:3\n|D1:\x1b?|D1:Z\x7f:5|X\1:A?",
        "R1:AFC:-; R:AFC:3-; R1:AFC:3-; R1:AFC:3-; D1::-; D1:Z:5-; X:A:-; "); // control characters
    row("R1:AFC:\x06\x06|R1:AFC:\x01\x06");                                   // in an answer
    row("R1:AFC:3\x06|R1:AFC:3\x15|D1:ZZZZ:\x06");
    row("::|:?|R1:?|R1::5|D1:?|D1::5|U0::5|R1:AFC:", "::-; ::-; R1::-; R1::5-; D1::-; D1::5-; U0::5-; R1:AFC:-; ");
    row("R1:\xc3\xa4?|\xc2\xb2:AFC:1", "R1:\xc3\xa4:-; \xc2\xb2:AFC:1-; ");
    row("R1:NAME:" + QByteArray(4089, 'x') + "|R1:" + QByteArray(1 << 20, '?') + "|R2:AFC?" + QByteArray(4000, 'x'),
        "R2:AFC:1+; ");
}

void addDemodulatorTalk()
{
    talk(kChassis, "card D1:LBWB:0.0123456789|D2:CSLC:0.5; client D1:LBWB?|D1:LBWC?|D1:CSLB?|D2:CSLC?", "",
         "D1:LBWB:1.23457; D2:CSLC:50; D1:LBWB:1.23457+; D1:LBWC:1+; D1:CSLB:0.5+; D2:CSLC:50+");
    talk(kChassis, "client D1:LBWB:50; client D1:LBWC:1; client D1:CSLB:0.12; client D2:CSLC:1",
         "D1:LBWB:0.5; D1:CSLB:0.0012; D2:CSLC:0.01",
         "D1:LBWB:50+; D1:LBWB:50; D1:LBWC:1+; D1:CSLB:0.12+; D1:CSLB:0.12; D2:CSLC:1+; D2:CSLC:1");
    talk(kChassis, "client D1:LBWB:x|D1:LBWC:nan|D1:CSLB:1e999|D1:CSLC:; refuse D1:LBWB; client D1:LBWB:2",
         "D1:LBWB:0.02", "D1:LBWB:x-; D1:LBWC:nan-; D1:CSLB:1e999-; D1:CSLC:-; D1:LBWB:2+; D1:LBWB:0.5");
    talk(kChassis, "client D1:TMID?; client D1:TMID:0.350|D1:TMID:.7; card D1:TMID:1", "D1:TMID:.7",
         "D1:TMID:0.35+; D1:TMID:0.350+; D1:TMID:.7+; D1:TMID:0.70; D1:TMID:1.00");
    talk(kChassis, "card D1:DDCF:80; client D1:DDCF?|D1:DDCF:1|D1:FGA1?|D1:FGA2?|D1:MPUV?|D1:FGA1:1",
         "D1:IFFL; D1:VFFL",
         "D1:DDCF:80; D1:IFFL:2000000,10000000,40000000; D1:VFFL:500000,5000000; D1:DDCF:80+; D1:DDCF:1+; D1:FGA1:21+; "
         "D1:FGA2:22+; D1:MPUV:23+; D1:FGA1:1+");
    talk(kChassis, "card U0:SDM2:3; client D2:DSRC?; client D2:DSRC:2; refuse U0:SDM1; client D1:DSRC:3|D2:DSRC:",
         "U0:SDM2:2; U0:SDM1:3", "D2:DSRC:3; D2:DSRC:3+; D2:DSRC:2+; D2:DSRC:2; D1:DSRC:3+; D2:DSRC:-; D1:DSRC:1");
    talk(kChassis, "card D1:SLAVE:0|U0:SLAVE:2|R1:SLAVE:0|R1:RRSSI:1|D1:FOFF:1|D1:FOFF:1", "", "",
         "R1:RRSSI:1; D1:FOFF:1; D1:FOFF:1");

    // A register is pushed as its setting, or as it is if the setting stays the same.
    talk(kChassis, "card D1:RDRG:820030|D1:RDRG:820030|D1:RDRG:840200|D1:RDRG:85aBcD|D1:RDRG:860001|D1:RDRG:870002", "",
         "D1:DDQM:1; D1:RDRG:820030; D1:DFSZ:0200; D1:DFWD:aBcD; D1:MEAN:0001; D1:BEPO:0002");
    talk(kChassis, "card D1:RDRG:834000|D1:RDRG:830001|D1:RDRG:39012C|D1:RDRG:3a0100|D1:RDRG:3B0101|D1:RDRG:40abcd", "",
         "D1:ADEQ:1; D1:RDRG:1; D1:FGA1:300; D1:FGA2:256; D1:MPUV:257; D1:RDRG:40abcd");
    talk(kChassis, "client D1:DDQM:1|D1:ADEQ:1; client D1:DFWD:1234|D1:MEAN:1|D1:BEPO:7|D1:DFSZ:2; client D1:DFWD?",
         "D1:CDRG:820031; D1:CDRG:834000; D1:CDRG:851234; D1:CDRG:861; D1:CDRG:877; D1:CDRG:842",
         "D1:DDQM:1+; D1:ADEQ:1+; D1:DDQM:1; D1:ADEQ:1; D1:DFWD:1234+; D1:MEAN:1+; D1:BEPO:7+; D1:DFSZ:2+; "
         "D1:DFWD:1234; D1:MEAN:1; D1:BEPO:7; D1:DFSZ:2; D1:DFWD:1234+");
    talk(kChassis, "client D1:DREG:85eb91; refuse D1:CDRG; client D1:BEPO:0006", "D1:CDRG:85eb91; D1:CDRG:870006",
         "D1:DREG:85eb91+; D1:DFWD:eb91; D1:BEPO:0006+; D1:BEPO:0005");
    talk(kOlderChassis, "client D1:DDQM:1|D1:DFSZ:2|D1:ADEQ:1; card D1:DQMFS:3; client D1:DDQM?|D1:DFSZ?|D1:ADEQ?",
         "D1:DQMON:1; D1:DQMFS:2; D1:DEQE:1",
         "D1:DDQM:1+; D1:DFSZ:2+; D1:ADEQ:1+; D1:DDQM:1; D1:DFSZ:2; D1:ADEQ:1; D1:DFSZ:3; D1:DDQM:1+; D1:DFSZ:3+; "
         "D1:ADEQ:1+");

    talk(kChassis,
         "refuse D1:RDRG|D1:SDM1|D1:SDM2; client D1:RDRG?; client D1:CDRG:851; client D1:RDRG:854321; "
         "client D1:SDM1?|D1:SDM2?",
         "D1:RDRG; D1:CDRG:851; D1:RDRG:854321; D1:SDM1; D1:SDM2",
         "D1:RDRG:Unknown+; D1:CDRG:851+; D1:DFWD:1; D1:RDRG:854321+; D1:RDRG:851; D1:SDM1:1+; D1:SDM2:+");
    talk(kChassis, "client D1:DREG:85|D1:DREG:; client D1:DFWD?", "D1:CDRG:85; D1:RDRG:85",
         "D1:DREG:85+; D1:DREG:-; D1:RDRG:85; D1:DFWD:eb90+");
    talk(kChassis, "client D1:TMID:0.354; client D1:TMID:0.350; client D1:TMID:x", "D1:TMID:0.354; D1:TMID:x",
         "D1:TMID:0.354+; D1:TMID:0.35; D1:TMID:0.350+; D1:TMID:x+; D1:TMID:0.00");

    // What the head does not know is relayed between the client and the card.
    talk(kOlderChassis, "refuse D1:ZZZZ; client D1:ZZZZ?; client D1:ZZZZ?; card D1:ZZZZ:5|D1:ZZZZ:; client D1:ZZZZ?",
         "D1:ZZZZ", "D1:ZZZZ:+; D1:ZZZZ:+; D1:ZZZZ:5; D1:ZZZZ:5+");
    talk(kOlderChassis, "client D1:ZZZZ:5; client D1:ZZZZ:5; client D1:ZZZZ?", "D1:ZZZZ:5; D1:ZZZZ:5",
         "D1:ZZZZ:5+; D1:ZZZZ:5; D1:ZZZZ:5+; D1:ZZZZ:5; D1:ZZZZ:5+");
    talk(kOlderChassis, "refuse D1:ZZZZ; client D1:ZZZZ:5; client D1:ZZZZ?", "D1:ZZZZ:5; D1:ZZZZ",
         "D1:ZZZZ:5+; D1:ZZZZ:+");
    talk(kOlderChassis,
         "card D1:SLAVE:2; refuse D1:YYYY; client D1:ZZZZ:5|D1:YYYY:", "D1:ZZZZ:5; D2:ZZZZ:5; D3:ZZZZ:5; D1:YYYY",
         "D1:ZZZZ:5+; D1:YYYY:+; D1:ZZZZ:5; D2:ZZZZ:5; D3:ZZZZ:5");

    talk(kSpectralChassis, "client S1:ZZZZ?|S1:NAME?|S1:SLAVE?; card S1:ZZZZ:5|S1:SLAVE:1; client S1:ZZZZ?|S1:SLAVE?",
         "", "S1:ZZZZ:-; S1:NAME:Test+; S1:SLAVE:-; S1:ZZZZ:5; S1:ZZZZ:5+; S1:SLAVE:-");
    talk(kSpectralChassis,
         "card S1:RZZZ:5|S1:rzz:6; client S1:RZZZ:7; refuse S1:RZZZ; client S1:RZZZ:8; client S1:rzz?",
         "S1:RZZZ:7; S1:RZZZ:8", "S1:RZZZ:7+; S1:RZZZ:8+; S1:rzz:6+", "S1:RZZZ:5; S1:rzz:6; S1:RZZZ:7; S1:RZZZ:7");
    talk(kSpectralChassis, "refuse S1:ZZZZ; client S1:ZZZZ:5; client S1:ZZZZ?; client S1:NAME:Test; client S1:NAME:New",
         "S1:ZZZZ:5; S1:NAME:New", "S1:ZZZZ:5+; S1:ZZZZ:-; S1:NAME:Test+; S1:NAME:New+; S1:NAME:New");
}

} // namespace

/// What every channel answers to the remote client, and what it pushes.
class RemoteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCoreApplication::setApplicationVersion(u"9.8.7"_s); }
    void everyMnemonic_data();
    void everyMnemonic();
    void conversation_data();
    void conversation();
    void openQuestions();
};

void RemoteTest::everyMnemonic_data()
{
    QTest::addColumn<QByteArrayList>("cards");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("mnemonics");
    QTest::addColumn<QString>("start"); // if not "Unknown"

    add(kChassis, u"U0"_s,
        u"set: NAME SLAVE TMRF; client set: TIME LOGC ABSSI; client: SYSOPT; status: LAGC; unserved: CLST PLIST "
        u"PDONE UPDT STORE RESTORE DELPR TRON VER NOTIFY ZZZZ"_s);
    add(kChassis, u"R1"_s,
        u"client set: NAME ACFE ANCF CAMP CAMF AMIP CIFS FREQ IFBW AGCF AGCZ SLPA SLPB POLA POLB IMPA IMPB AGCT "
        u"AFC AFCM PLYB AIFB CINP CIF1 CATN MANG; unserved pass: AFCC CVAL CRSI IFGC IFGCM; unserved: SLAVE CARL "
        u"ZZZZ; unserved status: RRSSI"_s);
    add(kChassis, u"R2"_s,
        u"client: FLST IFLS; status: SYNL SSLV MAFL RLST AGCA AGCB; unserved client pass: LSCI LSCL MVAL"_s);
    add(kChassis, u"C1"_s,
        u"client set: NAME CVMD CMOD IFBW CHZC CHZ1 CHZ2 SLPA SLPB POLA POLB IMPA IMPB ABAL; client set from 0: "
        u"GCZV; client always: CAMF CAMP; client: IFLS; status: CLCK CLCS AGCA AGCB CH1IN CH1OUT CH2IN CH2OUT TP2 "
        u"TP4; unserved: AIFB SLAVE ZZZZ"_s);
    add(kChassis, u"T1"_s, u"client set: NAME TFREQ TGAINCH1 TGAINCH2 TGAINCMB; unserved: SLAVE ZZZZ"_s);
    add(kChassis, u"TM1-0"_s,
        u"client set: ADDR MASK GWAY PORT TSRC NTPS; status: IRIG TIME PHYS IEBS IEBR; unstored always: COMT; "
        u"unstored: IREV CHAN; unserved: NAME SLAVE ZZZZ"_s);
    add(kChassis, u"TM1-2"_s,
        u"client set: NAME FLOW PROT RMIP PORT HEAD BUFF MTUS RBUF INPZ; client always: ID10 SPRT ENDN; status: "
        u"STAT RATE RRAT TXRT TXBT RXBT RETX DROP OOPS; unserved: SLAVE ZZZZ"_s);
    add(kOlderChassis, u"D1"_s,
        u"client set: NAME DMOD VCFG BSDR ALBW ASRG ASRT AFMS VGN1 VGN2 DVBW RATEA RATEB VFBW CPT0 CPT1 CPT2 CPT3 "
        u"CPT4 CPT5 CPT6 CPT7 VIDP BSDP BSCP BSCL BSIL VCP1 VCP2 VLPF BSIC DFAQ DFIR VFIR VFIR2 DAFC SWRG SWRT "
        u"TRKD VDE1 VDE2 DSDM VAFL VAF2 BTEN BTTL BTMO LDPCR LDPCB LDPCD LDPCS FBPW WPFM FSPT FSLN THRS SCBE SRT0 "
        u"B0LB FCS0 MFS0 DC0E AG0E CF0E MF0E SEI0 HI0Z; client set from Uknown: VITE BMUX CDS1; client always: "
        u"REST AFIR AVF1 AVF2 AVF3 CSFQ CSDR; client echo: DMLS IFFL VFFL VFLS; status set: BS0L"_s);
    add(kChassis, u"D2"_s,
        u"status echo: DLCK BLCK FOFF PDEV VLV1 MSE0 FSLK BTER BERG BTCB BTCE BERC BTLK BTLS BETI BAVL"_s);
    add(kSpectralChassis, u"SP2"_s, u"client always: SPAN DATA; unserved status: RFFT; unserved: NAME SLAVE ZZZZ"_s);
    add(kSpectralChassis, u"S1"_s,
        u"client always: CFRQ CATT_1 CATT_2 SCD1 SCD2 FMDV UNBL SCG1 SCG2 PNGN CBND CERR SCR1 SCR2 PRNR APNR SCF1 "
        u"SCF2 BSINT CMOD C1EN C2EN PCEN IFSL CPRN CDLE CREF CPWR CEXT CDSC DDSF"_s);
}

void RemoteTest::everyMnemonic()
{
    QFETCH(QByteArrayList, cards);
    QFETCH(QString, address);
    QFETCH(QStringList, words);
    QFETCH(QStringList, mnemonics);
    QFETCH(QString, start);

    RemoteLinksBench bench(cards);
    const bool isUnserved = words.contains(u"unserved"_s);
    const bool isPassed = words.contains(u"pass"_s);
    const bool isAlwaysSent = isPassed || words.contains(u"always"_s);
    const bool isSent = isAlwaysSent || words.contains(u"set"_s);
    const bool isTaken = isSent || words.contains(u"echo"_s);
    const bool isUnstored = words.contains(u"unstored"_s);
    QStringList starts;
    for (const QString &mnemonic : mnemonics) {
        const QByteArray value = bench.cardOf(address).value((address + u':' + mnemonic).toLatin1());
        starts += !value.isNull() ? QString::fromLatin1(value) : start.isEmpty() ? u"Unknown"_s : start;
    }

    const auto each = [&](const QString &pattern, const QStringList &values = {}) {
        QStringList texts;
        for (qsizetype i = 0; i < mnemonics.size(); ++i)
            texts += address + u':' + mnemonics[i] + pattern + values.value(i);
        return texts;
    };
    /// The frames of one step, and what the card, the client as answers, and the client as pushed values get.
    const auto verify = [&](const QString &verb, const QString &frames, const QStringList &card,
                            const QStringList &answers, const QStringList &pushed) {
        const RemoteLinksBench::Record record = bench.play(verb + u' ' + each(frames).join(u'|'));
        QStringList answered;
        QStringList pushedOnRemote;
        for (const QString &frame : record.client)
            (frame.endsWith(u'+') || frame.endsWith(u'-') ? answered : pushedOnRemote) += frame;
        QCOMPARE(record.card, card);
        QCOMPARE(answered, answers);
        QCOMPARE(pushedOnRemote, words.contains(u"client"_s) ? pushed : QStringList());
        QCOMPARE(record.status, words.contains(u"status"_s) ? pushed : QStringList());
    };
    const auto verifyQueries = [&](const QStringList &values) {
        QStringList answers;
        for (const QString &text : isUnserved ? each(u":"_s) : each(u":"_s, isUnstored ? starts : values))
            answers += text + (isUnserved ? u'-' : u'+');
        verify(u"client"_s, u"?"_s, {}, answers, {});
    };
    const auto all = [&](const QString &value) { return QStringList(mnemonics.size(), value); };

    verifyQueries(starts);
    verify(u"card"_s, u":7"_s, {}, {}, each(u":7"_s));
    verifyQueries(all(u"7"_s));
    const QStringList answers = each(isTaken ? u":8+"_s : u":8-"_s);
    const QStringList sent = isSent ? each(u":8"_s) : QStringList();
    verify(u"client"_s, u":8"_s, sent, answers, sent);
    verifyQueries(all(isSent ? u"8"_s : u"7"_s));
    const QStringList sentAgain = isAlwaysSent ? sent : QStringList();
    verify(u"client"_s, u":8"_s, sentAgain, answers, sentAgain);
    if (!isPassed)
        verify(u"client"_s, u":"_s, {}, each(isTaken && !isSent ? u":+"_s : u":-"_s), {});
    bench.play(u"refuse "_s + each({}).join(u'|'));
    verify(u"client"_s, u":9"_s, isSent ? each(u":9"_s) : QStringList(), each(isTaken ? u":9+"_s : u":9-"_s),
           !isSent ? QStringList() : each(isPassed ? u":9"_s : u":8"_s));
}

void RemoteTest::conversation_data()
{
    QTest::addColumn<QByteArrayList>("cards");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QStringList>("record");
    addSystemTalk();
    addDemodulatorTalk();
    addRubbish();
}

void RemoteTest::conversation()
{
    QFETCH(QByteArrayList, cards);
    QFETCH(QString, lines);
    QFETCH(QStringList, record);

    RemoteLinksBench bench(cards);
    const RemoteLinksBench::Record passed = bench.play(lines);
    QCOMPARE((QStringList{ passed.card.join(u"; "_s), passed.client.join(u"; "_s), passed.status.join(u"; "_s) }),
             record);
}

/// A client may have many queries of the card open, with a bound.
void RemoteTest::openQuestions()
{
    RemoteLinksBench bench(kOlderChassis);
    QStringList answers;
    for (int i = 0; i < 18; ++i) {
        const QString mnemonic = u"Z%1"_s.arg(i % 17);
        bench.far.refuse("D1:" + mnemonic.toLatin1());
        bench.link.channels()[3]->ProcessCmd(RemoteCommand::fromClient(u"D1:"_s + mnemonic + u'?'));
        answers += u"D1:"_s + mnemonic + (i == 16 ? u":-"_s : u":+"_s);
    }
    QVERIFY(bench.settle());
    QCOMPARE(RemoteLinksBench::taken(bench.client), answers);
    QCOMPARE(RemoteLinksBench::taken(bench.far).size(), 16);
    QCOMPARE(bench.play(u"client D1:Z16?"_s).card, QStringList{ u"D1:Z16"_s });

    bench.far.refuse("D1:RDRG");
    bench.link.channels()[3]->ProcessCmd(RemoteCommand::fromClient(u"D1:RDRG?"_s));
    bench.link.findChild<StandardProtocol *>()->dropBackground(); // as when everything is read again
    QCOMPARE(bench.play(u"client D1:RDRG?"_s).card, QStringList{ u"D1:RDRG"_s });
}

QTEST_MAIN(RemoteTest)
#include "tst_remote.moc"
