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

constexpr int kWriterWaitMs = 800; // all in all within a second

/// @return 0, otherwise what went wrong as an errno
int readToEnd(int file, qint64 mostBytes, QByteArray &bytes)
{
    QByteArray piece(65'536, Qt::Uninitialized);
    while (bytes.size() <= mostBytes) {
        if (!Interruptible::waitToRead(file, kWriterWaitMs))
            return EINTR;
        // Nothing read means an end; also when the wait was in vain and nobody has it open for writing.
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

QString InputFile::open(const QString &path, qint64 mostBytes)
{
    const ExistingFile source(path);
    if (source.isPipe())
        return readPipe(path, mostBytes);
    if (source.exists() && !source.isRegular())
        return u"%1: a folder or a device, not a file"_s.arg(path);
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly))
        return u"%1: %2"_s.arg(path, file->errorString());
    m_content = std::move(file);
    return {};
}

QString InputFile::readPipe(const QString &path, qint64 mostBytes)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    QByteArray bytes;
    const int fault = file < 0 ? errno : readToEnd(file, mostBytes, bytes);
    if (file >= 0)
        ::close(file);
    if (fault == EFBIG)
        return u"%1: more than %2 MiB come through it"_s.arg(path).arg(mostBytes / kMebibyte);
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
