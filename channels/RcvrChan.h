#pragma once

#include "channels/Channel.h"

#include <QList>
#include <QStringList>

/// Model of one receiver (tuner) channel.
///
/// Values are wire text: frequencies in MHz, lists joined with ",", list positions counted from 0, on/off as "0" and
/// "1"; "Unknown" until the card has answered. Setters queue a set command unless the value is the one held.
class RcvrChan : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "R" };

    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView FREQ{ "FREQ" }, FLST{ "FLST" }, IFLS{ "IFLS" }, IFBW{ "IFBW" },
            AIFB{ "AIFB" }, CIFS{ "CIFS" }, AGCF{ "AGCF" }, AGCZ{ "AGCZ" }, AGCT{ "AGCT" }, AFC{ "AFC" },
            AFCM{ "AFCM" }, SLPA{ "SLPA" }, SLPB{ "SLPB" }, POLA{ "POLA" }, POLB{ "POLB" }, IMPA{ "IMPA" },
            IMPB{ "IMPB" }, CAMP{ "CAMP" }, CAMF{ "CAMF" }, AMIP{ "AMIP" }, PLYB{ "PLYB" }, ACFE{ "ACFE" },
            ANCF{ "ANCF" }, CINP{ "CINP" }, CIF1{ "CIF1" }, CATN{ "CATN" }, MANG{ "MANG" }, SYNL{ "SYNL" },
            SSLV{ "SSLV" }, MAFL{ "MAFL" }, RLST{ "RLST" }, AGCA{ "AGCA" }, AGCB{ "AGCB" }, CARL{ "CARL" },
            MVAL{ "MVAL" }, LSCI{ "LSCI" }, LSCL{ "LSCL" }, AFCC{ "AFCC" }, CVAL{ "CVAL" }, CRSI{ "CRSI" },
            IFGC{ "IFGC" }, IFGCM{ "IFGCM" }, RRSSI{ "RRSSI" };
    };
    using RemoteCommands = Commands;

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        using Catalogue::kReading;
        using Catalogue::kShown;
        constexpr auto kOwn = Queried | Settable | kShown; // a change concerns this channel alone
        constexpr auto kShared = kOwn | ToSlaves;          // a change goes to the slaved receivers too
        return std::to_array<Catalogue::Row>({
            { Commands::NAME, Setting, kOwn, QLatin1StringView("Chan Name") },
            { Commands::ACFE, Setting, kOwn },
            { Commands::ANCF, Setting, kOwn },
            { Commands::CAMP, Setting, kShared },
            { Commands::CAMF, Setting, kShared },
            { Commands::AMIP, Setting, kShared },
            { Commands::FLST, Setting, Queried | kShown },
            { Commands::CIFS, Setting, kShared },
            { Commands::FREQ, Setting, kShared },
            { Commands::IFLS, Setting, Queried | kShown },
            { Commands::IFBW, Setting, kShared },
            { Commands::AGCF, Setting, kShared },
            { Commands::AGCZ, Setting, kShared },
            { Commands::SLPA, Setting, kShared },
            { Commands::SLPB, Setting, kShared },
            { Commands::POLA, Setting, kShared },
            { Commands::POLB, Setting, kShared },
            { Commands::IMPA, Setting, kShared },
            { Commands::IMPB, Setting, kShared },
            { Commands::AGCT, Setting, kShared },
            { Commands::AFC, Setting, kShared },
            { Commands::AFCM, Setting, kShared },
            { Commands::PLYB, Setting, kShared },
            { Commands::AIFB, Setting, kShared },
            { Commands::CINP, Setting, kOwn | NoPrevious },
            { Commands::CIF1, Setting, kOwn },
            { Commands::CATN, Setting, kOwn },
            { Commands::MANG, Setting, kOwn },
            { Commands::SLAVE, Setting, NoFlags, QLatin1StringView("0") },
            { Commands::SYNL, Status, kReading },
            { Commands::SSLV, Status, kReading },
            { Commands::MAFL, Status, kReading },
            { Commands::RLST, Status, kReading },
            { Commands::AGCA, Status, kReading },
            { Commands::AGCB, Status, kReading },
            { Commands::MVAL, Event, PassedOn | ToRemote | Series },
            { Commands::LSCI, Event, PassedOn | ToRemote | Series },
            { Commands::LSCL, Event, PassedOn | ToRemote | Series },
            { Commands::RRSSI, Relayed, ToStatus },
            // What the card says about these is ignored
            { Commands::AFCC, Special, PassedOn },
            { Commands::CVAL, Special, PassedOn },
            { Commands::CRSI, Special, PassedOn },
            { Commands::IFGC, Special, PassedOn },
            { Commands::IFGCM, Special, PassedOn },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param channel "1" or "2"
    /// @param link    carries the channel's commands; outlives it
    RcvrChan(QObject *parent, const QString &channel, ChannelLink *link);

    [[nodiscard]] QString getFREQ() const { return valueOf(at(Commands::FREQ)); } ///< MHz
    [[nodiscard]] QString getFLST() const { return valueOf(at(Commands::FLST)); }
    [[nodiscard]] QString getIFLS() const { return valueOf(at(Commands::IFLS)); }
    [[nodiscard]] QString getIFBW() const { return valueOf(at(Commands::IFBW)); }
    [[nodiscard]] QString getAIFB() const { return valueOf(at(Commands::AIFB)); }
    [[nodiscard]] QString getCIFS() const { return valueOf(at(Commands::CIFS)); }
    [[nodiscard]] QString getAGCF() const { return valueOf(at(Commands::AGCF)); }
    [[nodiscard]] QString getAGCZ() const { return valueOf(at(Commands::AGCZ)); }
    [[nodiscard]] QString getAGCT() const { return valueOf(at(Commands::AGCT)); }
    [[nodiscard]] QString getAFC() const { return valueOf(at(Commands::AFC)); }
    [[nodiscard]] QString getAFCM() const { return valueOf(at(Commands::AFCM)); } ///< kHz
    [[nodiscard]] QString getSLPA() const { return valueOf(at(Commands::SLPA)); }
    [[nodiscard]] QString getSLPB() const { return valueOf(at(Commands::SLPB)); }
    [[nodiscard]] QString getPOLA() const { return valueOf(at(Commands::POLA)); }
    [[nodiscard]] QString getPOLB() const { return valueOf(at(Commands::POLB)); }
    [[nodiscard]] QString getIMPA() const { return valueOf(at(Commands::IMPA)); }
    [[nodiscard]] QString getIMPB() const { return valueOf(at(Commands::IMPB)); }
    [[nodiscard]] QString getCAMP() const { return valueOf(at(Commands::CAMP)); }
    [[nodiscard]] QString getCAMF() const { return valueOf(at(Commands::CAMF)); }
    [[nodiscard]] QString getAMIP() const { return valueOf(at(Commands::AMIP)); }
    [[nodiscard]] QString getPLYB() const { return valueOf(at(Commands::PLYB)); }
    [[nodiscard]] QString getACFE() const { return valueOf(at(Commands::ACFE)); }
    [[nodiscard]] QString getANCF() const { return valueOf(at(Commands::ANCF)); }
    [[nodiscard]] QString getCINP() const { return valueOf(at(Commands::CINP)); }
    [[nodiscard]] QString getCIF1() const { return valueOf(at(Commands::CIF1)); }
    [[nodiscard]] QString getCATN() const { return valueOf(at(Commands::CATN)); }
    [[nodiscard]] QString getMANG() const { return valueOf(at(Commands::MANG)); }
    [[nodiscard]] QString getSYNL() const { return valueOf(at(Commands::SYNL)); } ///< "1" locked
    [[nodiscard]] QString getSSLV() const { return valueOf(at(Commands::SSLV)); } ///< dBm; dB while AGCZ is "1"
    [[nodiscard]] QString getMAFL() const { return valueOf(at(Commands::MAFL)); } ///< "1" loop in lock
    [[nodiscard]] QString getRLST() const { return valueOf(at(Commands::RLST)); } ///< loop stress, kHz
    [[nodiscard]] QString getAGCA() const { return valueOf(at(Commands::AGCA)); } ///< mV
    [[nodiscard]] QString getAGCB() const { return valueOf(at(Commands::AGCB)); } ///< mV

    void setFREQ(const QString &value) { submit(settableAt(Commands::FREQ), value); }
    void setIFBW(const QString &value) { submit(settableAt(Commands::IFBW), value); }
    void setAIFB(const QString &value) { submit(settableAt(Commands::AIFB), value); }
    void setCIFS(const QString &value) { submit(settableAt(Commands::CIFS), value); }
    void setAGCF(const QString &value) { submit(settableAt(Commands::AGCF), value); }
    void setAGCZ(const QString &value) { submit(settableAt(Commands::AGCZ), value); }
    void setAGCT(const QString &value) { submit(settableAt(Commands::AGCT), value); }
    void setAFC(const QString &value) { submit(settableAt(Commands::AFC), value); }
    void setAFCM(const QString &value) { submit(settableAt(Commands::AFCM), value); }
    void setSLPA(const QString &value) { submit(settableAt(Commands::SLPA), value); }
    void setSLPB(const QString &value) { submit(settableAt(Commands::SLPB), value); }
    void setPOLA(const QString &value) { submit(settableAt(Commands::POLA), value); }
    void setPOLB(const QString &value) { submit(settableAt(Commands::POLB), value); }
    void setIMPA(const QString &value) { submit(settableAt(Commands::IMPA), value); }
    void setIMPB(const QString &value) { submit(settableAt(Commands::IMPB), value); }
    void setCAMP(const QString &value) { submit(settableAt(Commands::CAMP), value); }
    void setCAMF(const QString &value) { submit(settableAt(Commands::CAMF), value); }
    void setAMIP(const QString &value) { submit(settableAt(Commands::AMIP), value); }
    void setPLYB(const QString &value) { submit(settableAt(Commands::PLYB), value); }
    void setACFE(const QString &value) { submit(settableAt(Commands::ACFE), value); }
    void setANCF(const QString &value) { submit(settableAt(Commands::ANCF), value); }
    void setCINP(const QString &value) { submit(settableAt(Commands::CINP), value); }
    void setCIF1(const QString &value) { submit(settableAt(Commands::CIF1), value); }
    void setCATN(const QString &value) { submit(settableAt(Commands::CATN), value); }
    void setMANG(const QString &value) { submit(settableAt(Commands::MANG), value); }

    /// Upper, then lower bound in MHz of every range that the card tunes, in the card's order.
    [[nodiscard]] const QList<double> &frequencyBounds() const { return m_frequencyBounds; }
    /// Names of the IF bandwidths; IFBW is a position in this list.
    [[nodiscard]] const QStringList &ifBandwidths() const { return m_ifBandwidths; }

protected:
    void settingStored(int row) override;
    [[nodiscard]] bool isSlaving() const override;

private:
    void SetUpFreqRangeBounds(const QString &ranges);
    void SetUpIFBWsList(const QString &names);

    QList<double> m_frequencyBounds;
    QStringList m_ifBandwidths;
};
