#include "support/ChannelBench.h"

#include "channels/SpectralChan.h"
#include "channels/TapeChan.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// Adds the setters of the class @p C in the order of @p mnemonics.
template <typename C>
void add(Settings &settings, const QString &mnemonics, bool toSlaves,
         std::initializer_list<void (C::*)(const QString &)> setters)
{
    const QStringList names = mnemonics.split(u' ');
    if (names.size() != qsizetype(setters.size()))
        qFatal("a mnemonic or a setter too many");
    for (qsizetype i = 0; i < names.size(); ++i)
        settings.insert(C::ChanType + u':' + names[i], { of(setters.begin()[i]), toSlaves });
}

Settings everySetter()
{
    using C = CmbrChan;
    using D = DmdChan;
    using R = RcvrChan;
    using U = UniversalChan;
    Settings all;
    add<U>(all, u"NAME SLAVE TMRF TIME LOGC ABSSI"_s, false,
           { &U::setNAME, &U::setSLAVE, &U::setTMRF, &U::setTIME, &U::setLOGC, &U::setABSSI });
    add<R>(all, u"NAME ACFE ANCF CINP CIF1 CATN MANG"_s, false,
           { &R::setNAME, &R::setACFE, &R::setANCF, &R::setCINP, &R::setCIF1, &R::setCATN, &R::setMANG });
    add<R>(all, u"FREQ IFBW AIFB CIFS AGCF AGCZ AGCT AFC AFCM SLPA SLPB POLA POLB IMPA IMPB CAMP CAMF AMIP PLYB"_s,
           true,
           { &R::setFREQ, &R::setIFBW, &R::setAIFB, &R::setCIFS, &R::setAGCF, &R::setAGCZ, &R::setAGCT, &R::setAFC,
             &R::setAFCM, &R::setSLPA, &R::setSLPB, &R::setPOLA, &R::setPOLB, &R::setIMPA, &R::setIMPB, &R::setCAMP,
             &R::setCAMF, &R::setAMIP, &R::setPLYB });
    add<C>(all, u"NAME CVMD CMOD IFBW CHZC CHZ1 CHZ2 SLPA SLPB POLA POLB IMPA IMPB ABAL CAMF CAMP GCZV AIFB"_s, false,
           { &C::setNAME, &C::setCVMD, &C::setCMOD, &C::setIFBW, &C::setCHZC, &C::setCHZ1, &C::setCHZ2, &C::setSLPA,
             &C::setSLPB, &C::setPOLA, &C::setPOLB, &C::setIMPA, &C::setIMPB, &C::setABAL, &C::setCAMF, &C::setCAMP,
             &C::setGCZV, &C::setAIFB });
    add<D>(all,
           u"NAME CPT0 CPT1 CPT2 CPT3 CPT4 CPT5 CPT6 CPT7 DSDM VITE BMUX CDS1 BTEN BTTL BTMO REST FBPW WPFM FSPT FSLN "
           u"THRS SCBE SRT0 B0LB FCS0 MFS0 DC0E AG0E CF0E MF0E SEI0 HI0Z AFIR AVF1 AVF2 AVF3 CSFQ CSDR CSLB CSLC BS0L "
           u"DSRC"_s,
           false,
           { &D::setNAME, &D::setCPT0, &D::setCPT1, &D::setCPT2, &D::setCPT3, &D::setCPT4, &D::setCPT5, &D::setCPT6,
             &D::setCPT7, &D::setDSDM, &D::setVITE, &D::setBMUX, &D::setCDS1, &D::setBTEN, &D::setBTTL, &D::setBTMO,
             &D::setREST, &D::setFBPW, &D::setWPFM, &D::setFSPT, &D::setFSLN, &D::setTHRS, &D::setSCBE, &D::setSRT0,
             &D::setB0LB, &D::setFCS0, &D::setMFS0, &D::setDC0E, &D::setAG0E, &D::setCF0E, &D::setMF0E, &D::setSEI0,
             &D::setHI0Z, &D::setAFIR, &D::setAVF1, &D::setAVF2, &D::setAVF3, &D::setCSFQ, &D::setCSDR, &D::setCSLB,
             &D::setCSLC, &D::setBS0L, &D::setDSRC });
    add<D>(
        all,
        u"DMOD TMID RATEA RATEB VGN1 VGN2 LBWB LBWC SWRG SWRT VIDP BSDP BSCP BSCL BSIL BSIC VCP1 VCP2 VLPF VAFL VAF2 "
        u"VDE1 VDE2 DFAQ DAFC TRKD ALBW ASRG ASRT VCFG BSDR AFMS DVBW VFIR VFIR2 LDPCR LDPCB LDPCD LDPCS DFIR VFBW "
        u"DFWD MEAN BEPO DFSZ DDQM ADEQ"_s,
        true,
        { &D::setDMOD, &D::setTMID, &D::setRATEA, &D::setRATEB, &D::setVGN1,  &D::setVGN2,  &D::setLBWB,  &D::setLBWC,
          &D::setSWRG, &D::setSWRT, &D::setVIDP,  &D::setBSDP,  &D::setBSCP,  &D::setBSCL,  &D::setBSIL,  &D::setBSIC,
          &D::setVCP1, &D::setVCP2, &D::setVLPF,  &D::setVAFL,  &D::setVAF2,  &D::setVDE1,  &D::setVDE2,  &D::setDFAQ,
          &D::setDAFC, &D::setTRKD, &D::setALBW,  &D::setASRG,  &D::setASRT,  &D::setVCFG,  &D::setBSDR,  &D::setAFMS,
          &D::setDVBW, &D::setVFIR, &D::setVFIR2, &D::setLDPCR, &D::setLDPCB, &D::setLDPCD, &D::setLDPCS, &D::setDFIR,
          &D::setVFBW, &D::setDFWD, &D::setMEAN,  &D::setBEPO,  &D::setDFSZ,  &D::setDDQM,  &D::setADEQ });
    all.insert(u"D:DREG"_s, { [](Channel *channel, const QString &text) {
                   auto *const demodulator = qobject_cast<D *>(channel);
                   if (const QStringList parts = text.split(u','); parts.size() == 2)
                       demodulator->setDREG(parts[0], parts[1]);
                   else
                       demodulator->setDREG(text);
               } });
    using T = TapeChan;
    add<T>(all, u"NAME TFREQ TGAINCH1 TGAINCH2 TGAINCMB"_s, false,
           { &T::setNAME, &T::setTFREQ, &T::setTGAINCH1, &T::setTGAINCH2, &T::setTGAINCMB });
    using K = TmoipCard;
    add<K>(all, u"NAME ADDR MASK GWAY PORT TSRC NTPS COMT"_s, false,
           { &K::setNAME, &K::setADDR, &K::setMASK, &K::setGWAY, &K::setPORT, &K::setTSRC, &K::setNTP, &K::setCOMT });
    using S = TmoipChan;
    const QList<void (S::*)(const QString &)> ofStream{ &S::setNAME, &S::setFLOW, &S::setPROT, &S::setRMIP, &S::setPORT,
                                                        &S::setHEAD, &S::setBUFF, &S::setIMTU, &S::setRBUF, &S::setINPZ,
                                                        &S::setID10, &S::setSPRT, &S::setENDN };
    const QStringList streamNames = u"NAME FLOW PROT RMIP PORT HEAD BUFF MTUS RBUF INPZ ID10 SPRT ENDN"_s.split(u' ');
    for (qsizetype i = 0; i < streamNames.size(); ++i)
        all.insert(u"TM-:"_s + streamNames[i], { of(ofStream[i]) });
    add<SpectralChan>(all, u"NAME SPAN DATA"_s, false,
                      { &SpectralChan::setNAME, &SpectralChan::setSpan, &SpectralChan::setData });
    all.insert(u"S:NAME"_s, { of(&Channel::setNAME) });
    return all;
}

