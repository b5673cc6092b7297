#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>

/// One block of the eye/constellation link, as cut by the reader.
class EyeConstData
{
public:
    static constexpr qsizetype kEyeFrameSize = 2051;      ///< characters of an eye or constellation block
    static constexpr qsizetype kSerialDataFrameSize = 15; ///< characters of a serial-data block

    EyeConstData() = default;

    /// @param frame the content of the frame, hexadecimal text behind a short head
    explicit EyeConstData(const QByteArray &frame) : m_text(QString::fromLatin1(frame)) {}

    [[nodiscard]] const QString &text() const { return m_text; }

private:
    QString m_text;
};

Q_DECLARE_METATYPE(EyeConstData)
