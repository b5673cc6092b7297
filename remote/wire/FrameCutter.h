#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>

namespace remote {

/// Cuts what comes from the head into frames. Bytes outside frames are dropped, a second start byte starts over, and
/// a frame longer than 64 KiB is dropped to the next start byte.
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
