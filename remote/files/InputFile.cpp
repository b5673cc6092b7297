#include "remote/files/InputFile.h"

#include "remote/files/ExistingFile.h"
#include "remote/files/Interruptible.h"

#include <QBuffer>
#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

constexpr int kWriterWaitMs = 800; // the program ends within a second

/// @return 0, otherwise what went wrong as an errno
int readToEnd(int file, qint64 maxBytes, QByteArray &bytes)
{
    QByteArray piece(65'536, Qt::Uninitialized);
    while (bytes.size() <= maxBytes) {
        if (!Interruptible::waitToRead(file, kWriterWaitMs))
            return EINTR;
        // No bytes mean the end, also after a wait in vain because nobody has it open for writing.
        const auto count = ::read(file, piece.data(), size_t(piece.size()));
        if (count == 0)
            return 0;
        if (count > 0)
            bytes.append(piece.constData(), count);
        else if (errno != EAGAIN && errno != EINTR)
            return errno;
    }
    return EFBIG;
}

} // namespace

QString InputFile::open(const QString &path, qint64 maxBytes)
{
    const ExistingFile source(path);
    if (source.isPipe())
        return readPipe(path, maxBytes);
    if (source.exists() && !source.isRegular())
        return u"%1: a folder or a device, not a file"_s.arg(path);
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly))
        return u"%1: %2"_s.arg(path, file->errorString());
    m_content = std::move(file);
    return {};
}

QString InputFile::readPipe(const QString &path, qint64 maxBytes)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    QByteArray bytes;
    const int fault = file < 0 ? errno : readToEnd(file, maxBytes, bytes);
    if (file >= 0)
        ::close(file);
    if (fault == EFBIG)
        return u"%1: more than %2 MiB come through it"_s.arg(path).arg(maxBytes / kMebibyte);
    if (fault != 0)
        return u"%1: %2"_s.arg(path, QString::fromLocal8Bit(std::strerror(fault)));
    if (bytes.isEmpty())
        return u"%1: nobody writes into it"_s.arg(path);
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    m_content = std::move(buffer);
    return {};
}

} // namespace remote
