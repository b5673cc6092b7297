#pragma once

#include "channels/Channel.h"

#include <QStringList>
#include <QTimer>

/// Model of the chassis as a whole, address "U0": system-wide settings, discovery from the card list, preset reports.
///
/// Created by its link when the chassis first answers. Values are wire text, "Unknown" until the chassis has answered.
class UniversalChan : public Channel
{
    Q_OBJECT

public:
    static constexpr QLatin1StringView ChanType{ "U" };
    static constexpr QLatin1StringView Address{ "U0" };
    static constexpr QLatin1StringView SystemType{ "ZIRVO" };

    struct Commands : Channel::Commands
    {
        static constexpr QLatin1StringView CLST{ "CLST" }, TRON{ "TRON" }, VER{ "VER" }, PLIST{ "PLIST" },
            STORE{ "STORE" }, RESTORE{ "RESTORE" }, DELPR{ "DELPR" }, PDONE{ "PDONE" }, UPDT{ "UPDT" },
            NOTIFY{ "NOTIFY" }, TMRF{ "TMRF" }, TIME{ "TIME" }, LOGC{ "LOGC" }, LAGC{ "LAGC" }, VERTSKB{ "VERTSKB" },
            TLST{ "TLST" }, SYSOPT{ "SYSOPT" }, ABSSI{ "ABSSI" }, SYSID{ "SYSID" }, REMOTE{ "REMOTE" };
    };
    /// What the remote client may query beyond the chassis' own settings.
    struct RemoteCommands : Commands
    {
        static constexpr QLatin1StringView STYPE{ "STYPE" }, VERS{ "VERS" }, CHANS{ "CHANS" }, CARDS{ "CARDS" },
            VERTSMAIN{ "VERTSMAIN" };
    };

private:
    static constexpr auto kCatalogue = [] {
        using enum Catalogue::Kind;
        using enum Catalogue::Flag;
        using Catalogue::kReading;
        using Catalogue::kShown;
        constexpr auto kServed = Queried | Settable | Served; // changes are for the panels, not for the client
        return std::to_array<Catalogue::Row>({
            { Commands::NAME, Setting, kServed, QLatin1StringView("System Name") },
            { Commands::SLAVE, Setting, kServed, QLatin1StringView("0") },
            { Commands::TMRF, Setting, kServed },
            { Commands::TLST, Special, Queried | NoPrevious | kShown },
            { Commands::SYSOPT, Silent, Queried | NoPrevious | kShown },
            { Commands::ABSSI, Silent, Queried | Settable | NoPrevious | kShown },
            { Commands::CLST, Special, NoFlags },
            { Commands::TIME, Silent, Settable | kShown },
            { Commands::LOGC, Silent, Settable | kShown },
            { Commands::LAGC, Status, kReading },
            { Commands::VERTSKB, Silent, NoPrevious | Served },
            { Commands::PLIST, Event, NoFlags },
            { Commands::PDONE, Event, NoFlags },
            { Commands::UPDT, Event, NoFlags },
        });
    }();
    static_assert(Catalogue::isWellFormed(kCatalogue));

    static consteval int at(QLatin1StringView mnemonic) { return Catalogue::at(kCatalogue, mnemonic); }
    static consteval int settableAt(QLatin1StringView mnemonic) { return Catalogue::settableAt(kCatalogue, mnemonic); }

public:
    /// @param number "0"
    UniversalChan(QObject *parent, const QString &number, ChannelLink *link);

