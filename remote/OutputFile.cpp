#include "OutputFile.h"

#include "EndSignals.h"
#include "ExistingFile.h"
#include "ExitCode.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

int openDuplicate(int file) { return ::fcntl(file, F_DUPFD_CLOEXEC, 0); }

/// A disk without room for one more file is a full one.
int codeForOpening(int fault) { return fault == ENOSPC || fault == EDQUOT ? ExitCode::NoAnswer : ExitCode::Usage; }

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
        return writeInto(EndSignals::openForWriting(QFile::encodeName(path).constData()), bytes);
    return replace(target.exists() ? QFileInfo(path).canonicalFilePath() : path, bytes);
}

bool OutputFile::replace(const QString &path, QByteArrayView bytes)
{
    QSaveFile file(path);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly))
        return fail(file.errorString(), codeForOpening(errno));
    // Not through the file's own buffer, which takes a short write for a good one.
    if (const int fault = EndSignals::write(file.handle(), bytes); fault != 0)
        return fail(fault, ExitCode::NoAnswer);
    if (::fsync(file.handle()) != 0)
        return fail(errno, ExitCode::NoAnswer);
    m_file = openDuplicate(file.handle());
    m_wholeSize = bytes.size();
    if (!file.commit())
        return fail(file.errorString(), ExitCode::NoAnswer);
    ::lseek(m_file, 0, SEEK_END); // the commit may have moved it
    return true;
}

bool OutputFile::writeInto(int file, QByteArrayView bytes)
{
    m_file = file;
    return isOpen() ? append(bytes) : fail(errno, codeForOpening(errno));
}

bool OutputFile::append(QByteArrayView bytes)
{
    const int fault = EndSignals::write(m_file, bytes);
    const bool isFile = m_wholeSize >= 0;
    if (fault == 0) {
        m_wholeSize += isFile ? bytes.size() : 0;
        return true;
    }
    if (isFile && ::ftruncate(m_file, m_wholeSize) != 0)
        return fail(errno, ExitCode::NoAnswer);
    return fail(fault, ExitCode::NoAnswer);
}

bool OutputFile::close()
{
    const bool isFile = m_wholeSize >= 0;
    const bool isOnDisk = !isFile || ::fsync(m_file) == 0;
    const int fault = errno;
    ::close(std::exchange(m_file, -1));
    return isOnDisk || fail(fault, ExitCode::NoAnswer);
}

bool OutputFile::fail(int fault, int exitCode) { return fail(QString::fromLocal8Bit(std::strerror(fault)), exitCode); }

bool OutputFile::fail(const QString &reason, int exitCode)
{
    m_problem = u"%1: %2"_s.arg(m_path, reason);
    m_exitCode = exitCode;
    return false;
}
