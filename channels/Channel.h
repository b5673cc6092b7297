#pragma once

#include "channels/CardChannel.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class RemoteCommand;

/// Base of every channel model: one addressable function of a card.
///
/// A class is its catalogue; the one engine in CardChannel reads it, and a class adds only what differs. Links and
/// other channels are never owned.
///
/// The remote client is served from the same catalogue: reports of the cards are mirrored to it, its queries get the
/// cached values, and its changes are sent like the operator's.
class Channel : public CardChannel
{
    Q_OBJECT

public:
    struct Commands
    {
        static constexpr QLatin1StringView NAME{ "NAME" };
        static constexpr QLatin1StringView SLAVE{ "SLAVE" };
    };

    /// The addresses under which the remote client finds this channel and what it holds.
    [[nodiscard]] virtual QStringList addresses() const { return { address() }; }

    [[nodiscard]] const QString &getNAME() const { return valueOf(m_nameRow); }
    virtual void setNAME(const QString &name) { submit(m_nameRow, name); }
    /// "1" (for some classes also "2") while set commands are copied to the slave channels.
    [[nodiscard]] const QString &getSLAVE() const { return valueOf(m_slaveRow); }

    /// Makes the other channels of class @p className on @p link the slaves of this one.
    void SetSlaveChanList(const ChannelLink *link, const QString &className);
    [[nodiscard]] const QList<Channel *> &slaveChannels() const { return m_slaveChannels; }
    void SlavingHandler(const StandardCommand &command) override;

    /// The links to the remote client; they stay as long as the event loop runs.
    virtual void setSPCRemote(ChannelLink *link) { m_remoteLink = link; }
    virtual void setSPCRemoteEyeAndStatus(ChannelLink *link) { m_remoteEyeAndStatusLink = link; }

    using CardChannel::ProcessCmd;
    /// Takes a message of the remote client: every query and set gets an answer, and an accepted set is sent like a
    /// change made at the panel. Anything else is ignored.
    void ProcessCmd(const RemoteCommand &message) override;

protected:
    Channel(QObject *parent, QLatin1StringView chanType, const QString &channel, ChannelLink *link,
            Catalogue::Table catalogue);
    /// For a channel whose address is more than letters and number.
    Channel(QObject *parent, const QString &channel, const QString &address, ChannelLink *link,
            Catalogue::Table catalogue);

    /// Serves queries and sets of the remote client and mirrors settings; null until it is opened.
    [[nodiscard]] ChannelLink *remoteLink() const { return m_remoteLink; }
    /// Mirrors status values and eye blocks; null until it is opened.
    [[nodiscard]] ChannelLink *remoteEyeAndStatusLink() const { return m_remoteEyeAndStatusLink; }

    void mirror(int row, const QString &data, bool isAnswer, bool isLatin1 = false) override;
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

private:
    [[nodiscard]] QString forClient(int row, const QString &value) const;
    [[nodiscard]] std::optional<QString> fromClient(int row, const QString &text) const;

    const int m_nameRow;
    const int m_slaveRow;
    QList<Channel *> m_slaveChannels;
    ChannelLink *m_remoteLink = nullptr;
    ChannelLink *m_remoteEyeAndStatusLink = nullptr;
};
