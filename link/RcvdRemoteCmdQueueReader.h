#pragma once

#include <QObject>

class RemoteCommand;
class SerialPortController;

/// Receive dispatcher of the remote link. No client is served yet: what arrives is deleted.
class RcvdRemoteCmdQueueReader : public QObject
{
    Q_OBJECT

public:
    RcvdRemoteCmdQueueReader(QObject *parent, SerialPortController *controller);

public Q_SLOTS:
    /// Takes ownership of @p command.
    void CheckRcvdRemoteCmdQueue(RemoteCommand *command);

private:
    SerialPortController *m_controller;
};
