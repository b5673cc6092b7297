#pragma once

#include <QByteArrayView>
#include <QString>

namespace remote {

/// An output file that is complete or absent: it replaces an older one once it is on the disk, and bytes are appended
/// all or none. Devices, FIFOs and standard output are written in place.
class OutputFile
{
public:
    enum class Fault { UnusablePath, NotTaken };

    OutputFile() = default;
    ~OutputFile();
    Q_DISABLE_COPY_MOVE(OutputFile)

    /// Creates the file with @p bytes in it. @return false if that failed; an older file is unchanged then
    [[nodiscard]] bool create(const QString &path, QByteArrayView bytes);
    /// Appends @p bytes. @return false if that failed; a file has none of them then
    [[nodiscard]] bool append(QByteArrayView bytes);
    /// Syncs to the disk and closes. @return false if that failed
    [[nodiscard]] bool close();

    [[nodiscard]] bool isOpen() const { return m_file >= 0; }
    /// The reason of a failure, with the path.
    [[nodiscard]] const QString &problem() const { return m_problem; }
    [[nodiscard]] Fault fault() const { return m_fault; }

private:
    [[nodiscard]] bool replace(const QString &path, QByteArrayView bytes);
    [[nodiscard]] bool writeInto(int file, QByteArrayView bytes);
    bool fail(int error, Fault fault);
    bool fail(const QString &reason, Fault fault);

    QString m_path;
    int m_file = -1;
    qint64 m_wholeSize = -1; ///< bytes of a file without a partial append; -1 if written in place
    QString m_problem;
    Fault m_fault = Fault::UnusablePath;
};

} // namespace remote
