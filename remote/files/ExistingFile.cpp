#include "remote/files/ExistingFile.h"

#include <QFile>

#include <unistd.h>

namespace remote {

namespace {

bool isOne(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

} // namespace

ExistingFile::ExistingFile(const QString &path)
    : m_exists(!path.isEmpty() && ::stat(QFile::encodeName(path).constData(), &m_status) == 0)
{
}

bool ExistingFile::isStandardOutput() const
{
    struct stat output = {};
    return m_exists && ::fstat(STDOUT_FILENO, &output) == 0 && isOne(m_status, output);
}

bool ExistingFile::isSameAs(const ExistingFile &other) const
{
    return m_exists && other.m_exists && isOne(m_status, other.m_status);
}

} // namespace remote
