#include "support/LinkBench.h"

namespace {

// What a chassis holds at start: "MNEMONIC value" in the order in which the settings are asked for, "|" between them.

const QByteArray kSystemSettings = "NAME Range 4|SLAVE 0|TMRF 1|TLST |SYSOPT 0|ABSSI 0";
const QByteArray kReceiverSettings =
    "NAME Receiver|ACFE 0|ANCF -20|CAMP 1|CAMF 0|AMIP 0|FLST 2395.5 2200.5,1485.5 1435.5|CIFS 0|FREQ 2250.5"
    "|IFLS 1 MHz,5 MHz,10 MHz|IFBW 1|AGCF 0|AGCZ 0|SLPA 1|SLPB 2|POLA 0|POLB 1|IMPA 0|IMPB 0|AGCT 1|AFC 1|AFCM 0"
    "|PLYB 0|AIFB 0|CINP 0|CIF1 0|CATN 0|MANG 0";
const QByteArray kCombinerSettings =
    "NAME Combiner|CVMD 1|CMOD 0|IFLS 1 MHz,5 MHz,10 MHz|IFBW 1|CHZC 0|CHZ1 0|CHZ2 0|SLPA 0|SLPB 1|POLA 0|POLB 1"
    "|IMPA 0|IMPB 0|ABAL 0|CAMF 0|CAMP 1";
/// "SDM" stands for the data source, which is asked for on the system address.
const QByteArray kDemodulatorSettings =
    "NAME Demodulator|DMLS 0 PCM-FM,1 TRELLIS FM,2 PM,3 BPSK,4 QPSK,8 SOQPSK,9 MULTI-H CPM,10 OQPSK"
    "|IFFL 2000000,10000000,40000000|VFFL 500000,5000000|VFLS 0.5 MHz,5 MHz,10 MHz|DMOD 0|SDM 1|VCFG 0|BSDR 0"
    "|ALBW 0|ASRG 0|ASRT 0|TMID 0.35|AFMS 0|VGN1 120|VGN2 60|DVBW 5000000|RATEA 5000000|RATEB 2500000|VFBW 1"
    "|CPT0 0|CPT1 1|CPT2 2|CPT3 3|CPT4 6|CPT5 7|CPT6 0|CPT7 1|VIDP 1|BSDP 1|BSCP 1|BSCL 0|BSIL 0|VCP1 0|VCP2 0"
    "|VLPF 0|BSIC 0|DFAQ 0|DFIR -1|VFIR 1|VFIR2 0|DAFC 0|LBWB 0.005|LBWC 0.01|SWRG 100|SWRT 1000000|TRKD 0|VDE1 0"
    "|VDE2 0|DDCF 70|DSDM 0|RDRG:82 0001|RDRG:84 0400|RDRG:85 eb90|RDRG:86 8000|RDRG:87 0005|RDRG:83 0000"
    "|RDRG:39 0015|RDRG:3A 0016|RDRG:3B 0017|VAFL 0|VAF2 0|BTEN 0|BTTL 0|REST 0|BTMO 0|BTER 0|BERG 0|BTCB 0|BTCE 0"
    "|BERC 0|BTLK 0|BTLS 0|BETI 0|BAVL 0|LDPCR 0|LDPCB 0|LDPCD 0|LDPCS 0|FBPW 0|WPFM 0|FSPT fe6b2840|FSLN 32"
    "|THRS 1|FSLK 0|SCBE 0|SRT0 0|B0LB 0|FCS0 0|MFS0 0|DC0E 0|AG0E 0|CF0E 0|MF0E 0|SEI0 0|HI0Z 0|BS0L 0|AFIR 0"
    "|AVF1 0|AVF2 0|AVF3 0|CSFQ 70|CSDR 1000000|CSLB 0.005|CSLC 0.01";
const QByteArray kSpectralSettings = "SPAN 10";
const QByteArray kSelfTestSettings =
    "CFRQ 1|CATT_1 2|CATT_2 3|SCD1 4|SCD2 5|FMDV 6|UNBL 7|SCG1 8|SCG2 9|PNGN 10|CBND 11|CERR 12|SCR1 13|SCR2 14"
    "|PRNR 15|APNR 16|SCF1 17|SCF2 18|BSINT 19|CMOD 20|C1EN 21|C2EN 22|PCEN 23|IFSL 24|CPRN 25|CDLE 26|CREF 27|CPWR 28"
    "|CEXT 29|CDSC 30|DDSF 31|NAME Test|SLAVE 0";
const QByteArray kOlderDemodulatorSettings = kDemodulatorSettings + "|DQMON 0|DQMFS 1024|DEQE 0";
const QByteArray kTapeSettings = "NAME Tape|TFREQ 10500000|TGAINCH1 0|TGAINCH2 51|TGAINCMB 128";
const QByteArray kTmoipCardSettings = "ADDR 10.0.0.5|MASK 255.255.255.0|GWAY 10.0.0.1|PORT 5000|IRIG Locked";
const QByteArray kTmoipStreamSettings = "NAME Stream|FLOW 0|PROT 1|RMIP 10.0.0.9|PORT 5001|HEAD 1|BUFF 1|MTUS 1400"
                                        "|RBUF 16|INPZ 1|ID10 0|SPRT 0|ENDN 0";

struct Setting
{
    QByteArray request; ///< address and mnemonic, and the number of a register
    QByteArray value;
};

QList<Setting> settingsOf(const QByteArray &address, const QByteArray &texts)
{
    QList<Setting> settings;
    for (const QByteArray &text : texts.split('|')) {
        const QByteArray name = text.first(text.indexOf(' '));
        const QByteArray request = name == "SDM" ? "U0:SDM" + address.last(1) : address + ':' + name;
        settings.append({ request, text.sliced(name.size() + 1) });
    }
    return settings;
}

QByteArrayList queries(const QByteArray &address, const QByteArray &texts)
{
    QByteArrayList frames;
    for (const Setting &setting : settingsOf(address, texts))
        frames += setting.request;
    return frames;
}

} // namespace

