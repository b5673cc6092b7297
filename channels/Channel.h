#pragma once

#include "channels/Catalogue.h"
#include "link/CommandOwner.h"
#include "link/StandardCommand.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class ChannelLink;
class RemoteCommand;

/// Base of every channel model: one addressable function of a card.
///
/// A channel caches the last known value of each of its settings as the wire's text, queries them at start-up, turns
/// operator changes into commands and reports every value in force through SettingChanged. A class is its catalogue;
/// the one engine here reads it, and a class adds only what differs. The cache changes when the card confirms, never
/// when a change is requested. Links and other channels are never owned.
///
/// The remote client is served from the same catalogue: reports of the cards are mirrored to it, its queries
/// get the cached values, and its changes are sent like the operator's.
class Channel : public QObject, public CommandOwner
{
    Q_OBJECT

public:
    struct Commands
    {
        static constexpr QLatin1StringView NAME{ "NAME" };
        static constexpr QLatin1StringView SLAVE{ "SLAVE" };
    };

    /// Channel number as text: "0" for the system, "1" to "3" for the others.
    [[nodiscard]] const QString &getChannel() const { return m_channel; }
    /// Class letters and number, for example "R1".
    [[nodiscard]] const QString &address() const { return m_address; }
    /// Carries the channel's commands.
    [[nodiscard]] ChannelLink *link() const { return m_link; }
    /// The addresses under which the remote client finds this channel and what it holds.
    [[nodiscard]] virtual QStringList addresses() const { return { m_address }; }

    [[nodiscard]] const QString &getNAME() const { return valueOf(m_nameRow); }
    /// "1" (for some classes also "2") while set commands are copied to the slave channels.
    [[nodiscard]] const QString &getSLAVE() const { return valueOf(m_slaveRow); }
    /// Value before the last change; "Unknown" for a mnemonic that keeps none.
    [[nodiscard]] QString previousValue(QLatin1StringView mnemonic) const;

    /// Whether a set of this mnemonic is still queued or unanswered. Reports that arrive meanwhile are older than the
    /// last change; the end of that set reports the value in force once more.
    [[nodiscard]] bool isSetPending(const QString &mnemonic) const;

    /// Whether the cached value may be wrong: its set was not answered, and it is being read back.
    [[nodiscard]] bool isInDoubt(const QString &mnemonic) const;

    /// Makes the other channels of class @p className on @p link the slaves of this one.
    void SetSlaveChanList(const ChannelLink *link, const QString &className);
    [[nodiscard]] const QList<Channel *> &slaveChannels() const { return m_slaveChannels; }

    /// The links to the remote client; they stay as long as the event loop runs.
    virtual void setSPCRemote(ChannelLink *link) { m_remoteLink = link; }
    virtual void setSPCRemoteEyeAndStatus(ChannelLink *link) { m_remoteEyeAndStatusLink = link; }

    /// Takes an answer to a request of this channel, or an unsolicited message for it.
    void ProcessCmd(const StandardCommand &command) override;
    /// Takes a message of the remote client: every query and set gets an answer, and an accepted set is sent like a
    /// change made at the panel. Anything else is ignored.
    void ProcessCmd(const RemoteCommand &message) override;
    /// Whether the card currently sends unsolicited readings.
    [[nodiscard]] virtual bool isReporting() const;
    /// Queues one query for every setting, in catalogue order.
    /// @param priority of the queries
    void RequestSettings(StandardCommand::Priority priority = StandardCommand::Priority::Normal)
    {
        requestSettings(priority);
    }
    /// Copies a set command to the slaved channels while this channel is slaved.
    virtual void SlavingHandler(const StandardCommand &command);
    virtual void setNAME(const QString &name) { submit(m_nameRow, name); }

Q_SIGNALS:
    /// A setting's value in force: a new one, or after a refused or unanswered set the unchanged one.
    /// @param Module address of the message, e.g. "R1"
    /// @param Data   value as wire text
    /// @param CmdFailed,FailedData always false and empty from the channels themselves
    void SettingChanged(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed = false,
                        const QString &FailedData = QString());

protected:
    Channel(QObject *parent, QLatin1StringView chanType, const QString &channel, ChannelLink *link,
            Catalogue::Table catalogue);
    /// For a channel whose address is more than letters and number.
    Channel(QObject *parent, const QString &channel, const QString &address, ChannelLink *link,
            Catalogue::Table catalogue);

    /// What is written for one catalogue row.
    struct Request
    {
        QString address;
        QString mnemonic;
        QString data;
        bool isLatin1 = false; ///< not UTF-8 at its source
    };
    /// One message about a row: a report of the card, or the end of a set of this channel.
    struct Report
    {
        QString address;
        QString mnemonic;
        QString data;
        bool refused = false;  ///< the set was rejected or not answered
        bool isAnswer = false; ///< to a query
        bool isLatin1 = false; ///< not UTF-8 on the wire
    };

    /// Serves queries and sets of the remote client and mirrors settings; null until it is opened.
    [[nodiscard]] ChannelLink *remoteLink() const { return m_remoteLink; }
    /// Mirrors status values and eye blocks; null until it is opened.
    [[nodiscard]] ChannelLink *remoteEyeAndStatusLink() const { return m_remoteEyeAndStatusLink; }
    [[nodiscard]] const QString &valueOf(int row) const { return m_values[row].current; }

