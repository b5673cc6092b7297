#include "remote/wire/FrameCutter.h"

namespace remote {

namespace {

constexpr char kStart = '\x02';
constexpr char kEnd = '\x0d';
constexpr qsizetype kLongestFrame = 65'536;

} // namespace

QByteArrayList FrameCutter::feed(QByteArrayView bytes)
{
    QByteArrayList frames;
    for (const char byte : bytes) {
        if (byte == kStart) {
            m_inFrame = true;
            m_frame.clear();
        } else if (m_inFrame && byte == kEnd) {
            m_inFrame = false;
            frames.append(m_frame);
        } else if (m_inFrame && m_frame.size() == kLongestFrame) {
            m_inFrame = false;
        } else if (m_inFrame) {
            m_frame.append(byte);
        }
    }
    return frames;
}

QByteArray FrameCutter::framed(const QByteArray &frame) { return kStart + frame + kEnd; }

} // namespace remote
