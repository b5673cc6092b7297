#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>

namespace remote {

/// Cuts the bytes from the head into frames. Bytes outside frames are dropped, a second start byte restarts the frame,
/// and a frame longer than 64 KiB is dropped up to the next start byte.
class FrameCutter
{
public:
    /// The frames completed by @p bytes, without start and end byte.
    [[nodiscard]] QByteArrayList feed(QByteArrayView bytes);
    /// @p frame with its start and end byte.
    [[nodiscard]] static QByteArray framed(const QByteArray &frame);

private:
    bool m_inFrame = false;
    QByteArray m_frame;
};

} // namespace remote
