#pragma once

#include <QByteArrayView>
#include <QString>

namespace remote {

/// Where a command saves. A file is whole or not there: an older one is replaced once the new one is on the disk, and
/// what is added later is added whole. A device, a FIFO or standard output is written into.
class OutputFile
{
public:
    enum class Fault { UnusablePath, NotTaken };

    OutputFile() = default;
    ~OutputFile();
    Q_DISABLE_COPY_MOVE(OutputFile)

    /// Makes the file, with @p bytes in it. @return false if that failed; an older file is as it was
    [[nodiscard]] bool create(const QString &path, QByteArrayView bytes);
    /// Adds @p bytes. @return false if they were not taken; nothing of them is in a file then
    [[nodiscard]] bool append(QByteArrayView bytes);
    /// Waits until everything is on the disk, and closes. @return false if it did not get there
    [[nodiscard]] bool close();

    [[nodiscard]] bool isOpen() const { return m_file >= 0; }
    /// What went wrong, with the path.
    [[nodiscard]] const QString &problem() const { return m_problem; }
    [[nodiscard]] Fault fault() const { return m_fault; }

private:
    [[nodiscard]] bool replace(const QString &path, QByteArrayView bytes);
    [[nodiscard]] bool writeInto(int file, QByteArrayView bytes);
    bool fail(int error, Fault fault);
    bool fail(const QString &reason, Fault fault);

    QString m_path;
    int m_file = -1;
    qint64 m_wholeSize = -1; ///< bytes of a file that are complete; -1 for what is written into
    QString m_problem;
    Fault m_fault = Fault::UnusablePath;
};

} // namespace remote
