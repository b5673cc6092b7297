#include "remote/files/OutputFile.h"

#include "remote/files/ExistingFile.h"
#include "remote/files/Interruptible.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

int openDuplicate(int file) { return ::fcntl(file, F_DUPFD_CLOEXEC, 0); }

/// A disk without room for one more file is full; every other fault of opening is one of the path.
OutputFile::Fault faultOfOpening(int fault)
{
    return fault == ENOSPC || fault == EDQUOT ? OutputFile::Fault::NotTaken : OutputFile::Fault::UnusablePath;
}

} // namespace

OutputFile::~OutputFile()
{
    if (isOpen())
        ::close(m_file);
}

bool OutputFile::create(const QString &path, QByteArrayView bytes)
{
    m_path = path;
    const ExistingFile target(path);
    if (target.isStandardOutput())
        return writeInto(openDuplicate(STDOUT_FILENO), bytes);
    if (target.exists() && !target.isRegular())
        return writeInto(Interruptible::openForWriting(QFile::encodeName(path).constData()), bytes);
    return replace(target.exists() ? QFileInfo(path).canonicalFilePath() : path, bytes);
}

bool OutputFile::replace(const QString &path, QByteArrayView bytes)
{
    QSaveFile file(path);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly))
        return fail(file.errorString(), faultOfOpening(errno));
    // Past the file's own buffer, which takes a short write for success.
    if (const int fault = Interruptible::write(file.handle(), bytes); fault != 0)
        return fail(fault, Fault::NotTaken);
    if (::fsync(file.handle()) != 0)
        return fail(errno, Fault::NotTaken);
    m_file = openDuplicate(file.handle());
    m_wholeSize = bytes.size();
    if (!file.commit())
        return fail(file.errorString(), Fault::NotTaken);
    ::lseek(m_file, 0, SEEK_END); // the commit may have moved the position
    return true;
}

bool OutputFile::writeInto(int file, QByteArrayView bytes)
{
    m_file = file;
    return isOpen() ? append(bytes) : fail(errno, faultOfOpening(errno));
}

bool OutputFile::append(QByteArrayView bytes)
{
    const int fault = Interruptible::write(m_file, bytes);
    const bool isFile = m_wholeSize >= 0;
    if (fault == 0) {
        m_wholeSize += isFile ? bytes.size() : 0;
        return true;
    }
    if (isFile && ::ftruncate(m_file, m_wholeSize) != 0)
        return fail(errno, Fault::NotTaken);
    return fail(fault, Fault::NotTaken);
}

bool OutputFile::close()
{
    const bool isFile = m_wholeSize >= 0;
    const bool isOnDisk = !isFile || ::fsync(m_file) == 0;
    const int fault = errno;
    ::close(std::exchange(m_file, -1));
    return isOnDisk || fail(fault, Fault::NotTaken);
}

bool OutputFile::fail(int error, Fault fault) { return fail(QString::fromLocal8Bit(std::strerror(error)), fault); }

bool OutputFile::fail(const QString &reason, Fault fault)
{
    m_problem = u"%1: %2"_s.arg(m_path, reason);
    m_fault = fault;
    return false;
}

} // namespace remote
