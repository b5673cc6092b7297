#pragma once

#include "channels/Channel.h"

#include <QStringList>

/// Model of the diversity combiner channel.
///
/// Values are wire text: list positions counted from 0, on/off as "0" and "1"; "Unknown" until the card has answered.
/// Its changes concern no other channel.
class CmbrChan : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "C" };

    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView CLCK{ "CLCK" }, CLCS{ "CLCS" }, AGCA{ "AGCA" }, AGCB{ "AGCB" },
            CVMD{ "CVMD" }, CMOD{ "CMOD" }, CHZ1{ "CHZ1" }, CHZ2{ "CHZ2" }, CHZC{ "CHZC" }, SLPA{ "SLPA" },
            SLPB{ "SLPB" }, POLA{ "POLA" }, POLB{ "POLB" }, IMPA{ "IMPA" }, IMPB{ "IMPB" }, IFLS{ "IFLS" },
            AIFB{ "AIFB" }, IFBW{ "IFBW" }, ABAL{ "ABAL" }, CAMF{ "CAMF" }, CAMP{ "CAMP" }, GCZV{ "GCZV" },
            CH1IN{ "CH1IN" }, CH1OUT{ "CH1OUT" }, CH2IN{ "CH2IN" }, CH2OUT{ "CH2OUT" }, TP2{ "TP2" }, TP4{ "TP4" };
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
            { Commands::NAME, Setting, kOwn, QLatin1StringView("Chan Name") },
            { Commands::CVMD, Setting, kOwn },
            { Commands::CMOD, Setting, kOwn },
            { Commands::IFLS, Setting, Queried | kShown },
            { Commands::IFBW, Setting, kOwn },
            { Commands::CHZC, Setting, kOwn },
            { Commands::CHZ1, Setting, kOwn },
            { Commands::CHZ2, Setting, kOwn },
            { Commands::SLPA, Setting, kOwn },
            { Commands::SLPB, Setting, kOwn },
            { Commands::POLA, Setting, kOwn },
            { Commands::POLB, Setting, kOwn },
            { Commands::IMPA, Setting, kOwn },
            { Commands::IMPB, Setting, kOwn },
            { Commands::ABAL, Setting, kOwn },
            { Commands::CAMF, Setting, kOwn | AlwaysSent, QLatin1StringView("") },
            { Commands::CAMP, Setting, kOwn | AlwaysSent, QLatin1StringView("") },
            { Commands::SLAVE, Setting, NoFlags, QLatin1StringView("0") },
            { Commands::GCZV, Setting, Settable | kShown, QLatin1StringView("0") },
            { Commands::AIFB, Special, Settable | Order }, // what the card says about it is ignored
            { Commands::CLCK, Status, kReading },
            { Commands::CLCS, Status, kReading },
            { Commands::AGCA, Status, kReading },
            { Commands::AGCB, Status, kReading },
            { Commands::CH1IN, Status, kReading },
            { Commands::CH1OUT, Status, kReading },
            { Commands::CH2IN, Status, kReading },
            { Commands::CH2OUT, Status, kReading },
            { Commands::TP2, Status, kReading },
            { Commands::TP4, Status, kReading },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param channel "1"
    /// @param link    carries the channel's commands; outlives it
    CmbrChan(QObject *parent, const QString &channel, ChannelLink *link);

    [[nodiscard]] QString getCVMD() const { return valueOf(at(Commands::CVMD)); }
    [[nodiscard]] QString getCMOD() const { return valueOf(at(Commands::CMOD)); }
    [[nodiscard]] QString getIFLS() const { return valueOf(at(Commands::IFLS)); }
    [[nodiscard]] QString getIFBW() const { return valueOf(at(Commands::IFBW)); }
    [[nodiscard]] QString getCHZC() const { return valueOf(at(Commands::CHZC)); }
    [[nodiscard]] QString getCHZ1() const { return valueOf(at(Commands::CHZ1)); }
    [[nodiscard]] QString getCHZ2() const { return valueOf(at(Commands::CHZ2)); }
    [[nodiscard]] QString getSLPA() const { return valueOf(at(Commands::SLPA)); }
    [[nodiscard]] QString getSLPB() const { return valueOf(at(Commands::SLPB)); }
    [[nodiscard]] QString getPOLA() const { return valueOf(at(Commands::POLA)); }
    [[nodiscard]] QString getPOLB() const { return valueOf(at(Commands::POLB)); }
    [[nodiscard]] QString getIMPA() const { return valueOf(at(Commands::IMPA)); }
    [[nodiscard]] QString getIMPB() const { return valueOf(at(Commands::IMPB)); }
    [[nodiscard]] QString getABAL() const { return valueOf(at(Commands::ABAL)); }
    [[nodiscard]] QString getCAMF() const { return valueOf(at(Commands::CAMF)); }
    [[nodiscard]] QString getCAMP() const { return valueOf(at(Commands::CAMP)); }
    [[nodiscard]] QString getGCZV() const { return valueOf(at(Commands::GCZV)); }
    [[nodiscard]] QString getAIFB() const { return valueOf(at(Commands::AIFB)); }
    [[nodiscard]] QString getCLCK() const { return valueOf(at(Commands::CLCK)); } ///< "1" locked
    [[nodiscard]] QString getCLCS() const
    {
        return valueOf(at(Commands::CLCS));
    } ///< "0" on both channels, "1" or "2" on one
    [[nodiscard]] QString getAGCA() const { return valueOf(at(Commands::AGCA)); } ///< mV
    [[nodiscard]] QString getAGCB() const { return valueOf(at(Commands::AGCB)); } ///< mV
    [[nodiscard]] QString getAGCCh1In() const { return valueOf(at(Commands::CH1IN)); }
    [[nodiscard]] QString getAGCCh1Out() const { return valueOf(at(Commands::CH1OUT)); }
    [[nodiscard]] QString getAGCCh2In() const { return valueOf(at(Commands::CH2IN)); }
    [[nodiscard]] QString getAGCCh2Out() const { return valueOf(at(Commands::CH2OUT)); }
    [[nodiscard]] QString getTP2() const { return valueOf(at(Commands::TP2)); }
    [[nodiscard]] QString getTP4() const { return valueOf(at(Commands::TP4)); }

    void setCVMD(const QString &value) { submit(settableAt(Commands::CVMD), value); }
    void setCMOD(const QString &value) { submit(settableAt(Commands::CMOD), value); }
    void setIFBW(const QString &value) { submit(settableAt(Commands::IFBW), value); }
    void setCHZC(const QString &value) { submit(settableAt(Commands::CHZC), value); }
    void setCHZ1(const QString &value) { submit(settableAt(Commands::CHZ1), value); }
    void setCHZ2(const QString &value) { submit(settableAt(Commands::CHZ2), value); }
    void setSLPA(const QString &value) { submit(settableAt(Commands::SLPA), value); }
    void setSLPB(const QString &value) { submit(settableAt(Commands::SLPB), value); }
    void setPOLA(const QString &value) { submit(settableAt(Commands::POLA), value); }
    void setPOLB(const QString &value) { submit(settableAt(Commands::POLB), value); }
    void setIMPA(const QString &value) { submit(settableAt(Commands::IMPA), value); }
    void setIMPB(const QString &value) { submit(settableAt(Commands::IMPB), value); }
    void setABAL(const QString &value) { submit(settableAt(Commands::ABAL), value); }
    void setCAMF(const QString &value) { submit(settableAt(Commands::CAMF), value); }
    void setCAMP(const QString &value) { submit(settableAt(Commands::CAMP), value); }
    void setGCZV(const QString &value) { submit(settableAt(Commands::GCZV), value); }
    void setAIFB(const QString &value) { submit(settableAt(Commands::AIFB), value); }

    /// Names of the IF bandwidths; IFBW is a position in this list.
    [[nodiscard]] const QStringList &ifBandwidths() const { return m_ifBandwidths; }

protected:
    void settingStored(int row) override;

private:
    void SetUpIFBWsList(const QString &names);

    QStringList m_ifBandwidths;
};
