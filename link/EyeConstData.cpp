#include "link/EyeConstData.h"

#include <array>

namespace {

constexpr qsizetype kHeadSize = 3; // two characters and the channel
constexpr qsizetype kSerialDataHeadSize = 5;

constexpr auto kNibbles = [] {
    std::array<quint8, 256> nibbles{};
    for (int code = 0; code < 256; ++code) {
        const int upper = code >= 'a' && code <= 'z' ? code - 'a' + 'A' : code;
        nibbles[std::size_t(code)] = static_cast<quint8>(upper < 'A' ? upper - '0' : upper - 'A' + 10);
    }
    return nibbles;
}();

qsizetype headSize(qsizetype frameSize)
{
    if (frameSize == EyeConstData::kEyeFrameSize)
        return kHeadSize;
    return frameSize == EyeConstData::kSerialDataFrameSize ? kSerialDataHeadSize : 0;
}

} // namespace

EyeConstData::EyeConstData(const QByteArray &frame) : m_text(QString::fromLatin1(frame.toUpper()))
{
    if (frame.size() >= kHeadSize)
        m_channel = m_text.at(kHeadSize - 1);
    if (const auto head = headSize(frame.size()); head > 0) {
        m_text.remove(0, head);
        m_bytes = decodeHexPairs(QByteArrayView(frame).sliced(head));
    }
}

QByteArray decodeHexPairs(QByteArrayView digits)
{
    const auto nibble = [digits](qsizetype i) { return kNibbles[static_cast<quint8>(digits[i])]; };
    QByteArray bytes(digits.size() / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(nibble(2 * i) << 4 | nibble(2 * i + 1));
    return bytes;
}
