#pragma once

#include "remote/files/OutputFile.h"

#include <QElapsedTimer>
#include <QObject>

namespace remote {

class ClientLink;

/// Records the traffic of the links in a file, one line per frame. The file holds whole lines only.
class RecordingWriter : public QObject
{
    Q_OBJECT

public:
    /// Starts a recording that replaces an older one. @return false if the file cannot be created
    [[nodiscard]] bool open(const QString &path);
    /// Records both directions of @p link.
    void attach(const ClientLink &link);
    /// Ends the recording, if there is one. @return false if not all of it is on the disk
    [[nodiscard]] bool close();
    /// The file, for the reason of a failure.
    [[nodiscard]] const OutputFile &file() const { return m_file; }

Q_SIGNALS:
    void recorded();
    /// Writing failed. Emitted once.
    void failed(const QString &reason);

private:
    void write(const QByteArray &link, char direction, const QByteArray &frame);

    OutputFile m_file;
    bool m_failed = false;
    QElapsedTimer m_clock;
};

} // namespace remote
