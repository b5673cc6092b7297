#include "link/FrameText.h"

#include <QStringDecoder>

FrameText::Decoded FrameText::decode(const QByteArray &frame)
{
    // Stateless, so that a frame that ends within a character is an error too.
    QStringDecoder utf8(QStringDecoder::Utf8,
                        QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    const QString text = utf8.decode(frame);
    return utf8.hasError() ? Decoded{ QString::fromLatin1(frame), true } : Decoded{ text, false };
}

QByteArray FrameText::encode(const QString &text, bool isLatin1) { return isLatin1 ? text.toLatin1() : text.toUtf8(); }
