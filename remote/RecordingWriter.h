#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>

class ClientLink;

/// Writes what goes over the links into a file, a line a frame.
class RecordingWriter : public QObject
{
    Q_OBJECT

public:
    /// Begins a new recording. @return what is wrong; empty if the file is open
    [[nodiscard]] QString open(const QString &path);
    /// Records both directions of @p link.
    void attach(const ClientLink &link);

Q_SIGNALS:
    void recorded();
    /// The file takes no more; comes once, with the reason.
    void failed(const QString &reason);

private:
    [[nodiscard]] bool put(const QByteArray &line);
    void write(const QByteArray &link, char direction, const QByteArray &frame);

    QFile m_file;
    int m_fault = 0; ///< why the file takes no more, as an errno
    QElapsedTimer m_clock;
};
