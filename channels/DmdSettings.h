#pragma once

#include "channels/Channel.h"
#include "channels/DmdCatalogue.h"

/// The settings and readings of a demodulator by name.
///
/// Values are wire text: list positions counted from 0, on/off as "0" and "1"; "Unknown" until the card has answered.
/// A setter asks the card for a new value.
class DmdSettings : public Channel
{
    Q_OBJECT

protected:
    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(DmdCatalogue::kTable, mnemonic); }

private:
    static consteval int settableAt(QLatin1StringView mnemonic)
    {
        return Catalogue::settableAt(DmdCatalogue::kTable, mnemonic);
    }

public:
    static constexpr QLatin1StringView ChanType{ "D" };

    using Commands = DmdCatalogue::Commands;

    [[nodiscard]] QString getDMLS() const { return valueOf(at(Commands::DMLS)); }
    [[nodiscard]] QString getIFFL() const { return valueOf(at(Commands::IFFL)); }
    [[nodiscard]] QString getVFFL() const { return valueOf(at(Commands::VFFL)); }
    [[nodiscard]] QString getVFLS() const { return valueOf(at(Commands::VFLS)); }
    [[nodiscard]] QString getDMOD() const { return valueOf(at(Commands::DMOD)); } ///< mode code
    /// "1", "2" receivers, "3" combiner, "A" to "C" auxiliary inputs
    [[nodiscard]] QString getDSRC() const { return valueOf(at(Commands::DSRC)); }
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
    /// position in the IF filters; "-1" automatic
    [[nodiscard]] QString getDFIR() const { return valueOf(at(Commands::DFIR)); }
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
    /// "0" off, "1" constellation, "2" eye pattern, "3" serial data
    [[nodiscard]] QString getDSDM() const { return valueOf(at(Commands::DSDM)); }
    [[nodiscard]] QString getDDQM() const { return valueOf(at(Commands::DDQM)); }
    [[nodiscard]] QString getDFSZ() const { return valueOf(at(Commands::DFSZ)); } ///< four hexadecimal digits
    [[nodiscard]] QString getDFWD() const { return valueOf(at(Commands::DFWD)); } ///< four hexadecimal digits
    /// four hexadecimal digits; ffff is 1
    [[nodiscard]] QString getMEAN() const { return valueOf(at(Commands::MEAN)); }
    /// four hexadecimal digits, two's complement
    [[nodiscard]] QString getBEPO() const { return valueOf(at(Commands::BEPO)); }
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

protected:
    using Channel::Channel;
};
