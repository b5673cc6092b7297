#pragma once

#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/TmoipCard.h"
#include "channels/TmoipChan.h"
#include "support/CommandLinkBench.h"
#include "support/Script.h"

#include <QMap>

#include <functional>
#include <utility>

using Setter = std::function<void(Channel *, const QString &)>;
using Getter = std::function<QString(const Channel *)>;

template <typename C>
Setter of(void (C::*set)(const QString &))
{
    return [set](Channel *channel, const QString &value) { (qobject_cast<C *>(channel)->*set)(value); };
}

template <typename C>
Getter of(QString (C::*get)() const)
{
    return [get](const Channel *channel) { return (qobject_cast<const C *>(channel)->*get)(); };
}

/// Reads a list of a channel, joined by "/".
template <typename C>
Getter of(const QStringList &(C::*list)() const)
{
    return [list](const Channel *channel) { return (qobject_cast<const C *>(channel)->*list)().join(u'/'); };
}

struct Setting
{
    Setter set;
    bool toSlaves = false; ///< a change goes to the slaved channels too
};

/// By the letters of the channel's address and the mnemonic: "R:FREQ"; "TM:ADDR" for a TMoIP card, "TM-:FLOW" for a
/// stream of it.
using Settings = QMap<QString, Setting>;

/// What stands for an address in the settings' keys.
[[nodiscard]] QString kindOf(const QString &address);

/// Every setter of the channel classes. "D:DREG" takes "85,1234" for the number and value of a register, a text without
/// comma as one for the card.
[[nodiscard]] const Settings &channelSettings();

/// A chassis whose settings were all read, and the record of what passes from then on: "R1:FREQ:1" for a request that
/// has reached it, "R1 FREQ 1" for a change that its channel reports; another channel's report names that channel.
class ChannelBench : public CommandLinkBench
{
public:
    explicit ChannelBench(const QByteArrayList &cards);

    /// The command link's channel or stream of this address; null if there is none.
    [[nodiscard]] Channel *channel(const QString &address) const;
    /// Plays a script and gives the record, "; " between its entries. The verbs are "set" (by the channels' setters,
    /// several with " & " between them), "lose" (a set of the first channel behind the system that gets no answer),
    /// "ask" (its query that gets this answer), "report" and "refuse" (from now on).
    [[nodiscard]] QString play(const QString &lines);
    /// What has passed since it was taken last.
    [[nodiscard]] QStringList takeRecord();

protected:
    [[nodiscard]] Script &script() { return m_script; }

private:
    void fillScript();
    void noteRequests();
    void follow(const Channel *channel);
    [[nodiscard]] QList<Channel *> everyChannel() const;

    Script m_script;
    QStringList m_record;
};
