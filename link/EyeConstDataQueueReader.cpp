#include "link/EyeConstDataQueueReader.h"

#include "channels/DmdChan.h"
#include "inventory/ChannelDirectory.h"
#include "link/EyeConstData.h"
#include "link/SerialPortController.h"

EyeConstDataQueueReader::EyeConstDataQueueReader(QObject *parent, SerialPortController *controller)
    : QObject(parent)
    , m_controller(controller)
    , m_directory(std::make_unique<ChannelDirectory>())
{
}

EyeConstDataQueueReader::~EyeConstDataQueueReader() = default;

void EyeConstDataQueueReader::SetChanLists() { m_directory->assign(m_controller->channels()); }

void EyeConstDataQueueReader::CheckEyeConstDataQueue(EyeConstData *data)
{
    const std::unique_ptr<const EyeConstData> block(data);
    if (m_controller->isEnding())
        return;
    if (auto *const demodulator = qobject_cast<DmdChan *>(m_directory->at(DmdChan::ChanType + block->channel())))
        demodulator->ProcessEyeConstData(*block);
}
