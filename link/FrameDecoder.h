#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>

/// Cuts the byte stream of one link into frames: bytes in, frame contents out, no port involved.
///
/// A frame runs from STX to the link's end byte. Bytes outside a frame are dropped. A new STX drops an unfinished
/// frame. A frame may be spread over any number of calls of feed().
class FrameDecoder
{
public:
    static constexpr char kStx = 0x02;
    static constexpr char kEot = 0x04; ///< ends the frames of the eye/constellation link
    static constexpr char kCr = 0x0D;  ///< ends the frames of all other links

    /// Longest frame content in bytes, unless another one is given; a longer one is dropped up to the next STX, so that
    /// a peer that never ends its frame cannot fill the memory.
    static constexpr qsizetype kMaxFrameSize = qsizetype(1024) * 1024;

    using FrameHandler = std::function<void(const QByteArray &frame)>;

    explicit FrameDecoder(char endByte, qsizetype maxFrameSize = kMaxFrameSize)
        : m_endByte(endByte)
        , m_maxFrameSize(maxFrameSize)
    {
    }

    /// Takes the next bytes of the stream and calls @p frameComplete once for every frame that they complete,
    /// with the content between STX and end byte.
    void feed(QByteArrayView bytes, const FrameHandler &frameComplete);

    /// Forgets the frame that has begun.
    void reset();

private:
    void append(QByteArrayView content);

    char m_endByte;
    qsizetype m_maxFrameSize;
    bool m_inFrame = false;
    QByteArray m_buffer;
};
