#pragma once

#include "channels/Channel.h"

/// Model of the tape interface: recording and playback ahead of the demodulators.
///
/// Values are wire text; "Unknown" until the card has answered. Its changes concern no other channel.
class TapeChan : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "T" };

    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView TFREQ{ "TFREQ" }, TGAINCH1{ "TGAINCH1" }, TGAINCH2{ "TGAINCH2" },
            TGAINCMB{ "TGAINCMB" };
    };
    using RemoteCommands = Commands;

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        constexpr auto kOwn = Queried | Settable | Catalogue::kShown;
        return std::to_array<Catalogue::Row>({
            { Commands::NAME, Setting, kOwn, QLatin1StringView("Chan Name") },
            { Commands::TFREQ, Setting, kOwn },
            { Commands::TGAINCH1, Setting, kOwn },
            { Commands::TGAINCH2, Setting, kOwn },
            { Commands::TGAINCMB, Setting, kOwn },
            { Commands::SLAVE, Setting, NoFlags, QLatin1StringView("0") },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param channel "1"
    /// @param link    carries the channel's commands; outlives it
    TapeChan(QObject *parent, const QString &channel, ChannelLink *link)
        : Channel(parent, ChanType, channel, link, kCatalogue)
    {
    }

    [[nodiscard]] QString getTFREQ() const { return valueOf(at(Commands::TFREQ)); }       ///< Hz
    [[nodiscard]] QString getTGAINCH1() const { return valueOf(at(Commands::TGAINCH1)); } ///< 0 to 255
    [[nodiscard]] QString getTGAINCH2() const { return valueOf(at(Commands::TGAINCH2)); } ///< 0 to 255
    [[nodiscard]] QString getTGAINCMB() const { return valueOf(at(Commands::TGAINCMB)); } ///< 0 to 255

    void setTFREQ(const QString &value) { submit(settableAt(Commands::TFREQ), value); }
    void setTGAINCH1(const QString &value) { submit(settableAt(Commands::TGAINCH1), value); }
    void setTGAINCH2(const QString &value) { submit(settableAt(Commands::TGAINCH2), value); }
    void setTGAINCMB(const QString &value) { submit(settableAt(Commands::TGAINCMB), value); }
};