LinkBench::LinkBench(int startupSeconds)
    : m_command(path(QStringLiteral("ttyUSB0")))
    , m_eye(path(QStringLiteral("ttyUSB1")))
    , m_spectral(path(QStringLiteral("ttyUSB2")))
    , m_remote(path(QStringLiteral("ttyUSB4")))
    , m_remoteEyeAndStatus(path(QStringLiteral("ttyUSB5")))
{
    qputenv("ZIRVO_DEVICE_DIR", m_folder.path().toLocal8Bit());
    if (startupSeconds < 0)
        qunsetenv("ZIRVO_STARTUP_SECONDS");
    else
        qputenv("ZIRVO_STARTUP_SECONDS", QByteArray::number(startupSeconds));
    fillChassis();
}

void LinkBench::fillChassis()
{
    const auto fill = [this](const QByteArray &address, const QByteArray &texts) {
        for (const auto &[request, value] : settingsOf(address, texts)) {
            m_command.setValue(request, value);
            m_spectral.setValue(request, value);
        }
    };
    fill("U0", kSystemSettings);
    for (const QByteArray address : { "R1", "R2" })
        fill(address, kReceiverSettings);
    fill("C1", kCombinerSettings);
    for (const QByteArray address : { "D1", "D2", "D3" })
        fill(address, kOlderDemodulatorSettings);
    fill("T1", kTapeSettings);
    for (const QByteArray card : { "TM1", "TM2" }) {
        fill(card + "-0", kTmoipCardSettings);
        for (const QByteArray stream : { "-1", "-2", "-3" })
            fill(card + stream, kTmoipStreamSettings);
    }
    for (const QByteArray address : { "SP1", "SP2", "SP3" })
        fill(address, kSpectralSettings);
    fill("S1", kSelfTestSettings);
    for (FarEnd *far : { &m_command, &m_spectral }) {
        far->setValue("U0:VER", "3.4");
        far->setValue("U0:VERTSKB", "1.7");
    }
    m_spectral.setValue("U0:CLST", QByteArray(kSpectral) + ',' + kSelfTest);
    fit({ kReceivers });
}

void LinkBench::fit(const QByteArrayList &cards)
{
    QByteArrayList tmoipCards;
    QByteArrayList others;
    for (const QByteArray &card : cards)
        (card.startsWith("TM") ? tmoipCards : others) += card;
    m_command.setValue("U0:CLST", others.join(','));
    m_command.setValue("U0:TLST", tmoipCards.join(','));
}

QByteArrayList LinkBench::systemQueries() { return queries("U0", kSystemSettings); }

QByteArrayList LinkBench::receiverQueries(const QByteArray &address) { return queries(address, kReceiverSettings); }

QByteArrayList LinkBench::combinerQueries() { return queries("C1", kCombinerSettings); }

QByteArrayList LinkBench::demodulatorQueries(const QByteArray &address, bool older)
{
    return queries(address, older ? kOlderDemodulatorSettings : kDemodulatorSettings);
}

QByteArrayList LinkBench::tmoipQueries()
{
    QByteArrayList frames = queries("TM1-0", kTmoipCardSettings);
    for (const QByteArray address : { "TM1-1", "TM1-2", "TM1-3" })
        frames += queries(address, kTmoipStreamSettings);
    return frames;
}

QByteArrayList LinkBench::tapeQueries() { return queries("T1", kTapeSettings); }

QByteArrayList LinkBench::spectralQueries(const QByteArray &address)
{
    return queries(address, kSpectralSettings) + QByteArrayList{ address + ":DATA:0" };
}

QByteArrayList LinkBench::selfTestQueries() { return queries("S1", kSelfTestSettings); }
