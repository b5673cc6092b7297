#include "link/EyeConstDataQueueReader.h"

#include "link/EyeConstData.h"

void EyeConstDataQueueReader::CheckEyeConstDataQueue(EyeConstData *data) { delete data; }
