#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QMetaType>
#include <QString>

/// One block of the eye/constellation link, decoded from its frame.
///
/// An eye or constellation block holds 1024 bytes: 256 samples of two signed 16-bit numbers, most significant byte
/// first, in units of 2^-15. A serial-data block holds 5 bytes as received.
class EyeConstData
{
public:
    static constexpr qsizetype kEyeFrameSize = 2051;      ///< characters of an eye or constellation block
    static constexpr qsizetype kSerialDataFrameSize = 15; ///< characters of a serial-data block

    EyeConstData() = default;

    /// @param frame the content of the frame; one of another length gives a block without bytes
    explicit EyeConstData(const QByteArray &frame);

    /// The payload's hexadecimal digits in upper case; the whole frame if its length is none of the two.
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }
    /// The demodulator's number, one character; empty if the frame is too short to hold it.
    [[nodiscard]] const QString &channel() const { return m_channel; }

private:
    QString m_text;
    QByteArray m_bytes;
    QString m_channel;
};

/// Decodes pairs of hexadecimal digits of either case, high digit first. Any other character has a value as well: its
/// distance from "0", or from "A" on its distance from "A" plus ten. There is no error.
[[nodiscard]] QByteArray decodeHexPairs(QByteArrayView digits);

Q_DECLARE_METATYPE(EyeConstData)
