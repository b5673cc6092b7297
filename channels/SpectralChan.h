#pragma once

#include "channels/Channel.h"

/// Model of one spectrum-analysis function of the card on the spectral link.
///
/// It keeps what the card reports and shows nothing: the spectrum is for the remote client.
class SpectralChan : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "SP" };

    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView SPAN{ "SPAN" }, DATA{ "DATA" }, RFFT{ "RFFT" };
    };
    using RemoteCommands = Commands;

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        return std::to_array<Catalogue::Row>({
            { Commands::SPAN, Status, Queried | Settable | AlwaysSent | Catalogue::kShown },
            { Commands::DATA, Status, Settable | AlwaysSent | NoPrevious | Catalogue::kShown },
            { Commands::RFFT, Status, ToStatus },
            { Commands::NAME, Special, NoFlags, QLatin1StringView("Chan Name") },
            { Commands::SLAVE, Special, NoFlags, QLatin1StringView("0") },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param channel "1" to "3"
    /// @param link    carries the channel's commands; outlives it
    SpectralChan(QObject *parent, const QString &channel, ChannelLink *link)
        : Channel(parent, ChanType, channel, link, kCatalogue)
    {
    }

    [[nodiscard]] QString getSPAN() const { return valueOf(at(Commands::SPAN)); }
    [[nodiscard]] QString getDATA() const { return valueOf(at(Commands::DATA)); } ///< "1" while spectra are requested
    [[nodiscard]] QString getRFFT() const { return valueOf(at(Commands::RFFT)); } ///< last spectrum as received

    void setSpan(const QString &value) { submit(settableAt(Commands::SPAN), value); }
    void setData(const QString &value) { submit(settableAt(Commands::DATA), value); }
    [[nodiscard]] bool isReporting() const override { return getDATA() == QLatin1StringView("1"); }
    /// The card's functions have no names.
    void setNAME(const QString &name) override { Q_UNUSED(name) }

    using Channel::ProcessCmd;
    void ProcessCmd(const StandardCommand &command) override
    {
        Channel::ProcessCmd(command);
        if (!m_isDataAwaited || isSetPending(Commands::DATA))
            return;
        m_isDataAwaited = false;
        if (command.status() != StandardCommand::Completed)
            restoreData();
    }

protected:
    /// Queries the span, and stops the spectra that an earlier run requested. A card that comes back continues with
    /// those of this run, or with what the client has just set, if the card accepts that.
    void requestSettings(StandardCommand::Priority priority) override
    {
        Channel::requestSettings(priority);
        m_isDataAwaited = isSetPending(Commands::DATA);
        if (!m_isDataAwaited)
            restoreData();
    }

private:
    void restoreData() { setData(isReporting() ? getDATA() : QStringLiteral("0")); }

    bool m_isDataAwaited = false; ///< the client's set has not ended yet
};
