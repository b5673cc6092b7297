#pragma once

#include "channels/SettingCache.h"
#include "link/CommandOwner.h"
#include "link/StandardCommand.h"

#include <QHash>
#include <QObject>
#include <QString>

class ChannelLink;

/// The card's side of a channel: caches the values of its catalogue, sends queries and sets, and takes answers and
/// reports.
///
/// The cache changes when the card confirms, never when a change is requested.
class CardChannel : public QObject, public CommandOwner
{
    Q_OBJECT

public:
    /// Channel number as text: "0" for the system, "1" to "3" for the others.
    [[nodiscard]] const QString &getChannel() const { return m_channel; }
    /// Class letters and number, for example "R1".
    [[nodiscard]] const QString &address() const { return m_address; }
    /// Carries the channel's commands.
    [[nodiscard]] ChannelLink *link() const { return m_link; }
    [[nodiscard]] Catalogue::Table catalogue() const { return m_cache.catalogue(); }
    /// Value before the last change; "Unknown" for a mnemonic that keeps none.
    [[nodiscard]] QString previousValue(QLatin1StringView mnemonic) const;

    /// Whether a set of this mnemonic is still queued or unanswered. Reports that arrive meanwhile are older than the
    /// last change; the end of that set reports the value in force once more.
    [[nodiscard]] bool isSetPending(const QString &mnemonic) const;
    /// Whether the cached value may be wrong: its set was not answered, and it is being read back.
    [[nodiscard]] bool isInDoubt(const QString &mnemonic) const;
    /// Whether the card currently sends unsolicited readings.
    [[nodiscard]] virtual bool isReporting() const;

    using CommandOwner::ProcessCmd;
    /// Takes an answer to a request of this channel, or an unsolicited message for it.
    void ProcessCmd(const StandardCommand &command) override;
    /// Queues one query for every setting, in catalogue order.
    /// @param priority of the queries
    void RequestSettings(StandardCommand::Priority priority = StandardCommand::Priority::Normal)
    {
        requestSettings(priority);
    }
    /// Copies a set command to the slaved channels while this channel is slaved.
    virtual void SlavingHandler(const StandardCommand &command) = 0;

Q_SIGNALS:
    /// A setting's value in force: a new one, or after a refused or unanswered set the unchanged one.
    /// @param Module address of the message, e.g. "R1"
    /// @param Data   value as wire text
    /// @param CmdFailed,FailedData always false and empty from the channels themselves
    void SettingChanged(const QString &Module, const QString &Cmd, const QString &Data, bool CmdFailed = false,
                        const QString &FailedData = QString());

protected:
    /// @param link carries the channel's commands; outlives it
    CardChannel(QObject *parent, const QString &channel, const QString &address, ChannelLink *link,
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

    [[nodiscard]] const QString &valueOf(int row) const { return m_cache.value(row); }

    /// Sends a new value to the card. The current value is not sent, unless a set of another one is pending or the row
    /// says otherwise.
    /// @param evenIfHeld sends it in any case, because the card may hold another value
    void submit(int row, const QString &value, bool evenIfHeld = false);
    void store(int row, const QString &value) { m_cache.store(row, value); }
    /// What RequestSettings() does.
    virtual void requestSettings(StandardCommand::Priority priority);
    void sendQuery(int row, StandardCommand::Priority priority = StandardCommand::Priority::Normal);
    const StandardCommand &sendQuery(const Request &request,
                                     StandardCommand::Priority priority = StandardCommand::Priority::Normal);
    /// Sends a set of @p row; isSetPending() is true until it ends.
    /// @param row kNoRow for a mnemonic that the catalogue does not hold
    const StandardCommand &sendSet(int row, const Request &request);
    static constexpr int kNoRow = SettingCache::kNoRow;
    [[nodiscard]] int rowOf(const QString &mnemonic) const { return m_cache.rowOf(mnemonic); }
    [[nodiscard]] Catalogue::Flags flagsOf(int row) const { return m_cache.flagsOf(row); }
    [[nodiscard]] bool hasFlag(const QString &mnemonic, Catalogue::Flag flag) const
    {
        return flagsOf(rowOf(mnemonic)).testFlag(flag);
    }
    [[nodiscard]] bool hasPendingSet(int row) const;
    /// Row of a set that is queued or unanswered; kNoRow for any other.
    [[nodiscard]] int pendingRow(const StandardCommand &set) const { return m_pendingSets.value(&set, kNoRow); }
    /// Whether the card may hold something else for @p row than the cache does.
    [[nodiscard]] bool mayCardDiffer(int row, const QString &value) const;
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

    /// Mirrors a report about @p row to the remote client, under this channel's address, on the link that the catalogue
    /// names.
    /// @param isAnswer to a query: not sent while a set is pending, because it is older
    /// @param isLatin1 @p data is passed on in the bytes in which it came
    virtual void mirror(int row, const QString &data, bool isAnswer, bool isLatin1 = false) = 0;
    /// The channel that the answers to this one's set commands are handed to; null leaves it to their address.
    [[nodiscard]] virtual CommandOwner *ownerOfSets() { return this; }

private:
    /// A value to be set once the query of its row has ended.
    struct Wanted
    {
        int row;
        QString value;
    };

    [[nodiscard]] bool isInDoubt(int row, const QString &value) const;
    void endSet(const StandardCommand &command);
    void write(int row, const QString &value);
    void writeWanted(const Wanted &wanted, bool isKnown);
    void processReport(int row, const Report &report);

    ChannelLink *m_link;
    const QString m_channel;
    const QString m_address;
    SettingCache m_cache;
    QHash<const StandardCommand *, int> m_pendingSets; ///< rows of the sets that are queued or unanswered
    QHash<const StandardCommand *, Wanted> m_wanted;   ///< by the query that has to be answered first
};
