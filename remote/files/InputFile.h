#pragma once

#include <QIODevice>
#include <QString>

#include <memory>

namespace remote {

/// A file that a command works from: a regular one, or a pipe, which is read to its end. Devices and folders are none.
class InputFile
{
public:
    static constexpr qint64 kMebibyte = qint64(1024) * 1024;

    /// Opens it for reading. End signals cut the wait for a writer short. @param mostBytes of a pipe
    /// @return what is wrong; empty if it is open
    [[nodiscard]] QString open(const QString &path, qint64 mostBytes);
    /// The content, from its start; can be read again from there. Only once it is open.
    [[nodiscard]] QIODevice &content() { return *m_content; }

private:
    [[nodiscard]] QString readPipe(const QString &path, qint64 mostBytes);

    std::unique_ptr<QIODevice> m_content;
};

} // namespace remote
