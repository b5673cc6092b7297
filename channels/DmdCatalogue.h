#pragma once

#include "channels/Catalogue.h"
#include "channels/Channel.h"

/// Mnemonics of a demodulator, and what the head does with each.
struct DmdCatalogue
{
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
        // DSRC stands for what SDM1 to SDM3 choose
        static constexpr QLatin1StringView CSFQ{ "CSFQ" }, CSDR{ "CSDR" }, CSLB{ "CSLB" }, CSLC{ "CSLC" },
            DQMON{ "DQMON" }, DQMFS{ "DQMFS" }, MSE0{ "MSE0" }, DSRC{ "DSRC" };
    };
    struct RemoteCommands : Commands
    {
        static constexpr QLatin1StringView EYEP{ "EYEP" };
    };

    static constexpr auto kTable = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        using Catalogue::kReading;
        using Catalogue::kShown;
        constexpr auto kOwn = Queried | Settable | kShown; // a change concerns this channel alone
        constexpr auto kShared = kOwn | ToSlaves;          // a change goes to the slaved demodulators too
        constexpr auto kAlways = kOwn | AlwaysSent;
        constexpr QLatin1StringView kUnknown("Unknown");
        constexpr QLatin1StringView kUknown("Uknown"); // start value of the later groups of settings
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
};

static_assert(Catalogue::isWellFormed(DmdCatalogue::kTable));
