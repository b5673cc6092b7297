#include "remote/wire/Catalogue.h"

#include <algorithm>
#include <array>

namespace remote {

namespace {

using View = std::string_view;

constexpr auto kIdentity = std::to_array<View>({ "SYSID", "STYPE", "VERS", "VERTSMAIN", "VERTSKB", "SYSOPT", "TLST" });

// The time runs on by itself and is never restored.
constexpr auto kSystem = std::to_array<View>({ "NAME", "TMRF", "LOGC", "ABSSI", "SLAVE" });
constexpr auto kSystemInfo = std::to_array<View>({ "TIME", "LAGC" });

// Playback and input determine the frequency ranges; the automatic bandwidth overrides the chosen one.
constexpr auto kReceiver = std::to_array<View>({ "NAME", "PLYB", "CINP", "CIF1", "CIFS", "FREQ", "AIFB", "IFBW", "AFC",
                                                 "AFCM", "AGCT", "SLPA", "SLPB", "POLA", "POLB", "IMPA", "IMPB", "CAMF",
                                                 "CAMP", "AMIP", "ACFE", "ANCF", "CATN", "MANG", "AGCZ", "AGCF" });
constexpr auto kReceiverInfo = std::to_array<View>({ "FLST", "IFLS", "SYNL", "SSLV", "MAFL", "RLST", "AGCA", "AGCB" });

constexpr auto kCombiner = std::to_array<View>({ "NAME", "CVMD", "CMOD", "IFBW", "SLPA", "SLPB", "POLA", "POLB", "IMPA",
                                                 "IMPB", "CAMF", "CAMP", "ABAL", "GCZV", "CHZC", "CHZ1", "CHZ2" });
constexpr auto kCombinerInfo =
    std::to_array<View>({ "IFLS", "CLCK", "CLCS", "AGCA", "AGCB", "CH1IN", "CH1OUT", "CH2IN", "CH2OUT", "TP2", "TP4" });

// The mode changes the rates, the rates change filters and index, and automatic settings override manual ones.
constexpr auto kDemodulator = std::to_array<View>(
    { "NAME", "DMOD", "DSDM", "RATEA", "RATEB", "BSDR", "TMID", "DFIR", "VFBW", "VFIR",  "VFIR2", "DVBW",  "AFMS",
      "ALBW", "LBWB", "LBWC", "TRKD",  "ASRG",  "SWRG", "ASRT", "SWRT", "DAFC", "DFAQ",  "DSRC",  "VCFG",  "CPT0",
      "CPT1", "CPT2", "CPT3", "CPT4",  "CPT5",  "CPT6", "CPT7", "VGN1", "VGN2", "VIDP",  "BSDP",  "BSCP",  "BSCL",
      "BSIL", "BSIC", "VCP1", "VCP2",  "VLPF",  "VAFL", "VAF2", "VDE1", "VDE2", "LDPCR", "LDPCB", "LDPCD", "LDPCS",
      "VITE", "BMUX", "CDS1", "DFSZ",  "DFWD",  "MEAN", "BEPO", "DDQM", "ADEQ", "BTMO",  "BTTL",  "BTEN",  "REST",
      "FBPW", "WPFM", "FSPT", "FSLN",  "THRS",  "SCBE", "SRT0", "B0LB", "FCS0", "MFS0",  "DC0E",  "AG0E",  "CF0E",
      "MF0E", "SEI0", "HI0Z", "AFIR",  "AVF1",  "AVF2", "AVF3", "CSFQ", "CSDR", "CSLB",  "CSLC" });
constexpr auto kDemodulatorInfo = std::to_array<View>(
    { "DMLS", "IFFL", "VFFL", "VFLS", "DDCF", "FGA1", "FGA2", "MPUV", "DLCK", "BLCK", "FOFF", "PDEV", "VLV1",
      "MSE0", "FSLK", "BS0L", "BTER", "BERG", "BTCB", "BTCE", "BERC", "BTLK", "BTLS", "BETI", "BAVL" });

constexpr auto kTape = std::to_array<View>({ "NAME", "TFREQ", "TGAINCH1", "TGAINCH2", "TGAINCMB" });

constexpr auto kTmoipCard = std::to_array<View>({ "ADDR", "MASK", "GWAY", "PORT", "TSRC", "NTPS" });
constexpr auto kTmoipCardInfo = std::to_array<View>({ "PHYS", "TIME", "IRIG", "IEBS", "IEBR", "IREV", "CHAN" });

constexpr auto kTmoipStream = std::to_array<View>(
    { "NAME", "PROT", "RMIP", "PORT", "HEAD", "BUFF", "MTUS", "RBUF", "INPZ", "ID10", "SPRT", "ENDN", "FLOW" });
constexpr auto kTmoipStreamInfo =
    std::to_array<View>({ "STAT", "RATE", "RRAT", "TXRT", "TXBT", "RXBT", "RETX", "DROP", "OOPS" });

constexpr auto kSpectral = std::to_array<View>({ "SPAN", "DATA" });

constexpr auto kSelfTest =
    std::to_array<View>({ "NAME", "CFRQ", "CATT_1", "CATT_2", "SCD1", "SCD2", "FMDV", "UNBL", "SCG1",  "SCG2", "PNGN",
                          "CBND", "CERR", "SCR1",   "SCR2",   "PRNR", "APNR", "SCF1", "SCF2", "BSINT", "CMOD", "C1EN",
                          "C2EN", "PCEN", "IFSL",   "CPRN",   "CDLE", "CREF", "CPWR", "CEXT", "CDSC",  "DDSF" });

constexpr auto kNetwork = std::to_array<View>({ "ADDR", "MASK", "GWAY", "PORT" });

struct Kind
{
    View prefix; ///< of the address; a number follows
    Catalogue::Rows rows;
};

constexpr auto kKinds = std::to_array<Kind>({
    { "U", { kSystem, kSystemInfo } },
    { "R", { kReceiver, kReceiverInfo } },
    { "C", { kCombiner, kCombinerInfo } },
    { "D", { kDemodulator, kDemodulatorInfo } },
    { "T", { kTape, {} } },
    { "SP", { kSpectral, {} } },
    { "S", { kSelfTest, {} } },
});

constexpr bool isUnique(std::span<const View> settings, std::span<const View> info)
{
    const auto count = [&](View name) { return std::ranges::count(settings, name) + std::ranges::count(info, name); };
    const auto once = [&](View name) { return count(name) == 1; };
    return std::ranges::all_of(settings, once) && std::ranges::all_of(info, once);
}
static_assert(std::ranges::all_of(kKinds,
                                  [](const Kind &kind) { return isUnique(kind.rows.settings, kind.rows.info); }));
static_assert(isUnique(kTmoipCard, kTmoipCardInfo) && isUnique(kTmoipStream, kTmoipStreamInfo));

View view(const QByteArray &text) { return { text.constData(), size_t(text.size()) }; }

bool isNumber(View text)
{
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool isTmoipCard(const QByteArray &address) { return address.startsWith("TM") && address.endsWith("-0"); }

} // namespace

Catalogue::Rows Catalogue::of(const QByteArray &address)
{
    if (const qsizetype dash = address.indexOf('-'); address.startsWith("TM") && dash > 2) {
        const bool wellFormed = isNumber(view(address.sliced(2, dash - 2))) && isNumber(view(address.sliced(dash + 1)));
        if (!wellFormed)
            return {};
        return isTmoipCard(address) ? Rows{ kTmoipCard, kTmoipCardInfo } : Rows{ kTmoipStream, kTmoipStreamInfo };
    }
    for (const Kind &kind : kKinds) {
        if (view(address).starts_with(kind.prefix) && isNumber(view(address).substr(kind.prefix.size())))
            return kind.rows;
    }
    return {};
}

bool Catalogue::isSetting(const QByteArray &address, const QByteArray &mnemonic)
{
    return std::ranges::count(of(address).settings, view(mnemonic)) > 0;
}

std::span<const std::string_view> Catalogue::identity() { return kIdentity; }

bool Catalogue::needsCommit(const QByteArray &address, const QByteArray &mnemonic)
{
    return isTmoipCard(address) && std::ranges::count(kNetwork, view(mnemonic)) > 0;
}

QByteArray Catalogue::key(const QByteArray &address, std::string_view mnemonic)
{
    return address + ':' + QByteArray(mnemonic.data(), qsizetype(mnemonic.size()));
}

} // namespace remote
