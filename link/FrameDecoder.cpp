#include "link/FrameDecoder.h"

#include <algorithm>
#include <utility>

void FrameDecoder::feed(QByteArrayView bytes, const FrameHandler &frameComplete)
{
    const auto isDelimiter = [this](char c) { return c == kStx || c == m_endByte; };

    while (!bytes.isEmpty()) {
        const auto delimiter = std::find_if(bytes.begin(), bytes.end(), isDelimiter);
        append(bytes.first(delimiter - bytes.begin()));
        if (delimiter == bytes.end())
            return;

        if (*delimiter == kStx) {
            m_buffer.clear();
            m_inFrame = true;
        } else if (std::exchange(m_inFrame, false)) {
            frameComplete(std::exchange(m_buffer, {}));
        }
        bytes = bytes.sliced(delimiter - bytes.begin() + 1);
    }
}

void FrameDecoder::append(QByteArrayView content)
{
    if (!m_inFrame)
        return;
    if (m_buffer.size() + content.size() > m_maxFrameSize) {
        reset();
        return;
    }
    m_buffer.append(content);
}

void FrameDecoder::reset()
{
    m_buffer.clear();
    m_inFrame = false;
}
