#pragma once

#include "inventory/ChannelDirectory.h"
#include "link/ChannelLink.h"

#include <QObject>

/// Base of the receive dispatchers: decides which channel processes a message, and deletes it afterwards.
class Dispatcher : public QObject
{
    Q_OBJECT

public:
    /// Takes the channels from the link's channel list.
    void SetChanLists() { m_directory.assign(m_link.channels()); }
    /// The program ends: from now on messages are deleted and reach no channel.
    void finish() { m_isFinished = true; }

protected:
    /// @param link outlives the dispatcher
    explicit Dispatcher(ChannelLink &link) : m_link(link) {}

    [[nodiscard]] ChannelLink &link() const { return m_link; }
    [[nodiscard]] const ChannelDirectory &directory() const { return m_directory; }
    [[nodiscard]] bool isFinished() const { return m_isFinished; }

private:
    ChannelLink &m_link;
    ChannelDirectory m_directory;
    bool m_isFinished = false;
};
