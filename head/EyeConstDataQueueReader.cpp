#include "head/EyeConstDataQueueReader.h"

#include "channels/DmdChan.h"
#include "link/EyeConstData.h"

#include <memory>

void EyeConstDataQueueReader::CheckEyeConstDataQueue(EyeConstData *data)
{
    const std::unique_ptr<const EyeConstData> block(data);
    if (isFinished())
        return;
    if (auto *const demodulator = qobject_cast<DmdChan *>(directory().at(DmdChan::ChanType + block->channel())))
        demodulator->ProcessEyeConstData(*block);
}
