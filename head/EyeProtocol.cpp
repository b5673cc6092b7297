#include "head/EyeProtocol.h"

#include "head/EyeConstDataQueueReader.h"
#include "link/EyeConstData.h"

namespace {

constexpr qint64 kReadBufferSize = 4096; ///< bytes

} // namespace

EyeProtocol::EyeProtocol(LinkPort &port, ChannelLink &link) : LinkProtocol(port)
{
    qRegisterMetaType<EyeConstData>("EyeConstData");
    // The signal's header only declares the class, so a queued connection finds the pointer's type by name alone.
    qRegisterMetaType<EyeConstData *>("EyeConstData*");
    port.port().setReadBufferSize(kReadBufferSize);
    auto dispatcher = std::make_unique<EyeConstDataQueueReader>(link);
    m_dispatcher = dispatcher.get();
    setDispatcher(std::move(dispatcher));
    setReader(std::make_unique<SerialPortReader>(&port.port(), FrameDecoder(FrameDecoder::kEot),
                                                 [this](const QByteArray &frame) { handleFrame(frame); }));
}

void EyeProtocol::process(const QByteArray &frame)
{
    if (frame.size() == EyeConstData::kEyeFrameSize || frame.size() == EyeConstData::kSerialDataFrameSize)
        Q_EMIT received(new EyeConstData(frame));
}
