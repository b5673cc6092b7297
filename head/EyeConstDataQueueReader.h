#pragma once

#include "head/Dispatcher.h"

class EyeConstData;

/// Receive dispatcher of the eye/constellation link: hands each block to its demodulator. A block for a demodulator
/// that the chassis does not have is dropped.
class EyeConstDataQueueReader : public Dispatcher
{
    Q_OBJECT

public:
    explicit EyeConstDataQueueReader(ChannelLink &link) : Dispatcher(link) {}

public Q_SLOTS:
    /// Takes ownership of @p data.
    void CheckEyeConstDataQueue(EyeConstData *data);
};
