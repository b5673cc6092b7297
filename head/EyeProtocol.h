#pragma once

#include "head/LinkProtocol.h"

class ChannelLink;
class EyeConstData;
class EyeConstDataQueueReader;

/// The protocol of the eye/constellation link, which only receives.
class EyeProtocol : public LinkProtocol
{
    Q_OBJECT

public:
    EyeProtocol(LinkPort &port, ChannelLink &link);

    [[nodiscard]] const EyeConstDataQueueReader *dispatcher() const { return m_dispatcher; }
    [[nodiscard]] std::size_t waitingCount() const override { return 0; }

Q_SIGNALS:
    /// For the dispatcher.
    void received(EyeConstData *data);

protected:
    void process(const QByteArray &frame) override;
    void timeOutAll() override {}

private:
    EyeConstDataQueueReader *m_dispatcher;
};
