#pragma once

#include <QByteArray>
#include <QString>

/// Text of frames. It is UTF-8; a frame that is not valid UTF-8 comes from a far end that writes Latin-1, in which
/// every byte stands for a character.
namespace FrameText {

struct Decoded
{
    QString text;
    bool isLatin1 = false; ///< encode it with this flag to get the same bytes
};

[[nodiscard]] Decoded decode(const QByteArray &frame);
[[nodiscard]] QByteArray encode(const QString &text, bool isLatin1);

} // namespace FrameText
