#pragma once

#include "channels/Channel.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

class EyeConstData;

/// Model of one demodulator channel.
///
/// Values are wire text: list positions counted from 0, on/off as "0" and "1"; "Unknown" until the card has answered.
/// Nine settings are registers of the card, read with "RDRG" and written with "CDRG". The older cards take three of
/// them as commands of their own instead. The source of the eye pattern and scope is chosen on the system address.
class DmdChan : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "D" };

    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView DLCK{ "DLCK" }, BLCK{ "BLCK" }, FOFF{ "FOFF" }, PDEV{ "PDEV" },
            VLV1{ "VLV1" }, DMLS{ "DMLS" }, IFFL{ "IFFL" }, VFFL{ "VFFL" }, VFLS{ "VFLS" }, DMOD{ "DMOD" },
            SDM1{ "SDM1" }, SDM2{ "SDM2" }, SDM3{ "SDM3" }, VCFG{ "VCFG" }, BSDR{ "BSDR" }, ALBW{ "ALBW" },
            ASRG{ "ASRG" }, ASRT{ "ASRT" }, TMID{ "TMID" }, AFMS{ "AFMS" }, VGN1{ "VGN1" }, VGN2{ "VGN2" },
            DVBW{ "DVBW" }, RATEA{ "RATEA" }, RATEB{ "RATEB" }, VFBW{ "VFBW" }, CPT0{ "CPT0" }, CPT1{ "CPT1" },
            CPT2{ "CPT2" }, CPT3{ "CPT3" }, CPT4{ "CPT4" }, CPT5{ "CPT5" }, CPT6{ "CPT6" }, CPT7{ "CPT7" },
            VIDP{ "VIDP" }, BSDP{ "BSDP" }, BSCP{ "BSCP" }, BSCL{ "BSCL" }, BSIL{ "BSIL" }, VCP1{ "VCP1" },
            VCP2{ "VCP2" }, VLPF{ "VLPF" }, BSIC{ "BSIC" }, DFAQ{ "DFAQ" }, DFIR{ "DFIR" }, DAFC{ "DAFC" },
            LBWB{ "LBWB" }, LBWC{ "LBWC" }, SWRG{ "SWRG" }, SWRT{ "SWRT" }, TRKD{ "TRKD" }, VDE1{ "VDE1" },
            VDE2{ "VDE2" }, DDCF{ "DDCF" }, DSDM{ "DSDM" }, CDRG{ "CDRG" }, RDRG{ "RDRG" }, DREG{ "DREG" },
            DDQM{ "DDQM" }, DFSZ{ "DFSZ" }, DFWD{ "DFWD" }, MEAN{ "MEAN" }, BEPO{ "BEPO" }, FGA1{ "FGA1" },
            FGA2{ "FGA2" }, MPUV{ "MPUV" }, ADEQ{ "ADEQ" }, VFIR{ "VFIR" }, VAFL{ "VAFL" }, VAF2{ "VAF2" },
            VFIR2{ "VFIR2" }, DEQE{ "DEQE" }, BTEN{ "BTEN" }, BTTL{ "BTTL" }, REST{ "REST" }, BTMO{ "BTMO" },
            BTER{ "BTER" }, BERG{ "BERG" }, BTCB{ "BTCB" }, BTCE{ "BTCE" }, BERC{ "BERC" }, BTLK{ "BTLK" },
            BTLS{ "BTLS" }, BETI{ "BETI" }, BAVL{ "BAVL" }, LDPCR{ "LDPCR" }, LDPCB{ "LDPCB" }, LDPCD{ "LDPCD" },
            LDPCS{ "LDPCS" }, VITE{ "VITE" }, BMUX{ "BMUX" }, CDS1{ "CDS1" }, FBPW{ "FBPW" }, WPFM{ "WPFM" },
            FSPT{ "FSPT" }, FSLN{ "FSLN" }, THRS{ "THRS" }, FSLK{ "FSLK" }, SCBE{ "SCBE" }, SRT0{ "SRT0" },
            B0LB{ "B0LB" }, FCS0{ "FCS0" }, MFS0{ "MFS0" }, DC0E{ "DC0E" }, AG0E{ "AG0E" }, CF0E{ "CF0E" },
            MF0E{ "MF0E" }, SEI0{ "SEI0" }, HI0Z{ "HI0Z" }, BS0L{ "BS0L" }, AFIR{ "AFIR" }, AVF1{ "AVF1" },
            AVF2{ "AVF2" }, AVF3{ "AVF3" };
        // Without a place in the card's list; DSRC stands for what SDM1 to SDM3 choose
        static constexpr QLatin1StringView CSFQ{ "CSFQ" }, CSDR{ "CSDR" }, CSLB{ "CSLB" }, CSLC{ "CSLC" },
            DQMON{ "DQMON" }, DQMFS{ "DQMFS" }, MSE0{ "MSE0" }, DSRC{ "DSRC" };
    };
    struct RemoteCommands : Commands
    {
        static constexpr QLatin1StringView EYEP{ "EYEP" };
    };

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        using Catalogue::kReading;
        using Catalogue::kShown;
        constexpr auto kOwn = Queried | Settable | kShown; // a change concerns this channel alone
        constexpr auto kShared = kOwn | ToSlaves;          // a change goes to the slaved demodulators too
        constexpr auto kAlways = kOwn | AlwaysSent;
        constexpr QLatin1StringView kUnknown("Unknown");
        constexpr QLatin1StringView kUknown("Uknown"); // what the later groups of settings begin with
        return std::to_array<Catalogue::Row>({
            { Commands::NAME, Setting, kOwn, QLatin1StringView("Chan Name") },
            { Commands::DMLS, Setting, Queried | kShown },
            { Commands::IFFL, Setting, Queried | kShown },
            { Commands::VFFL, Setting, Queried | kShown },
            { Commands::VFLS, Setting, Queried | kShown },
            { Commands::DMOD, Setting, kShared },
            { Commands::DSRC, Setting, kOwn },
            { Commands::VCFG, Setting, kShared },
            { Commands::BSDR, Setting, kShared },
            { Commands::ALBW, Setting, kShared },
            { Commands::ASRG, Setting, kShared },
            { Commands::ASRT, Setting, kShared },
            { Commands::TMID, Setting, kShared },
            { Commands::AFMS, Setting, kShared },
            { Commands::VGN1, Setting, kShared },
            { Commands::VGN2, Setting, kShared },
            { Commands::DVBW, Setting, kShared },
            { Commands::RATEA, Setting, kShared },
            { Commands::RATEB, Setting, kShared },
            { Commands::VFBW, Setting, kShared },
            { Commands::CPT0, Setting, kOwn },
            { Commands::CPT1, Setting, kOwn },
            { Commands::CPT2, Setting, kOwn },
            { Commands::CPT3, Setting, kOwn },
            { Commands::CPT4, Setting, kOwn },
            { Commands::CPT5, Setting, kOwn },
            { Commands::CPT6, Setting, kOwn },
            { Commands::CPT7, Setting, kOwn },
            { Commands::VIDP, Setting, kShared },
            { Commands::BSDP, Setting, kShared },
            { Commands::BSCP, Setting, kShared },
            { Commands::BSCL, Setting, kShared },
            { Commands::BSIL, Setting, kShared },
            { Commands::VCP1, Setting, kShared },
            { Commands::VCP2, Setting, kShared },
            { Commands::VLPF, Setting, kShared },
            { Commands::BSIC, Setting, kShared },
            { Commands::DFAQ, Setting, kShared },
            { Commands::DFIR, Setting, kShared },
            { Commands::VFIR, Setting, kShared },
            { Commands::VFIR2, Setting, kShared },
            { Commands::DAFC, Setting, kShared },
            { Commands::LBWB, Setting, kShared | InPercent },
            { Commands::LBWC, Setting, kShared | InPercent },
            { Commands::SWRG, Setting, kShared },
            { Commands::SWRT, Setting, kShared },
            { Commands::TRKD, Setting, kShared },
            { Commands::VDE1, Setting, kShared },
            { Commands::VDE2, Setting, kShared },
            { Commands::DDCF, Setting, Queried | kShown },
            { Commands::DSDM, Setting, kOwn },
            { Commands::DDQM, Setting, kShared },
            { Commands::DFSZ, Setting, kShared },
            { Commands::DFWD, Setting, kShared },
            { Commands::MEAN, Setting, kShared },
            { Commands::BEPO, Setting, kShared },
            { Commands::ADEQ, Setting, kShared },
            { Commands::FGA1, Setting, Queried | kShown },
            { Commands::FGA2, Setting, Queried | kShown },
            { Commands::MPUV, Setting, Queried | kShown },
            { Commands::VAFL, Setting, kShared },
            { Commands::VAF2, Setting, kShared },
            { Commands::BTEN, Setting, kOwn },
            { Commands::BTTL, Setting, kOwn },
            { Commands::REST, Setting, kAlways },
            { Commands::BTMO, Setting, kOwn },
            { Commands::BTER, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BERG, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BTCB, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BTCE, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BERC, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BTLK, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BTLS, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BETI, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::BAVL, Status, Queried | kReading, kUnknown, kUknown },
            { Commands::LDPCR, Setting, kShared, kUknown },
            { Commands::LDPCB, Setting, kShared, kUknown },
            { Commands::LDPCD, Setting, kShared, kUknown },
            { Commands::LDPCS, Setting, kShared, kUknown },
            { Commands::FBPW, Setting, kOwn, kUknown },
            { Commands::WPFM, Setting, kOwn, kUknown },
            { Commands::FSPT, Setting, kOwn, kUknown },
            { Commands::FSLN, Setting, kOwn, kUknown },
            { Commands::THRS, Setting, kOwn, kUknown },
            { Commands::FSLK, Status, Queried | kReading, kUknown },
            { Commands::SCBE, Setting, kOwn, kUknown },
            { Commands::SRT0, Setting, kOwn, kUknown },
            { Commands::B0LB, Setting, kOwn, kUknown },
            { Commands::FCS0, Setting, kOwn, kUknown },
            { Commands::MFS0, Setting, kOwn, kUknown },
            { Commands::DC0E, Setting, kOwn, kUknown },
            { Commands::AG0E, Setting, kOwn, kUknown },
            { Commands::CF0E, Setting, kOwn },
            { Commands::MF0E, Setting, kOwn },
            { Commands::SEI0, Setting, kOwn },
            { Commands::HI0Z, Setting, kOwn },
            { Commands::BS0L, Status, Queried | Settable | kReading },
            { Commands::AFIR, Setting, kAlways },
            { Commands::AVF1, Setting, kAlways },
            { Commands::AVF2, Setting, kAlways },
            { Commands::AVF3, Setting, kAlways },
            { Commands::CSFQ, Setting, kAlways },
            { Commands::CSDR, Setting, kAlways },
            { Commands::CSLB, Setting, kAlways | InPercent },
            { Commands::CSLC, Setting, kAlways | InPercent },
            { Commands::DQMON, Special, Queried },
            { Commands::DQMFS, Special, Queried },
            { Commands::DEQE, Special, Queried },
            { Commands::SLAVE, Setting, NoFlags, QLatin1StringView("0") },
            { Commands::VITE, Setting, Settable | kShown, kUknown },
            { Commands::BMUX, Setting, Settable | kShown, kUknown },
            { Commands::CDS1, Setting, Settable | kShown, kUknown },
            { Commands::DLCK, Status, kReading },
            { Commands::BLCK, Status, kReading },
            { Commands::FOFF, Status, kReading },
            { Commands::PDEV, Status, kReading },
            { Commands::VLV1, Status, kReading },
            { Commands::MSE0, Status, NoPrevious | kReading },
            { Commands::SDM1, Special, NoFlags },
            { Commands::SDM2, Special, NoFlags },
            { Commands::SDM3, Special, NoFlags },
            { Commands::RDRG, Special, ToRemote | Series },
            { Commands::CDRG, Special, NoFlags },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param channel "1", "2" or "3"
    /// @param link    carries the channel's commands; outlives it
    /// @param directDqmCommands whether the card takes "DQMON", "DQMFS" and "DEQE" instead of registers
    DmdChan(QObject *parent, const QString &channel, ChannelLink *link, bool directDqmCommands);

    [[nodiscard]] QString getDMLS() const { return valueOf(at(Commands::DMLS)); }
    [[nodiscard]] QString getIFFL() const { return valueOf(at(Commands::IFFL)); }
    [[nodiscard]] QString getVFFL() const { return valueOf(at(Commands::VFFL)); }
    [[nodiscard]] QString getVFLS() const { return valueOf(at(Commands::VFLS)); }
    [[nodiscard]] QString getDMOD() const { return valueOf(at(Commands::DMOD)); } ///< mode code
    [[nodiscard]] QString getDSRC() const
    {
        return valueOf(at(Commands::DSRC));
    } ///< "1", "2" receivers, "3" combiner, "A" to "C" auxiliary inputs
    [[nodiscard]] QString getVCFG() const { return valueOf(at(Commands::VCFG)); }
    [[nodiscard]] QString getBSDR() const { return valueOf(at(Commands::BSDR)); }
    [[nodiscard]] QString getALBW() const { return valueOf(at(Commands::ALBW)); }
    [[nodiscard]] QString getASRG() const { return valueOf(at(Commands::ASRG)); }
    [[nodiscard]] QString getASRT() const { return valueOf(at(Commands::ASRT)); }
    [[nodiscard]] QString getTMID() const { return valueOf(at(Commands::TMID)); } ///< two decimals; "0.00" automatic
    [[nodiscard]] QString getAFMS() const { return valueOf(at(Commands::AFMS)); }
    [[nodiscard]] QString getVGN1() const { return valueOf(at(Commands::VGN1)); }   ///< 0 to 255, or dB
    [[nodiscard]] QString getVGN2() const { return valueOf(at(Commands::VGN2)); }   ///< 0 to 255, or dB
    [[nodiscard]] QString getDVBW() const { return valueOf(at(Commands::DVBW)); }   ///< Hz
    [[nodiscard]] QString getRATEA() const { return valueOf(at(Commands::RATEA)); } ///< bit/s
    [[nodiscard]] QString getRATEB() const { return valueOf(at(Commands::RATEB)); } ///< bit/s
    [[nodiscard]] QString getVFBW() const { return valueOf(at(Commands::VFBW)); }
    [[nodiscard]] QString getCPT0() const { return valueOf(at(Commands::CPT0)); }
    [[nodiscard]] QString getCPT1() const { return valueOf(at(Commands::CPT1)); }
    [[nodiscard]] QString getCPT2() const { return valueOf(at(Commands::CPT2)); }
    [[nodiscard]] QString getCPT3() const { return valueOf(at(Commands::CPT3)); }
    [[nodiscard]] QString getCPT4() const { return valueOf(at(Commands::CPT4)); }
    [[nodiscard]] QString getCPT5() const { return valueOf(at(Commands::CPT5)); }
    [[nodiscard]] QString getCPT6() const { return valueOf(at(Commands::CPT6)); }
    [[nodiscard]] QString getCPT7() const { return valueOf(at(Commands::CPT7)); }
    [[nodiscard]] QString getVIDP() const { return valueOf(at(Commands::VIDP)); }
    [[nodiscard]] QString getBSDP() const { return valueOf(at(Commands::BSDP)); }
    [[nodiscard]] QString getBSCP() const { return valueOf(at(Commands::BSCP)); }
    [[nodiscard]] QString getBSCL() const { return valueOf(at(Commands::BSCL)); }
    [[nodiscard]] QString getBSIL() const { return valueOf(at(Commands::BSIL)); }
    [[nodiscard]] QString getVCP1() const { return valueOf(at(Commands::VCP1)); }
    [[nodiscard]] QString getVCP2() const { return valueOf(at(Commands::VCP2)); }
    [[nodiscard]] QString getVLPF() const { return valueOf(at(Commands::VLPF)); }
    [[nodiscard]] QString getBSIC() const { return valueOf(at(Commands::BSIC)); }
    [[nodiscard]] QString getDFAQ() const { return valueOf(at(Commands::DFAQ)); }
    [[nodiscard]] QString getDFIR() const
    {
        return valueOf(at(Commands::DFIR));
    } ///< position in the IF filters; "-1" automatic
    [[nodiscard]] QString getVFIR() const { return valueOf(at(Commands::VFIR)); }
    [[nodiscard]] QString getVFIR2() const { return valueOf(at(Commands::VFIR2)); }
    [[nodiscard]] QString getDAFC() const { return valueOf(at(Commands::DAFC)); }
    [[nodiscard]] QString getLBWB() const { return valueOf(at(Commands::LBWB)); } ///< fraction
    [[nodiscard]] QString getLBWC() const { return valueOf(at(Commands::LBWC)); } ///< fraction
    [[nodiscard]] QString getSWRG() const { return valueOf(at(Commands::SWRG)); } ///< kHz
    [[nodiscard]] QString getSWRT() const { return valueOf(at(Commands::SWRT)); } ///< Hz/s
    [[nodiscard]] QString getTRKD() const { return valueOf(at(Commands::TRKD)); }
    [[nodiscard]] QString getVDE1() const { return valueOf(at(Commands::VDE1)); }
    [[nodiscard]] QString getVDE2() const { return valueOf(at(Commands::VDE2)); }
    [[nodiscard]] QString getDDCF() const { return valueOf(at(Commands::DDCF)); }
    [[nodiscard]] QString getDSDM() const
    {
        return valueOf(at(Commands::DSDM));
    } ///< "0" off, "1" constellation, "2" eye pattern, "3" serial data
    [[nodiscard]] QString getDDQM() const { return valueOf(at(Commands::DDQM)); }
    [[nodiscard]] QString getDFSZ() const { return valueOf(at(Commands::DFSZ)); } ///< four hexadecimal digits
    [[nodiscard]] QString getDFWD() const { return valueOf(at(Commands::DFWD)); } ///< four hexadecimal digits
    [[nodiscard]] QString getMEAN() const
    {
        return valueOf(at(Commands::MEAN));
    } ///< four hexadecimal digits; ffff is 1
    [[nodiscard]] QString getBEPO() const
    {
        return valueOf(at(Commands::BEPO));
    } ///< four hexadecimal digits, two's complement
    [[nodiscard]] QString getADEQ() const { return valueOf(at(Commands::ADEQ)); }
    [[nodiscard]] QString getFGA1() const { return valueOf(at(Commands::FGA1)); } ///< decimal
    [[nodiscard]] QString getFGA2() const { return valueOf(at(Commands::FGA2)); } ///< decimal
    [[nodiscard]] QString getMPUV() const { return valueOf(at(Commands::MPUV)); } ///< decimal
    [[nodiscard]] QString getVAFL() const { return valueOf(at(Commands::VAFL)); }
    [[nodiscard]] QString getVAF2() const { return valueOf(at(Commands::VAF2)); }
    [[nodiscard]] QString getBTEN() const { return valueOf(at(Commands::BTEN)); }
    [[nodiscard]] QString getBTTL() const { return valueOf(at(Commands::BTTL)); }
    [[nodiscard]] QString getREST() const { return valueOf(at(Commands::REST)); }
    [[nodiscard]] QString getBTMO() const { return valueOf(at(Commands::BTMO)); }
    [[nodiscard]] QString getBTER() const { return valueOf(at(Commands::BTER)); }
    [[nodiscard]] QString getBERG() const { return valueOf(at(Commands::BERG)); }
    [[nodiscard]] QString getBTCB() const { return valueOf(at(Commands::BTCB)); }
    [[nodiscard]] QString getBTCE() const { return valueOf(at(Commands::BTCE)); }
    [[nodiscard]] QString getBERC() const { return valueOf(at(Commands::BERC)); }
    [[nodiscard]] QString getBTLK() const { return valueOf(at(Commands::BTLK)); }
    [[nodiscard]] QString getBTLS() const { return valueOf(at(Commands::BTLS)); }
    [[nodiscard]] QString getBETI() const { return valueOf(at(Commands::BETI)); }
    [[nodiscard]] QString getBAVL() const { return valueOf(at(Commands::BAVL)); }
    [[nodiscard]] QString getLDPCR() const { return valueOf(at(Commands::LDPCR)); }
    [[nodiscard]] QString getLDPCB() const { return valueOf(at(Commands::LDPCB)); }
    [[nodiscard]] QString getLDPCD() const { return valueOf(at(Commands::LDPCD)); }
    [[nodiscard]] QString getLDPCS() const { return valueOf(at(Commands::LDPCS)); }
    [[nodiscard]] QString getFBPW() const { return valueOf(at(Commands::FBPW)); }
    [[nodiscard]] QString getWPFM() const { return valueOf(at(Commands::WPFM)); }
    [[nodiscard]] QString getFSPT() const { return valueOf(at(Commands::FSPT)); }
    [[nodiscard]] QString getFSLN() const { return valueOf(at(Commands::FSLN)); }
    [[nodiscard]] QString getTHRS() const { return valueOf(at(Commands::THRS)); }
    [[nodiscard]] QString getFSLK() const { return valueOf(at(Commands::FSLK)); }
    [[nodiscard]] QString getSCBE() const { return valueOf(at(Commands::SCBE)); }
    [[nodiscard]] QString getSRT0() const { return valueOf(at(Commands::SRT0)); }
    [[nodiscard]] QString getB0LB() const { return valueOf(at(Commands::B0LB)); }
    [[nodiscard]] QString getFCS0() const { return valueOf(at(Commands::FCS0)); }
    [[nodiscard]] QString getMFS0() const { return valueOf(at(Commands::MFS0)); }
    [[nodiscard]] QString getDC0E() const { return valueOf(at(Commands::DC0E)); }
    [[nodiscard]] QString getAG0E() const { return valueOf(at(Commands::AG0E)); }
    [[nodiscard]] QString getCF0E() const { return valueOf(at(Commands::CF0E)); }
    [[nodiscard]] QString getMF0E() const { return valueOf(at(Commands::MF0E)); }
    [[nodiscard]] QString getSEI0() const { return valueOf(at(Commands::SEI0)); }
    [[nodiscard]] QString getHI0Z() const { return valueOf(at(Commands::HI0Z)); }
    [[nodiscard]] QString getBS0L() const { return valueOf(at(Commands::BS0L)); }
    [[nodiscard]] QString getAFIR() const { return valueOf(at(Commands::AFIR)); }
    [[nodiscard]] QString getAVF1() const { return valueOf(at(Commands::AVF1)); }
    [[nodiscard]] QString getAVF2() const { return valueOf(at(Commands::AVF2)); }
    [[nodiscard]] QString getAVF3() const { return valueOf(at(Commands::AVF3)); }
    [[nodiscard]] QString getCSFQ() const { return valueOf(at(Commands::CSFQ)); }
    [[nodiscard]] QString getCSDR() const { return valueOf(at(Commands::CSDR)); }
    [[nodiscard]] QString getCSLB() const { return valueOf(at(Commands::CSLB)); } ///< fraction
    [[nodiscard]] QString getCSLC() const { return valueOf(at(Commands::CSLC)); } ///< fraction
    [[nodiscard]] QString getVITE() const { return valueOf(at(Commands::VITE)); }
    [[nodiscard]] QString getBMUX() const { return valueOf(at(Commands::BMUX)); }
    [[nodiscard]] QString getCDS1() const { return valueOf(at(Commands::CDS1)); }
    [[nodiscard]] QString getDLCK() const { return valueOf(at(Commands::DLCK)); } ///< "1" locked
    [[nodiscard]] QString getBLCK() const { return valueOf(at(Commands::BLCK)); } ///< "1" locked
    [[nodiscard]] QString getFOFF() const { return valueOf(at(Commands::FOFF)); } ///< kHz
    [[nodiscard]] QString getPDEV() const { return valueOf(at(Commands::PDEV)); } ///< Hz
    [[nodiscard]] QString getVLV1() const { return valueOf(at(Commands::VLV1)); } ///< mV

    void setDMOD(const QString &value) { submit(settableAt(Commands::DMOD), value); }
    void setDSRC(const QString &value) { submit(settableAt(Commands::DSRC), value); }
    void setVCFG(const QString &value) { submit(settableAt(Commands::VCFG), value); }
    void setBSDR(const QString &value) { submit(settableAt(Commands::BSDR), value); }
    void setALBW(const QString &value) { submit(settableAt(Commands::ALBW), value); }
    void setASRG(const QString &value) { submit(settableAt(Commands::ASRG), value); }
    void setASRT(const QString &value) { submit(settableAt(Commands::ASRT), value); }
    void setTMID(const QString &value) { submit(settableAt(Commands::TMID), value); }
    void setAFMS(const QString &value) { submit(settableAt(Commands::AFMS), value); }
    void setVGN1(const QString &value) { submit(settableAt(Commands::VGN1), value); }
    void setVGN2(const QString &value) { submit(settableAt(Commands::VGN2), value); }
    void setDVBW(const QString &value) { submit(settableAt(Commands::DVBW), value); }
    void setRATEA(const QString &value) { submit(settableAt(Commands::RATEA), value); }
    void setRATEB(const QString &value) { submit(settableAt(Commands::RATEB), value); }
    void setVFBW(const QString &value) { submit(settableAt(Commands::VFBW), value); }
    void setCPT0(const QString &value) { submit(settableAt(Commands::CPT0), value); }
    void setCPT1(const QString &value) { submit(settableAt(Commands::CPT1), value); }
    void setCPT2(const QString &value) { submit(settableAt(Commands::CPT2), value); }
    void setCPT3(const QString &value) { submit(settableAt(Commands::CPT3), value); }
    void setCPT4(const QString &value) { submit(settableAt(Commands::CPT4), value); }
    void setCPT5(const QString &value) { submit(settableAt(Commands::CPT5), value); }
    void setCPT6(const QString &value) { submit(settableAt(Commands::CPT6), value); }
    void setCPT7(const QString &value) { submit(settableAt(Commands::CPT7), value); }
    void setVIDP(const QString &value) { submit(settableAt(Commands::VIDP), value); }
    void setBSDP(const QString &value) { submit(settableAt(Commands::BSDP), value); }
    void setBSCP(const QString &value) { submit(settableAt(Commands::BSCP), value); }
    void setBSCL(const QString &value) { submit(settableAt(Commands::BSCL), value); }
    void setBSIL(const QString &value) { submit(settableAt(Commands::BSIL), value); }
    void setVCP1(const QString &value) { submit(settableAt(Commands::VCP1), value); }
    void setVCP2(const QString &value) { submit(settableAt(Commands::VCP2), value); }
    void setVLPF(const QString &value) { submit(settableAt(Commands::VLPF), value); }
    void setBSIC(const QString &value) { submit(settableAt(Commands::BSIC), value); }
    void setDFAQ(const QString &value) { submit(settableAt(Commands::DFAQ), value); }
    void setDFIR(const QString &value) { submit(settableAt(Commands::DFIR), value); }
    void setVFIR(const QString &value) { submit(settableAt(Commands::VFIR), value); }
    void setVFIR2(const QString &value) { submit(settableAt(Commands::VFIR2), value); }
    void setDAFC(const QString &value) { submit(settableAt(Commands::DAFC), value); }
    void setLBWB(const QString &value) { submit(settableAt(Commands::LBWB), value); }
    void setLBWC(const QString &value) { submit(settableAt(Commands::LBWC), value); }
    void setSWRG(const QString &value) { submit(settableAt(Commands::SWRG), value); }
    void setSWRT(const QString &value) { submit(settableAt(Commands::SWRT), value); }
    void setTRKD(const QString &value) { submit(settableAt(Commands::TRKD), value); }
    void setVDE1(const QString &value) { submit(settableAt(Commands::VDE1), value); }
    void setVDE2(const QString &value) { submit(settableAt(Commands::VDE2), value); }
    void setDSDM(const QString &value) { submit(settableAt(Commands::DSDM), value); }
    void setDDQM(const QString &value) { submit(settableAt(Commands::DDQM), value); }
    void setDFSZ(const QString &value) { submit(settableAt(Commands::DFSZ), value); }
    void setDFWD(const QString &value) { submit(settableAt(Commands::DFWD), value); }
    void setMEAN(const QString &value) { submit(settableAt(Commands::MEAN), value); }
    void setBEPO(const QString &value) { submit(settableAt(Commands::BEPO), value); }
    void setADEQ(const QString &value) { submit(settableAt(Commands::ADEQ), value); }
    void setVAFL(const QString &value) { submit(settableAt(Commands::VAFL), value); }
    void setVAF2(const QString &value) { submit(settableAt(Commands::VAF2), value); }
    void setBTEN(const QString &value) { submit(settableAt(Commands::BTEN), value); }
    void setBTTL(const QString &value) { submit(settableAt(Commands::BTTL), value); }
    void setREST(const QString &value) { submit(settableAt(Commands::REST), value); }
    void setBTMO(const QString &value) { submit(settableAt(Commands::BTMO), value); }
    void setLDPCR(const QString &value) { submit(settableAt(Commands::LDPCR), value); }
    void setLDPCB(const QString &value) { submit(settableAt(Commands::LDPCB), value); }
    void setLDPCD(const QString &value) { submit(settableAt(Commands::LDPCD), value); }
    void setLDPCS(const QString &value) { submit(settableAt(Commands::LDPCS), value); }
    void setFBPW(const QString &value) { submit(settableAt(Commands::FBPW), value); }
    void setWPFM(const QString &value) { submit(settableAt(Commands::WPFM), value); }
    void setFSPT(const QString &value) { submit(settableAt(Commands::FSPT), value); }
    void setFSLN(const QString &value) { submit(settableAt(Commands::FSLN), value); }
    void setTHRS(const QString &value) { submit(settableAt(Commands::THRS), value); }
    void setSCBE(const QString &value) { submit(settableAt(Commands::SCBE), value); }
    void setSRT0(const QString &value) { submit(settableAt(Commands::SRT0), value); }
    void setB0LB(const QString &value) { submit(settableAt(Commands::B0LB), value); }
    void setFCS0(const QString &value) { submit(settableAt(Commands::FCS0), value); }
    void setMFS0(const QString &value) { submit(settableAt(Commands::MFS0), value); }
    void setDC0E(const QString &value) { submit(settableAt(Commands::DC0E), value); }
    void setAG0E(const QString &value) { submit(settableAt(Commands::AG0E), value); }
    void setCF0E(const QString &value) { submit(settableAt(Commands::CF0E), value); }
    void setMF0E(const QString &value) { submit(settableAt(Commands::MF0E), value); }
    void setSEI0(const QString &value) { submit(settableAt(Commands::SEI0), value); }
    void setHI0Z(const QString &value) { submit(settableAt(Commands::HI0Z), value); }
    void setBS0L(const QString &value) { submit(settableAt(Commands::BS0L), value); }
    void setAFIR(const QString &value) { submit(settableAt(Commands::AFIR), value); }
    void setAVF1(const QString &value) { submit(settableAt(Commands::AVF1), value); }
    void setAVF2(const QString &value) { submit(settableAt(Commands::AVF2), value); }
    void setAVF3(const QString &value) { submit(settableAt(Commands::AVF3), value); }
    void setCSFQ(const QString &value) { submit(settableAt(Commands::CSFQ), value); }
    void setCSDR(const QString &value) { submit(settableAt(Commands::CSDR), value); }
    void setCSLB(const QString &value) { submit(settableAt(Commands::CSLB), value); }
    void setCSLC(const QString &value) { submit(settableAt(Commands::CSLC), value); }
    void setVITE(const QString &value) { submit(settableAt(Commands::VITE), value); }
    void setBMUX(const QString &value) { submit(settableAt(Commands::BMUX), value); }
    void setCDS1(const QString &value) { submit(settableAt(Commands::CDS1), value); }

    /// Raw text of a card register: four hexadecimal digits, "Unknown" until read.
    /// @param number two hexadecimal digits; for any that holds no setting the last reply about such a one, whole
    [[nodiscard]] QString getDREG(const QString &number) const;
    /// Writes one of the nine registers that hold settings, unless it has that text already.
    void setDREG(const QString &number, const QString &value);
    /// Writes any register.
    /// @param text number and value as the card takes them
    void setDREG(const QString &text);

    /// Names of the modes that the card offers, in its order.
    [[nodiscard]] const QStringList &demodModes() const { return m_demodModes; }
    /// "Auto" and the IF FIR filter bandwidths; DFIR is a position in this list, less one.
    [[nodiscard]] const QStringList &ifFilters() const { return m_ifFilters; }
    /// Video filter bandwidths; VFIR is a position in this list.
    [[nodiscard]] const QStringList &videoFilters() const { return m_videoFilters; }
    /// Video filter bandwidths as the card names them; VFBW is a position in this list.
    [[nodiscard]] const QStringList &videoFilterBandwidths() const { return m_videoFilterBandwidths; }
    /// Last value of a mnemonic that the card reported and the catalogue does not hold; null if there was none.
    [[nodiscard]] QString unknownValue(const QString &mnemonic) const { return m_unknownValues.value(mnemonic).told; }

    using Channel::ProcessCmd;
    void ProcessCmd(const StandardCommand &command) override;

    /// Keeps a block of the eye link and hands it on to the remote client.
    void ProcessEyeConstData(const EyeConstData &data);
    /// Bytes of the last block: samples of the eye pattern or constellation, or serial data.
    [[nodiscard]] const QByteArray &lastEyeBlock() const { return m_lastEyeBlock; }

protected:
    void requestSettings(StandardCommand::Priority priority) override;
    [[nodiscard]] Request queryOf(int row) const override;
    [[nodiscard]] Request setOf(int row, const QString &value) const override;
    [[nodiscard]] bool isWrittenWhole(int row) const override;
    [[nodiscard]] bool isSameValue(int row, const QString &value, const QString &held) const override;
    [[nodiscard]] QString normalized(int row, const QString &value) const override;
    void processSpecial(int row, const Report &report) override;
    void processUnknown(const Report &report) override;
    void settingStored(int row) override;
    [[nodiscard]] bool isSlaving() const override;
    /// The first query of a mnemonic that the catalogue does not hold goes to the card as well, and every one of those
    /// that the head keeps no value of under their own name. While 16 of them are open, more are refused.
    [[nodiscard]] std::optional<QString> answerToQuery(const QString &mnemonic) override;
    [[nodiscard]] bool isHeldInLatin1(const QString &mnemonic) const override;
    /// As every channel's, and what has no setter is acknowledged and left as it is.
    [[nodiscard]] bool takesSet(const QString &mnemonic, const QString &data) const override;
    void carryOutSet(const RemoteCommand &set) override;

private:
    static constexpr qsizetype kMaxUnknownValues = 1000; ///< a client may name whatever it likes
    static constexpr qsizetype kMaxOpenQuestions = 16;

    /// What is known of a mnemonic that the catalogue does not hold.
    struct UnknownValue
    {
        QString told;          ///< what a query of the client gets: what the client or the card said last
        QString inForce;       ///< what the card said last; null if it said nothing
        bool isLatin1 = false; ///< of both
    };

    /// How a register holds its setting.
    enum class RegisterForm {
        DqmBits, ///< "1" while both enabling bits are set
        Enable,  ///< "1" while the register is not zero
        Digits,  ///< the register's text itself
        Decimal, ///< the register as a decimal number
    };
    struct Register
    {
        QLatin1StringView number; ///< two hexadecimal digits
        int row;
        RegisterForm form;
        QLatin1StringView directMnemonic; ///< command and query of the older cards; empty where they use the register
    };
    static constexpr std::array kRegisters{
        Register{ QLatin1StringView("82"), Catalogue::at(kCatalogue, Commands::DDQM), RegisterForm::DqmBits,
                  Commands::DQMON },
        Register{ QLatin1StringView("84"), Catalogue::at(kCatalogue, Commands::DFSZ), RegisterForm::Digits,
                  Commands::DQMFS },
        Register{ QLatin1StringView("85"), Catalogue::at(kCatalogue, Commands::DFWD), RegisterForm::Digits, {} },
        Register{ QLatin1StringView("86"), Catalogue::at(kCatalogue, Commands::MEAN), RegisterForm::Digits, {} },
        Register{ QLatin1StringView("87"), Catalogue::at(kCatalogue, Commands::BEPO), RegisterForm::Digits, {} },
        Register{ QLatin1StringView("83"), Catalogue::at(kCatalogue, Commands::ADEQ), RegisterForm::Enable,
                  Commands::DEQE },
        Register{ QLatin1StringView("39"), Catalogue::at(kCatalogue, Commands::FGA1), RegisterForm::Decimal, {} },
        Register{ QLatin1StringView("3A"), Catalogue::at(kCatalogue, Commands::FGA2), RegisterForm::Decimal, {} },
        Register{ QLatin1StringView("3B"), Catalogue::at(kCatalogue, Commands::MPUV), RegisterForm::Decimal, {} },
    };

    [[nodiscard]] static qsizetype registerOfRow(int row);
    [[nodiscard]] static qsizetype registerNumbered(QStringView number);
    [[nodiscard]] static QString settingIn(const Register &reg, const QString &raw);
    [[nodiscard]] QString registerTextFor(qsizetype index, const QString &setting) const;
    [[nodiscard]] bool isRead(qsizetype index) const;
    void processRegister(const Report &report);
    void processDirect(const Report &report);
    void processDataSource(const Report &report);

    /// Sends a set of the remote client to the card.
    void sendCmdToLocal(const RemoteCommand &set);
    /// Asks the card for what the head keeps no value of; what it answers is reported to the remote client.
    void askCard(const QString &mnemonic);
    /// Hands a value that the catalogue does not hold on to the remote client.
    void sendCmdToRemote(const Report &report);
    void rememberUnknown(const QString &mnemonic, const UnknownValue &value);

    [[nodiscard]] QString dataSourceMnemonic() const;
    void SetUpDemodModesList(const QString &modes);

    const bool m_directDqmCommands;
    std::array<QString, kRegisters.size()> m_registers; ///< raw texts
    QStringList m_demodModes;
    QStringList m_ifFilters;
    QStringList m_videoFilters;
    QStringList m_videoFilterBandwidths;
    QHash<QString, UnknownValue> m_unknownValues;
    QStringList m_openQuestions; ///< of the remote client to the card, by mnemonic
    QByteArray m_lastEyeBlock;
};