    /// Sends a new value to the card. The current value is not sent, unless a set of another one is pending or the row
    /// says otherwise.
    /// @param evenIfHeld sends it in any case, because the card may hold another value
    void submit(int row, const QString &value, bool evenIfHeld = false);
    /// Puts @p value into the cache, the one before into the previous value.
    void store(int row, const QString &value);
    /// What RequestSettings() does.
    virtual void requestSettings(StandardCommand::Priority priority);
    void sendQuery(int row, StandardCommand::Priority priority = StandardCommand::Priority::Normal);
    const StandardCommand &sendQuery(const Request &request,
                                     StandardCommand::Priority priority = StandardCommand::Priority::Normal);
    /// Sends a set of @p row; isSetPending() is true until it ends.
    /// @param row kNoRow for a mnemonic that the catalogue does not hold
    const StandardCommand &sendSet(int row, const Request &request);
    static constexpr int kNoRow = -1;
    [[nodiscard]] int rowOf(const QString &mnemonic) const;
    /// Stores a setting that differs, unless it was refused, and reports the value in force under the mnemonic of
    /// @p report.
    void applySetting(int row, const Report &report);

    /// The query that reads a row; without a mnemonic it is not sent.
    [[nodiscard]] virtual Request queryOf(int row) const;
    /// The set that writes a row; without a mnemonic it is not sent.
    [[nodiscard]] virtual Request setOf(int row, const QString &value) const;
    /// Whether that set writes nothing but the value. Any other one writes back neighbouring bits as well, so these are
    /// read first while the card may hold something else.
    [[nodiscard]] virtual bool isWrittenWhole(int row) const;
    /// Whether setting @p value changes nothing while @p held is in force.
    [[nodiscard]] virtual bool isSameValue(int row, const QString &value, const QString &held) const;
    /// The text that a value is stored as.
    [[nodiscard]] virtual QString normalized(int row, const QString &value) const;

    /// Applies one report by the kind of its catalogue row.
    void CheckForSupportedCmd(const QString &address, const QString &mnemonic, const QString &data,
                              StandardCommand::CommandStatus status, StandardCommand::CommandType type,
                              bool isLatin1 = false);
    /// A report for a row of the kind Special.
    virtual void processSpecial(int row, const Report &report);
    /// A report whose mnemonic the catalogue does not hold.
    virtual void processUnknown(const Report &report);
    /// A setting has just taken a new value.
    virtual void settingStored(int row);
    /// Stores a setting that differs, unless it was refused; reports nothing.
    void takeSetting(int row, const Report &report);

    // Remote client

    /// Mirrors a report about @p row to the client, under this channel's address, on the link that the catalogue names.
    /// @param isAnswer to a query: not sent while a set is pending, because it is older
    /// @param isLatin1 @p data is passed on in the bytes in which it came
    void mirror(int row, const QString &data, bool isAnswer, bool isLatin1 = false);
    /// Sends a message to the client. Does nothing until the client's link is opened.
    void pushToRemote(std::unique_ptr<RemoteCommand> message) const;
    void pushToStatus(std::unique_ptr<RemoteCommand> message) const;
    /// What the client gets for a query; nothing if the channel does not support it.
    [[nodiscard]] virtual std::optional<QString> answerToQuery(const QString &mnemonic);
    /// Whether the answer of answerToQuery() was not UTF-8 on the wire; it is passed on in the same bytes.
    [[nodiscard]] virtual bool isHeldInLatin1(const QString &mnemonic) const;
    /// Whether a set of the client is accepted.
    [[nodiscard]] virtual bool takesSet(const QString &mnemonic, const QString &data) const;
    /// Carries out a set for which takesSet() holds.
    virtual void carryOutSet(const RemoteCommand &set);
    /// Whether the client may ask for it, and set it if it has a setter.
    [[nodiscard]] bool isServed(const QString &mnemonic) const { return hasFlag(mnemonic, Catalogue::Served); }
    [[nodiscard]] bool isSettable(const QString &mnemonic) const { return hasFlag(mnemonic, Catalogue::Settable); }
    [[nodiscard]] bool isCatalogued(const QString &mnemonic) const { return rowOf(mnemonic) != kNoRow; }
    /// Whether set commands are copied to the slave channels at present.
    [[nodiscard]] virtual bool isSlaving() const { return false; }
    /// The channel that the answers to this one's set commands are handed to; null leaves it to their address.
    [[nodiscard]] virtual Channel *ownerOfSets() { return this; }

private:
    struct Value
    {
        QString current;
        QString previous;
    };

    /// A value to be set once the query of its row has ended.
    struct Wanted
    {
        int row;
        QString value;
    };

    [[nodiscard]] bool mayCardDiffer(int row, const QString &value) const;
    [[nodiscard]] bool isInDoubt(int row, const QString &value) const;
    void endSet(const StandardCommand &command);
    void write(int row, const QString &value);
    void writeWanted(const Wanted &wanted, bool isKnown);
    [[nodiscard]] Catalogue::Flags flagsOf(int row) const;
    [[nodiscard]] bool hasFlag(const QString &mnemonic, Catalogue::Flag flag) const
    {
        return flagsOf(rowOf(mnemonic)).testFlag(flag);
    }
    [[nodiscard]] bool hasPendingSet(int row) const;
    [[nodiscard]] QString forClient(int row, const QString &value) const;
    [[nodiscard]] std::optional<QString> fromClient(int row, const QString &text) const;
    void processReport(int row, const Report &report);

    ChannelLink *m_link;
    const QString m_channel;
    const QString m_address;
    const Catalogue::Table m_catalogue;
    const int m_nameRow;
    const int m_slaveRow;
    QList<Value> m_values;                             ///< one a catalogue row
    QHash<const StandardCommand *, int> m_pendingSets; ///< rows of the sets that are queued or unanswered
    QHash<const StandardCommand *, Wanted> m_wanted;   ///< by the query that has to be answered first
    QList<Channel *> m_slaveChannels;
    ChannelLink *m_remoteLink = nullptr;
    ChannelLink *m_remoteEyeAndStatusLink = nullptr;
};
