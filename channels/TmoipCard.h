#pragma once

#include "channels/Channel.h"

#include <QMap>

class TmoipChan;

/// Model of a telemetry-over-IP card: its network and time settings, and the owner of its three PCM streams.
///
/// Commands of the card itself go to its address with "-0". Changed network settings count once they are committed.
class TmoipCard : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "TM" };

    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView ADDR{ "ADDR" }, MASK{ "MASK" }, GWAY{ "GWAY" }, PORT{ "PORT" },
            IRIG{ "IRIG" }, TSRC{ "TSRC" }, NTPS{ "NTPS" }, COMT{ "COMT" }, TIME{ "TIME" }, PHYS{ "PHYS" },
            IEBS{ "IEBS" }, IEBR{ "IEBR" }, IREV{ "IREV" }, CHAN{ "CHAN" };
    };
    using RemoteCommands = Commands;

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        using Catalogue::kReading;
        using Catalogue::kShown;
        constexpr auto kOwn = Queried | Settable | kShown;
        return std::to_array<Catalogue::Row>({
            { Commands::ADDR, Setting, kOwn },
            { Commands::MASK, Setting, kOwn },
            { Commands::GWAY, Setting, kOwn },
            { Commands::PORT, Setting, kOwn },
            { Commands::IRIG, Status, Queried | kReading },
            { Commands::TSRC, Setting, Settable | kShown },
            { Commands::NTPS, Setting, Settable | kShown },
            { Commands::COMT, Special, Settable | AlwaysSent | Served | Order },
            { Commands::TIME, Status, kReading },
            { Commands::PHYS, Status, kReading },
            { Commands::IEBS, Status, kReading },
            { Commands::IEBR, Status, kReading },
            { Commands::IREV, Special, Served },
            { Commands::CHAN, Special, Served },
            { Commands::NAME, Special, Settable | Order, QLatin1StringView("Chan Name") },
            { Commands::SLAVE, Special, NoFlags, QLatin1StringView("0") },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param channel the card's number
    /// @param link    carries the commands of card and streams; outlives both
    TmoipCard(QObject *parent, const QString &channel, ChannelLink *link);

    [[nodiscard]] QString getADDR() const { return valueOf(at(Commands::ADDR)); }
    [[nodiscard]] QString getMASK() const { return valueOf(at(Commands::MASK)); }
    [[nodiscard]] QString getGWAY() const { return valueOf(at(Commands::GWAY)); }
    [[nodiscard]] QString getPORT() const { return valueOf(at(Commands::PORT)); }
    [[nodiscard]] QString getIRIG() const { return valueOf(at(Commands::IRIG)); } ///< time status
    [[nodiscard]] QString getTSRC() const { return valueOf(at(Commands::TSRC)); }
    [[nodiscard]] QString getNTP() const { return valueOf(at(Commands::NTPS)); }
    [[nodiscard]] QString getTIME() const { return valueOf(at(Commands::TIME)); }
    [[nodiscard]] QString getPHYS() const { return valueOf(at(Commands::PHYS)); } ///< state of the Ethernet link
    [[nodiscard]] QString getIEBS() const { return valueOf(at(Commands::IEBS)); } ///< bytes
    [[nodiscard]] QString getIEBR() const { return valueOf(at(Commands::IEBR)); } ///< bytes
    [[nodiscard]] QString getIREV() const { return valueOf(at(Commands::IREV)); }
    [[nodiscard]] QString getCHAN() const { return valueOf(at(Commands::CHAN)); }

    void setADDR(const QString &value) { submit(settableAt(Commands::ADDR), value); }
    void setMASK(const QString &value) { submit(settableAt(Commands::MASK), value); }
    void setGWAY(const QString &value) { submit(settableAt(Commands::GWAY), value); }
    void setPORT(const QString &value) { submit(settableAt(Commands::PORT), value); }
    void setTSRC(const QString &value) { submit(settableAt(Commands::TSRC), value); }
    void setNTP(const QString &value) { submit(settableAt(Commands::NTPS), value); }
    /// Commits the network settings; sent on every call.
    void setCOMT(const QString &value) { submit(settableAt(Commands::COMT), value); }

    /// The streams by their keys "1" to "3".
    [[nodiscard]] QMap<QString, TmoipChan *> tmoipChanSlots() const { return m_streams; }
    /// What the part of an address behind "-" means: "0" the card, "1" to "3" its streams; null for anything else.
    [[nodiscard]] Channel *target(const QString &subAddress);
    /// The card's own and those of its streams.
    [[nodiscard]] QStringList addresses() const override;

    void setSPCRemote(ChannelLink *remoteLink) override;
    void setSPCRemoteEyeAndStatus(ChannelLink *remoteLink) override;

private:
    QMap<QString, TmoipChan *> m_streams;
};

/// Turns a FLOW value into a flag: true exactly for the number 1.
bool setFlow(const QString &value, bool &flow);
