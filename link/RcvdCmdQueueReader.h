#pragma once

#include <QObject>

#include <memory>

class Channel;
class ChannelDirectory;
class SerialPortController;
class StandardCommand;
class UniversalChan;

/// Receive dispatcher of a standard-protocol link: decides which channel processes a command that came back or
/// arrived unasked, and deletes it afterwards. Commands for nobody are dropped without a word.
class RcvdCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    RcvdCmdQueueReader(QObject *parent, SerialPortController *controller);
    ~RcvdCmdQueueReader() override;

    /// Not owned; set when the first version reply has created it.
    void setSystemChannel(UniversalChan *channel) { m_systemChannel = channel; }
    /// Takes the channels from the link's channel list.
    void SetChanLists();

public Q_SLOTS:
    /// Takes ownership of @p command.
    void CheckRcvdCmdQueue(StandardCommand *command);

private:
    void route(const StandardCommand &command);
    void routeSystem(const StandardCommand &command);
    void deliver(Channel *target, const StandardCommand &command);

    SerialPortController *m_controller;
    UniversalChan *m_systemChannel = nullptr;
    std::unique_ptr<ChannelDirectory> m_directory;
};
