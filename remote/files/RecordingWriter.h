#pragma once

#include "remote/files/OutputFile.h"

#include <QElapsedTimer>
#include <QObject>

namespace remote {

class ClientLink;

/// Writes what goes over the links into a file, a line a frame. The file holds whole lines only.
class RecordingWriter : public QObject
{
    Q_OBJECT

public:
    /// Begins a new recording in place of an older one. @return false if the file cannot be made
    [[nodiscard]] bool open(const QString &path);
    /// Records both directions of @p link.
    void attach(const ClientLink &link);
    /// Ends the recording, if there is one. @return false if not all of it is on the disk
    [[nodiscard]] bool close();
    /// What is wrong with the file, and what that means for the program.
    [[nodiscard]] const OutputFile &file() const { return m_file; }

Q_SIGNALS:
    void recorded();
    /// The file takes no more; comes once, with the reason.
    void failed(const QString &reason);

private:
    void write(const QByteArray &link, char direction, const QByteArray &frame);

    OutputFile m_file;
    bool m_failed = false;
    QElapsedTimer m_clock;
};

} // namespace remote
