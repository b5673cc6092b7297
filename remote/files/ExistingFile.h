#pragma once

#include <QString>

#include <sys/stat.h>

namespace remote {

/// The file that a path leads to, symbolic links resolved.
class ExistingFile
{
public:
    explicit ExistingFile(const QString &path);

    [[nodiscard]] bool exists() const { return m_exists; }
    [[nodiscard]] bool isRegular() const { return m_exists && S_ISREG(m_status.st_mode); }
    [[nodiscard]] bool isPipe() const { return m_exists && S_ISFIFO(m_status.st_mode); }
    [[nodiscard]] bool isStandardOutput() const;
    /// Whether both are the same file.
    [[nodiscard]] bool isSameAs(const ExistingFile &other) const;

private:
    struct stat m_status = {};
    bool m_exists = false;
};

} // namespace remote
