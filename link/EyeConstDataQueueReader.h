#pragma once

#include <QObject>

class EyeConstData;

/// Receive dispatcher of the eye/constellation link. No demodulator takes blocks yet: they are deleted.
class EyeConstDataQueueReader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

public Q_SLOTS:
    /// Takes ownership of @p data.
    void CheckEyeConstDataQueue(EyeConstData *data);
};
