#include "simulator/links/FrameCutter.h"

namespace sim {

QByteArray Wire::framed(const QByteArray &text) { return kStx + text + kCr; }

QByteArrayList FrameCutter::feed(QByteArrayView bytes)
{
    constexpr qsizetype kCardBuffer = 4096;
    QByteArrayList frames;
    for (const char byte : bytes) {
        if (byte == Wire::kStx) {
            m_inFrame = true;
            m_frame.clear();
        } else if (!m_inFrame) {
            continue;
        } else if (byte == Wire::kCr) {
            frames.append(m_frame);
            reset();
        } else if (m_frame.size() == kCardBuffer) {
            reset();
        } else {
            m_frame.append(byte);
        }
    }
    return frames;
}

void FrameCutter::reset()
{
    m_inFrame = false;
    m_frame.clear();
}

} // namespace sim
