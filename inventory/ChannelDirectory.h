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

    /// The channel that a message of this address is for: the one of that very address, or, if there is none, the one
    /// at that position of its kind, so that "R1" is the only receiver of a chassis whose receiver is "R2". "TM1-2" is
    /// the second stream of a TMoIP card. Null if there is neither.
    [[nodiscard]] Channel *at(const QString &address) const;

private:
    [[nodiscard]] Channel *atPosition(const QString &address) const;
    [[nodiscard]] Channel *ofTmoip(const QString &address) const;

    QList<Channel *> m_channels;
};
