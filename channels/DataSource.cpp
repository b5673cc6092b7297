#include "channels/DataSource.h"

#include "channels/DmdCatalogue.h"

#include <array>

namespace {

using Commands = DmdCatalogue::Commands;

struct Source
{
    QLatin1StringView demodulator;
    QLatin1StringView address;
    QLatin1StringView mnemonic;
};

constexpr std::array kSources{
    Source{ QLatin1StringView("1"), QLatin1StringView("D1"), Commands::SDM1 },
    Source{ QLatin1StringView("2"), QLatin1StringView("D2"), Commands::SDM2 },
    Source{ QLatin1StringView("3"), QLatin1StringView("D3"), Commands::SDM3 },
};

} // namespace

QString DataSource::mnemonicOf(const QString &demodulator)
{
    for (const Source &source : kSources) {
        if (demodulator == source.demodulator)
            return source.mnemonic;
    }
    return {};
}

QString DataSource::addressOf(const QString &mnemonic)
{
    for (const Source &source : kSources) {
        if (mnemonic == source.mnemonic)
            return source.address;
    }
    return {};
}
