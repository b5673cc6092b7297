#include "simulator/units/DemodulatorRows.h"

#include <array>

namespace sim {

namespace {

// A setting comes after those it is checked against or follows.
constexpr auto kRows = std::to_array<SettingRow>({
    { "NAME", Check::Text, "Demod", Stored },
    { "SLAVE", Check::ReadOnly, "0", Volatile },
    { "DMLS", Check::ReadOnly,
      "0 PCM-FM,1 TRELLIS FM,2 PM,3 BPSK,4 QPSK,5 UQPSK,6 AQPSK,7 AUQPSK,8 SOQPSK,9 MULTI-H CPM,10 OQPSK,13 FM,"
      "17 NTSC-Video" },
    { "DMOD", Check::Own, "0", Stored },
    { "RATEA", Check::Own, "5000000", Stored },
    { "RATEB", Check::Own, "5000000", Stored },
    { "DDCF", Check::Index, "0", Stored, 0, 3 },
    { "IFFL", Check::ReadOnly, "", Measured },
    { "VFFL", Check::ReadOnly, "", Measured },
    { "VFLS", Check::ReadOnly, "500 kHz,1 MHz,2 MHz,5 MHz,10 MHz,20 MHz" },
    { "DFIR", Check::Own, "-1", Stored },
    { "VFIR", Check::Own, "0", Stored },
    { "VFIR2", Check::Own, "0", Stored },
    { "VFBW", Check::Own, "3", Stored },
    { "VCFG", Check::Index, "0", Stored, 0, 3 },
    { "BSDR", Check::OnOff, "0", Stored },
    { "ALBW", Check::OnOff, "1", Stored },
    { "ASRG", Check::OnOff, "1", Stored },
    { "ASRT", Check::OnOff, "1", Stored },
    { "TMID", Check::Own, "0.35", Stored },
    { "AFMS", Check::OnOff, "1", Stored },
    { "VGN1", Check::Index, "102", Stored, 0, 255 },
    { "VGN2", Check::Index, "102", Stored, 0, 255 },
    { "DVBW", Check::Range, "900000", Stored, 100, 40e6 },
    { "CPT0", Check::Own, "0", Stored },
    { "CPT1", Check::Own, "1", Stored },
    { "CPT2", Check::Own, "2", Stored },
    { "CPT3", Check::Own, "3", Stored },
    { "CPT4", Check::Own, "6", Stored },
    { "CPT5", Check::Own, "7", Stored },
    { "CPT6", Check::Own, "0", Stored },
    { "CPT7", Check::Own, "1", Stored },
    { "VIDP", Check::Index, "1", Stored, 0, 1 },
    { "BSDP", Check::Index, "1", Stored, 0, 1 },
    { "BSCP", Check::Index, "1", Stored, 0, 1 },
    { "BSCL", Check::Index, "0", Stored, 0, 3 },
    { "BSIL", Check::OnOff, "0", Stored },
    { "BSIC", Check::Index, "0", Stored, 0, 7 },
    { "VCP1", Check::Index, "0", Stored, 0, 1 },
    { "VCP2", Check::Index, "0", Stored, 0, 1 },
    { "VLPF", Check::OnOff, "0", Stored },
    { "VAFL", Check::Index, "1", Stored, 0, 3 },
    { "VAF2", Check::Index, "1", Stored, 0, 3 },
    { "VDE1", Check::OnOff, "0", Stored },
    { "VDE2", Check::OnOff, "0", Stored },
    { "DFAQ", Check::OnOff, "0", Stored },
    { "DAFC", Check::OnOff, "1", Stored },
    { "LBWB", Check::Range, "0.005", Stored, 0.001, 1 },
    { "LBWC", Check::Range, "0.01", Stored, 0.001, 1 },
    { "SWRG", Check::Range, "100", Stored, 1, 500 },
    { "SWRT", Check::Range, "50000", Stored, 1, 20e6 },
    { "TRKD", Check::Index, "0", Stored, 0, 3 },
    { "DSDM", Check::Index, "0", Stored, 0, 3 },
    // Registers, by number.
    { "82", Check::HexWord, "0001", Stored | Inner, 0, 0xffff },
    { "83", Check::HexWord, "0000", Stored | Inner, 0, 0xffff },
    { "84", Check::HexWord, "0400", Stored | Inner, 128, 16384 },
    { "85", Check::HexWord, "fe6b", Stored | Inner, 0, 0xffff },
    { "86", Check::HexWord, "7fff", Stored | Inner, 0, 0xffff },
    { "87", Check::HexWord, "0000", Stored | Inner, 0, 0xffff },
    { "39", Check::ReadOnly, "0114", Inner },
    { "3A", Check::ReadOnly, "00d2", Inner },
    { "3B", Check::ReadOnly, "01a4", Inner },
    { "CDRG", Check::Action },
    // Bit error rate tester.
    { "BTEN", Check::OnOff, "0", Stored },
    { "BTTL", Check::Range, "10", Stored, 1, 3600 },
    { "REST", Check::OnOff, "0", Measured },
    { "BTMO", Check::Index, "0", Stored, 0, 7 },
    { "BTER", Check::ReadOnly, "0", Measured },
    { "BERG", Check::ReadOnly, "0", Measured },
    { "BTCB", Check::ReadOnly, "0", Measured },
    { "BTCE", Check::ReadOnly, "0", Measured },
    { "BERC", Check::ReadOnly, "0", Measured },
    { "BTLK", Check::ReadOnly, "0", Measured },
    { "BTLS", Check::ReadOnly, "0", Measured },
    { "BETI", Check::ReadOnly, "0", Measured },
    { "BAVL", Check::ReadOnly, "1" },
    // Decoders and the frame synchronizer.
    { "LDPCR", Check::Index, "0", Stored, 0, 3 },
    { "LDPCB", Check::Index, "0", Stored, 0, 3 },
    { "LDPCD", Check::OnOff, "0", Stored },
    { "LDPCS", Check::OnOff, "0", Stored },
    { "VITE", Check::OnOff, "0", Stored },
    { "BMUX", Check::Index, "0", Stored, 0, 7 },
    { "CDS1", Check::Index, "0", Stored, 0, 7 },
    { "FBPW", Check::Range, "8", Stored, 3, 32 },
    { "WPFM", Check::Range, "64", Stored, 2, 16384 },
    { "FSPT", Check::Text, "FE6B2840", Stored },
    { "FSLN", Check::Range, "32", Stored, 8, 64 },
    { "THRS", Check::Range, "2", Stored, 0, 32 },
    { "SCBE", Check::Index, "1", Stored, 0, 16 },
    { "SRT0", Check::OnOff, "0", Stored },
    { "B0LB", Check::Range, "0.01", Stored, 0.001, 1 },
    { "FCS0", Check::Index, "0", Stored, 0, 7 },
    { "MFS0", Check::Index, "0", Stored, 0, 7 },
    { "DC0E", Check::OnOff, "1", Stored },
    { "AG0E", Check::OnOff, "1", Stored },
    { "CF0E", Check::OnOff, "0", Stored },
    { "MF0E", Check::OnOff, "0", Stored },
    { "SEI0", Check::Index, "0", Stored, 0, 3 },
    { "HI0Z", Check::OnOff, "0", Stored },
    { "AFIR", Check::Index, "0", Stored, 0, 7 },
    { "AVF1", Check::Index, "0", Stored, 0, 7 },
    { "AVF2", Check::Index, "0", Stored, 0, 7 },
    { "AVF3", Check::Index, "0", Stored, 0, 7 },
    { "CSFQ", Check::Range, "70", Stored, 0, 6000 },
    { "CSDR", Check::Range, "1000000", Stored, 100, 40e6 },
    { "CSLB", Check::Range, "0.005", Stored, 0.001, 1 },
    { "CSLC", Check::Range, "0.01", Stored, 0.001, 1 },
    { "DLCK", Check::ReadOnly, "0", Measured },
    { "BLCK", Check::ReadOnly, "0", Measured },
    { "FOFF", Check::ReadOnly, "0", Measured },
    { "PDEV", Check::ReadOnly, "0", Measured },
    { "VLV1", Check::ReadOnly, "0", Measured },
    { "MSE0", Check::ReadOnly, "0", Measured },
    { "FSLK", Check::ReadOnly, "0", Measured },
    { "BS0L", Check::OnOff, "0", Measured }, // a set is accepted, but the value stays the lock
    // Older cards only: other names of registers 82, 84 and 83.
    { "DQMON", Check::OnOff, "0", Measured },
    { "DQMFS", Check::HexWord, "0400", Measured, 128, 16384 },
    { "DEQE", Check::OnOff, "0", Measured },
});

constexpr size_t kOlderOnly = 3;

constexpr auto kReported =
    std::to_array<std::string_view>({ "DLCK", "BLCK", "FOFF", "PDEV", "VLV1", "MSE0", "FSLK", "BS0L", "BTER", "BERG",
                                      "BTCB", "BTCE", "BERC", "BTLK", "BTLS", "BETI", "BAVL" });

} // namespace

std::span<const SettingRow> DemodulatorRows::all(bool olderCard)
{
    return std::span<const SettingRow>(kRows).first(kRows.size() - (olderCard ? 0 : kOlderOnly));
}

std::span<const std::string_view> DemodulatorRows::reported() { return kReported; }

} // namespace sim
