#pragma once

#include <QObject>

#include <memory>

class ChannelDirectory;
class EyeConstData;
class SerialPortController;

/// Receive dispatcher of the eye/constellation link: hands each block to the demodulator that it belongs to.
class EyeConstDataQueueReader : public QObject
{
    Q_OBJECT

public:
    EyeConstDataQueueReader(QObject *parent, SerialPortController *controller);
    ~EyeConstDataQueueReader() override;

    /// Takes over the link's channels.
    void SetChanLists();

public Q_SLOTS:
    /// Takes ownership of @p data. A block for a demodulator that the chassis does not have is dropped.
    void CheckEyeConstDataQueue(EyeConstData *data);

private:
    SerialPortController *m_controller;
    std::unique_ptr<ChannelDirectory> m_directory;
};