/// "R1:FREQ:2250.5", in its parts.
struct Message
{
    explicit Message(const QString &text)
        : address(text.section(u':', 0, 0))
        , mnemonic(text.section(u':', 1, 1))
        , data(text.section(u':', 2))
        , key((address + u':' + mnemonic).toLatin1())
    {
    }

    QString address, mnemonic, data;
    QByteArray key;
};

} // namespace

QString kindOf(const QString &address)
{
    const QString letters = QString(address).remove(QRegularExpression(u"[0-9].*"_s));
    return address.contains(u'-') && !address.endsWith(u"-0"_s) ? letters + u'-' : letters;
}

const Settings &channelSettings()
{
    static const Settings settings = everySetter();
    return settings;
}

ChannelBench::ChannelBench(const QByteArrayList &cards)
{
    bench.fit(cards);
    if (!start() || !idle())
        qFatal("the chassis does not start");
    far.clear();
    for (const Channel *channel : everyChannel())
        follow(channel);
    fillScript();
}

QList<Channel *> ChannelBench::everyChannel() const
{
    QList<Channel *> all = link.channels();
    for (const Channel *channel : link.channels())
        all += channel->findChildren<Channel *>();
    return all;
}

void ChannelBench::follow(const Channel *channel)
{
    QObject::connect(channel, &Channel::SettingChanged, &link,
                     [this, channel](const QString &module, const QString &mnemonic, const QString &data) {
                         QStringList words{ channel->address(), module, mnemonic, data };
                         words.removeDuplicates();
                         noteRequests();
                         m_record += words.join(u' ');
                     });
}

Channel *ChannelBench::channel(const QString &address) const
{
    for (Channel *candidate : everyChannel()) {
        if (candidate->address() == address)
            return candidate;
    }
    return nullptr;
}

void ChannelBench::fillScript()
{
    m_script.on(u"refuse"_s, [this](const QString &key) { far.refuse(key.toLatin1()); });
    m_script.on(u"report"_s, [this](const QString &frame) { far.sendFrame(frame.toLatin1()); });
    m_script.on(u"set"_s, [this](const QString &sets) {
        for (const QString &text : sets.split(u" & "_s)) {
            const Message set(text);
            channelSettings()[kindOf(set.address) + u':' + set.mnemonic].set(channel(set.address), set.data);
        }
    });
    m_script.on(u"ask"_s, [this](const QString &text) {
        const Message query(text);
        far.setValue(query.key, query.data.toLatin1());
        queue(link.channels().value(1), query.address, query.mnemonic, {}, StandardCommand::Query);
    });
    m_script.on(u"lose"_s, [this](const QString &text) {
        const Message set(text);
        far.ignore(set.key);
        queue(link.channels().value(1), set.address, set.mnemonic, set.data, StandardCommand::Set);
        if (far.waitForFrame(text.toLatin1()))
            link.StartTimeOutTmr(1);
    });
}

QString ChannelBench::play(const QString &lines)
{
    QStringList record;
    m_script.play(lines, [&] { record += takeRecord(); });
    return record.join(u"; "_s);
}

QStringList ChannelBench::takeRecord()
{
    if (!idle())
        return { u"no answer"_s };
    noteRequests();
    return std::exchange(m_record, {});
}

void ChannelBench::noteRequests()
{
    for (const QByteArray &frame : far.frames())
        m_record += QString::fromLatin1(frame);
    m_record.removeAll(u"U0:VERTSKB"_s);
    far.clear();
}
