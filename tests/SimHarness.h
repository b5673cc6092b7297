#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// Runs the chassis simulator as a user would and talks to it: bytes through its terminals, lines on its console.
class SimHarness
{
public:
    /// Starts with a fresh device folder, without boot time unless `arguments` say otherwise, and waits for "ready".
    explicit SimHarness(const QStringList &arguments = {});
    ~SimHarness();
    SimHarness(const SimHarness &) = delete;
    SimHarness &operator=(const SimHarness &) = delete;

    static QString program();
    bool isReady() const { return m_ready; }
    QProcess &process() { return m_process; }
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// One console line and the line that answers it.
    QByteArray order(const QByteArray &line);
    QByteArray readConsoleLine();

    /// Opens a terminal and waits until the chassis has noticed; only the command link's names are waited for.
    bool open(const QString &name = QStringLiteral("ttyUSB0"));
    void close();
    int descriptor() const { return m_descriptor; }
    /// Hang-up at the chassis' end within `ms`.
    bool hungUp(int ms = 3000) const;

    void write(const QByteArray &text);
    /// Next bytes; empty after `ms` without any.
    QByteArray readBytes(int ms = 3000);
    /// Text of the next frame; "(nothing)" after `ms` without one.
    QByteArray nextFrame(int ms = 3000);
    /// Sends a request and gives the next frame. Silence shows as the answer to a second, harmless query.
    QByteArray ask(const QByteArray &text);
    /// The data part of a query's answer.
    QByteArray valueOf(const QByteArray &query);
    /// Frames up to and including `last`.
    QList<QByteArray> framesUntil(const QByteArray &last);

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    bool m_ready = false;
    int m_descriptor = -1;
    QByteArray m_bytes;
};
