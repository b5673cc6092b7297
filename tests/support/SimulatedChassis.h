#pragma once

#include "support/Program.h"

#include <QTemporaryDir>

/// The shipped simulator with its devices in a folder of its own, and the environment that leads a head there.
class SimulatedChassis
{
public:
    enum class Record { Kept, None };

    /// It answers at once, without boot time, unless @p arguments say otherwise.
    explicit SimulatedChassis(const QStringList &arguments = {}, Record record = Record::Kept);

    [[nodiscard]] QString path(const QString &name = {}) const { return m_folder.filePath(name); }

    /// One line on its console, and the line that answers it.
    QByteArray order(const QByteArray &line);
    struct Outcome
    {
        int exitCode = -1; ///< less than 0 for a client that crashed or did not end
        QByteArray output;
    };
    /// Runs the remote client's program on the links of this chassis' head.
    [[nodiscard]] Outcome client(const QStringList &arguments) const;

    /// Requests that it has received on its links so far, oldest first; none without a record.
    [[nodiscard]] QByteArrayList requests() const;
    /// What it holds: the answer to every query, "R1:FREQ:2250.5".
    [[nodiscard]] QByteArrayList values();

private:
    QTemporaryDir m_folder;
    Program m_program;
};
