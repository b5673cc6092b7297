#include "simulator/radio/DemodulationMode.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>

namespace sim {

namespace {

constexpr double kSlowest = 100;

constexpr auto kModes = std::to_array<DemodulationMode>({
    { 0, "PCM-FM", kSlowest, 22e6, 8, 1 },
    { 1, "TRELLIS FM", kSlowest, 22e6, 8, 1 },
    { 2, "PM", kSlowest, 20e6, 2, 1 },
    { 3, "BPSK", kSlowest, 20e6, 2, 1 },
    { 4, "QPSK", kSlowest, 40e6, 4, 1 },
    { 5, "UQPSK", kSlowest, 40e6, 4, 0.5 },
    { 6, "AQPSK", kSlowest, 20e6, 4, 1 },
    { 7, "AUQPSK", kSlowest, 20e6, 4, 0.5 },
    { 8, "SOQPSK", kSlowest, 40e6, 4, 1 },
    { 9, "MULTI-H CPM", kSlowest, 37e6, 8, 1 },
    { 10, "OQPSK", kSlowest, 40e6, 4, 1 },
    { 13, "FM", kSlowest, 22e6, 8, 1 },
    { 17, "NTSC-Video", 14e6, 14e6, 8, 1 },
});

template <typename Predicate>
const DemodulationMode *find(Predicate matches)
{
    const auto *const mode = std::find_if(kModes.begin(), kModes.end(), matches);
    return mode == kModes.end() ? nullptr : mode;
}

} // namespace

const DemodulationMode *DemodulationMode::withCode(int code)
{
    return find([code](const DemodulationMode &mode) { return mode.code == code; });
}

const DemodulationMode *DemodulationMode::named(QStringView name)
{
    return find([name](const DemodulationMode &mode) {
        return name == QLatin1StringView(mode.name.data(), qsizetype(mode.name.size()));
    });
}

} // namespace sim
