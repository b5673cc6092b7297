#pragma once

#include <QHash>
#include <QObject>

#include <memory>

class Channel;
class ChannelDirectory;
class RemoteCommand;
class SerialPortController;

/// Receive dispatcher of the remote link: hands what the client sent, or how it answered, to the channel that it is
/// for, answers for channels that do not exist, and deletes it afterwards.
class RcvdRemoteCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    RcvdRemoteCmdQueueReader(QObject *parent, SerialPortController *controller);
    ~RcvdRemoteCmdQueueReader() override;

    /// Takes the channels from the link's channel list.
    void SetChanLists();

    /// Whether a command that the client has caused still waits on a link to the chassis.
    [[nodiscard]] bool isClientAhead() const;

public Q_SLOTS:
    /// Takes ownership of @p command.
    void CheckRcvdRemoteCmdQueue(RemoteCommand *command);

private:
    void route(const RemoteCommand &command);
    void deliverToOwner(const RemoteCommand &command);
    /// Hands the message to the channel of its address, or refuses it: there is none, or the message is garbled.
    void ParseChannels(const RemoteCommand &command);
    void deliver(Channel *target, const RemoteCommand &command);

    SerialPortController *m_controller;
    std::unique_ptr<ChannelDirectory> m_directory;
    /// By link to the chassis: how many commands it had taken when the client caused its last one.
    QHash<const SerialPortController *, std::size_t> m_lastCaused;
};
