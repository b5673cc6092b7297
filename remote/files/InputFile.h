#pragma once

#include <QIODevice>
#include <QString>

#include <memory>

namespace remote {

/// An input file: a regular file, or a pipe, which is read to its end. Devices and folders are refused.
class InputFile
{
public:
    static constexpr qint64 kMebibyte = qint64(1024) * 1024;

    /// Opens it for reading. An end signal interrupts the wait for the writer of a pipe. @param maxBytes limit for a
    /// pipe
    /// @return what is wrong; empty if it is open
    [[nodiscard]] QString open(const QString &path, qint64 maxBytes);
    /// The content, seekable; only once it is open.
    [[nodiscard]] QIODevice &content() { return *m_content; }

private:
    [[nodiscard]] QString readPipe(const QString &path, qint64 maxBytes);

    std::unique_ptr<QIODevice> m_content;
};

} // namespace remote