    [[nodiscard]] QString getSTYPE() const { return SystemType; }
    [[nodiscard]] QString getCLST() const { return valueOf(at(Commands::CLST)); } ///< card list as received
    [[nodiscard]] QString getTMRF() const { return valueOf(at(Commands::TMRF)); } ///< "0" external 10 MHz, "1" internal
    [[nodiscard]] QString getTIME() const { return valueOf(at(Commands::TIME)); }
    [[nodiscard]] QString getLOGC() const { return valueOf(at(Commands::LOGC)); }
    [[nodiscard]] QString getLAGC() const { return valueOf(at(Commands::LAGC)); }
    [[nodiscard]] QString getTLST() const { return valueOf(at(Commands::TLST)); } ///< TMoIP list as received
    [[nodiscard]] QString getSYSOPT() const { return valueOf(at(Commands::SYSOPT)); }
    [[nodiscard]] QString getABSSI() const { return valueOf(at(Commands::ABSSI)); }
    [[nodiscard]] QString getVERTSKB() const { return valueOf(at(Commands::VERTSKB)); }

    void setSLAVE(const QString &value) { submit(settableAt(Commands::SLAVE), value); }
    void setTMRF(const QString &value) { submit(settableAt(Commands::TMRF), value); }
    void setTIME(const QString &value) { submit(settableAt(Commands::TIME), value); }
    void setLOGC(const QString &value) { submit(settableAt(Commands::LOGC), value); }
    void setABSSI(const QString &value) { submit(settableAt(Commands::ABSSI), value); }

    [[nodiscard]] bool isReporting() const override { return false; } // its reading may stay the same for long

    /// Reports to the chassis whether a remote client is there.
    /// @param value "1" or "0"; sent on every call
    void setREMOTE(const QString &value);
    /// "1" while a remote client answers, else "0".
    [[nodiscard]] const QString &getREMOTE() const { return m_remoteStatus; }

    /// Answer to the first version query.
    [[nodiscard]] const QString &verTsMain() const { return m_mainVersion; }
    void setVerTsMain(const QString &version) { m_mainVersion = version; }
    /// Identity of the chassis that this display head belongs to.
    [[nodiscard]] const QString &systemIdentifier() const { return m_systemIdentifier; }
    void setSystemIdentifier(const QString &identifier) { m_systemIdentifier = identifier; }

    /// Info strings of the cards, one text a card, for the remote client.
    void setCardInfo(const QStringList &texts) { m_cardInfo = texts; }
    /// A TMoIP card was made for this entry of the list; later lists are ignored.
    void addTmoipEntry(const QString &entry) { m_tmoipList.append(entry); }

    /// Starts the periodic presence query.
    void setSPCRemote(ChannelLink *link) override;

    using Channel::ProcessCmd;
    /// Takes the client's messages, and the end of the head's presence query.
    void ProcessCmd(const RemoteCommand &message) override;

public Q_SLOTS:
    /// Queries whether a client is there. A client whose last query is still unanswered is not; one that waits for
    /// answers is, and is not queried.
    void RemoteStatusTimeOut();

Q_SIGNALS:
    /// The chassis has sent its card list: the first one, or a later one that has not changed the cached list.
    void cardListReceived(const QString &cardList);
    /// The chassis has sent its list of TMoIP cards, while none of them is known.
    /// @param entries one text a card; some may be empty
    void tmoipListReceived(const QStringList &entries);

protected:
    /// Queries every setting, and reports a remote client that is there to the chassis once more.
    void requestSettings(StandardCommand::Priority priority) override;
    [[nodiscard]] std::optional<QString> answerToQuery(const QString &mnemonic) override;
    void processSpecial(int row, const Report &report) override;
    /// Answers on the system address find this channel by that address.
    [[nodiscard]] CommandOwner *ownerOfSets() override { return nullptr; }

private:
    void processCardList(const QString &cardList);
    void processTmoipList(const QString &list);
    void setRemotePresent(bool isPresent);
    /// Queries the client; the end of the query shows whether it is there.
    void SendToRemoteConnection(const QString &address, const QString &mnemonic);
    [[nodiscard]] QString remoteAddresses() const;

    bool m_cardListReceived = false;
    QString m_systemIdentifier;
    QString m_mainVersion;
    QStringList m_tmoipList;
    QStringList m_cardInfo;
    QTimer m_remoteStatusTmr;
    bool m_isRemoteAsked = false; ///< the presence query has not ended yet
    QString m_remoteStatus = QStringLiteral("0");
};
