#pragma once

#include <QList>
#include <QString>

class Channel;

/// The channels of one link, sorted by kind and reachable by address.
class ChannelDirectory
{
public:
    void assign(const QList<Channel *> &channels) { m_channels = channels; }

    /// The channels of class @p C in the link's order.
    template <typename C>
    [[nodiscard]] QList<C *> all() const
    {
        QList<C *> found;
        for (Channel *channel : m_channels) {
            if (auto *const c = qobject_cast<C *>(channel))
                found.append(c);
        }
        return found;
    }

    /// The channel that an unsolicited message of this address is for: "R2" is the second receiver, whatever its
    /// number; "TM1-2" is the second stream of the first TMoIP card. Null if there is none, or if the address is not
    /// one that messages are routed by.
    [[nodiscard]] Channel *at(const QString &address) const;
    /// The channel with this address; null if there is none.
    [[nodiscard]] Channel *withAddress(const QString &address) const;

private:
    QList<Channel *> m_channels;
};
