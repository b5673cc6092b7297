#pragma once

#include "channels/Channel.h"

/// Model of one PCM stream of a TMoIP card.
///
/// Values are wire text: list positions counted from 0, on/off as "0" and "1"; "Unknown" until the card has answered.
class TmoipChan : public Channel
{
    Q_OBJECT

public:
    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView FLOW{ "FLOW" }, PROT{ "PROT" }, RMIP{ "RMIP" }, PORT{ "PORT" },
            HEAD{ "HEAD" }, BUFF{ "BUFF" }, MTUS{ "MTUS" }, RBUF{ "RBUF" }, INPZ{ "INPZ" }, ID10{ "ID10" },
            SPRT{ "SPRT" }, ENDN{ "ENDN" }, STAT{ "STAT" }, RATE{ "RATE" }, RRAT{ "RRAT" }, TXRT{ "TXRT" },
            TXBT{ "TXBT" }, RXBT{ "RXBT" }, RETX{ "RETX" }, DROP{ "DROP" }, OOPS{ "OOPS" };
    };
    using RemoteCommands = Commands;

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        using Catalogue::kReading;
        constexpr auto kOwn = Queried | Settable | Catalogue::kShown;
        return std::to_array<Catalogue::Row>({
            { Commands::NAME, Setting, kOwn, QLatin1StringView("Chan Name") },
            { Commands::FLOW, Setting, kOwn },
            { Commands::PROT, Setting, kOwn },
            { Commands::RMIP, Setting, kOwn },
            { Commands::PORT, Setting, kOwn },
            { Commands::HEAD, Setting, kOwn },
            { Commands::BUFF, Setting, kOwn },
            { Commands::MTUS, Setting, kOwn },
            { Commands::RBUF, Setting, kOwn },
            { Commands::INPZ, Setting, kOwn },
            { Commands::ID10, Setting, kOwn | AlwaysSent },
            { Commands::SPRT, Setting, kOwn | AlwaysSent },
            { Commands::ENDN, Setting, kOwn | AlwaysSent },
            { Commands::SLAVE, Setting, NoFlags, QLatin1StringView("0") },
            { Commands::STAT, Status, kReading },
            { Commands::RATE, Status, kReading },
            { Commands::RRAT, Status, kReading },
            { Commands::TXRT, Status, kReading },
            { Commands::TXBT, Status, kReading },
            { Commands::RXBT, Status, OnlyDifferent | kReading },
            { Commands::RETX, Status, OnlyDifferent | kReading },
            { Commands::DROP, Status, OnlyDifferent | kReading },
            { Commands::OOPS, Status, OnlyDifferent | kReading },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param key         "1" to "3", the stream's number on its card
    /// @param cardAddress for example "TM1"
    /// @param link        carries the channel's commands; outlives it
    TmoipChan(const QString &key, QObject *card, const QString &cardAddress, ChannelLink *link)
        : Channel(card, key, cardAddress + u'-' + key, link, kCatalogue)
    {
    }

    [[nodiscard]] QString getFLOW() const { return valueOf(at(Commands::FLOW)); } ///< "1" on
    [[nodiscard]] QString getPROT() const { return valueOf(at(Commands::PROT)); } ///< "0" UDP, "1" RUDP, "2" multicast
    [[nodiscard]] QString getRMIP() const { return valueOf(at(Commands::RMIP)); } ///< dotted IPv4
    [[nodiscard]] QString getPORT() const { return valueOf(at(Commands::PORT)); }
    [[nodiscard]] QString getHEAD() const
    {
        return valueOf(at(Commands::HEAD));
    } ///< "0" TMoIP, "1" time and TMoIP, "2" CH10
    [[nodiscard]] QString getBUFF() const
    {
        return valueOf(at(Commands::BUFF));
    } ///< "0" minimal latency, "1" maximal bandwidth
    [[nodiscard]] QString getIMTU() const { return valueOf(at(Commands::MTUS)); } ///< bytes
    [[nodiscard]] QString getRBUF() const { return valueOf(at(Commands::RBUF)); } ///< ms
    [[nodiscard]] QString getINPZ() const
    {
        return valueOf(at(Commands::INPZ));
    } ///< "0" 50 ohms, "1" 75 ohms, "2" high
    [[nodiscard]] QString getID10() const { return valueOf(at(Commands::ID10)); }
    [[nodiscard]] QString getSPRT() const { return valueOf(at(Commands::SPRT)); }
    [[nodiscard]] QString getENDN() const { return valueOf(at(Commands::ENDN)); }
    [[nodiscard]] QString getSTAT() const { return valueOf(at(Commands::STAT)); }
    [[nodiscard]] QString getRATE() const { return valueOf(at(Commands::RATE)); }
    [[nodiscard]] QString getRRAT() const { return valueOf(at(Commands::RRAT)); }
    [[nodiscard]] QString getTXRT() const { return valueOf(at(Commands::TXRT)); }
    [[nodiscard]] QString getTXBT() const { return valueOf(at(Commands::TXBT)); }
    [[nodiscard]] QString getRXBT() const { return valueOf(at(Commands::RXBT)); }
    [[nodiscard]] QString getRETX() const { return valueOf(at(Commands::RETX)); }
    [[nodiscard]] QString getDROP() const { return valueOf(at(Commands::DROP)); }
    [[nodiscard]] QString getOOPS() const { return valueOf(at(Commands::OOPS)); }

    void setFLOW(const QString &value) { submit(settableAt(Commands::FLOW), value); }
    void setPROT(const QString &value) { submit(settableAt(Commands::PROT), value); }
    void setRMIP(const QString &value) { submit(settableAt(Commands::RMIP), value); }
    void setPORT(const QString &value) { submit(settableAt(Commands::PORT), value); }
    void setHEAD(const QString &value) { submit(settableAt(Commands::HEAD), value); }
    void setBUFF(const QString &value) { submit(settableAt(Commands::BUFF), value); }
    void setIMTU(const QString &value) { submit(settableAt(Commands::MTUS), value); }
    void setRBUF(const QString &value) { submit(settableAt(Commands::RBUF), value); }
    void setINPZ(const QString &value) { submit(settableAt(Commands::INPZ), value); }
    void setID10(const QString &value) { submit(settableAt(Commands::ID10), value); }
    void setSPRT(const QString &value) { submit(settableAt(Commands::SPRT), value); }
    void setENDN(const QString &value) { submit(settableAt(Commands::ENDN), value); }
};
