#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>

namespace sim {

namespace Wire {
inline constexpr char kStx = 0x02;
inline constexpr char kEot = 0x04;
inline constexpr char kAck = 0x06;
inline constexpr char kCr = 0x0d;
inline constexpr char kNak = 0x15;

/// `text` with its start and end byte.
[[nodiscard]] QByteArray framed(const QByteArray &text);
} // namespace Wire

/// Cuts a byte stream into frames. Bytes outside frames are dropped, a second start byte restarts the frame, and a
/// frame longer than a card's buffer is discarded.
class FrameCutter
{
public:
    /// The text of the frames completed by `bytes`, without start and end byte.
    [[nodiscard]] QByteArrayList feed(QByteArrayView bytes);
    /// Discards an incomplete frame.
    void reset();

private:
    bool m_inFrame = false;
    QByteArray m_frame;
};

} // namespace sim
