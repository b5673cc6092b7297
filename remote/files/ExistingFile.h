#pragma once

#include <QString>

#include <sys/stat.h>

namespace remote {

/// What a path leads to, behind all symbolic links.
class ExistingFile
{
public:
    explicit ExistingFile(const QString &path);

    [[nodiscard]] bool exists() const { return m_exists; }
    [[nodiscard]] bool isRegular() const { return m_exists && S_ISREG(m_status.st_mode); }
    [[nodiscard]] bool isPipe() const { return m_exists && S_ISFIFO(m_status.st_mode); }
    [[nodiscard]] bool isStandardOutput() const;
    /// Whether both are one file, whatever their paths.
    [[nodiscard]] bool isSameAs(const ExistingFile &other) const;

private:
    struct stat m_status = {};
    bool m_exists = false;
};

} // namespace remote
