#pragma once

#include "support/Wait.h"

#include <QProcess>

#include <csignal>

inline constexpr int kStartMs = 20'000; // a program under the sanitizers on a busy machine
/// A program started as a user starts it; killed if it is still there at the end.
class Program : public QProcess
{
public:
    Program(const QString &program, const QStringList &arguments)
    {
        setProcessChannelMode(ForwardedErrorChannel);
        start(program, arguments);
        if (!waitForStarted())
            qFatal("this test needs %s", qPrintable(program));
    }
    ~Program() override
    {
        kill();
        waitForFinished();
    }

    [[nodiscard]] bool ends(int exitCodeWanted)
    {
        return waitUntil([this] { return state() == NotRunning; }, kStartMs) && exitStatus() == NormalExit &&
               exitCode() == exitCodeWanted;
    }
    [[nodiscard]] bool signal(int number) const { return ::kill(pid_t(processId()), number) == 0; }
    /// The next line that the program writes; empty if none comes.
    [[nodiscard]] QByteArray nextLine()
    {
        return waitUntil([this] { return canReadLine(); }, kStartMs) ? readLine().trimmed() : QByteArray();
    }
};

/// A screen of its own for the programs started from now on, and an operator's keyboard to it.
class Screen
{
public:
    Screen()
        : m_server(QStringLiteral("Xvfb"),
                   { QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                     QStringLiteral("1280x800x24") })
    {
        qputenv("DISPLAY", ':' + m_server.nextLine());
        qputenv("QT_QPA_PLATFORM", "xcb");
        // The libraries under a real screen leak; the offscreen runs show whether the program does. A sanitizer's
        // verdict must not pass for the program's own exit code 1.
        qputenv("ASAN_OPTIONS", "detect_leaks=0:exitcode=99");
    }
    ~Screen()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qunsetenv("ASAN_OPTIONS");
    }

    [[nodiscard]] bool operate(const QStringList &arguments)
    {
        return Program(QStringLiteral("xdotool"), arguments).ends(0);
    }
    /// Waits for the window with this in its title and gives it the keyboard.
    [[nodiscard]] bool focus(const QString &title)
    {
        return operate({ QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                         QStringLiteral("--name"), title, QStringLiteral("windowfocus"), QStringLiteral("--sync") });
    }

private:
    Program m_server;
};
