#pragma once

#include "support/Talk.h"
#include "support/Terminal.h"

#include <QProcess>
#include <QTemporaryDir>

/// Runs the chassis simulator as a user would and talks to it: bytes through its terminals, lines on its console.
class SimHarness
{
public:
    /// Starts in a fresh device folder, without boot time unless @p arguments say otherwise; opens the command link.
    explicit SimHarness(const QStringList &arguments = {})
    {
        const QStringList always{ QStringLiteral("--device-dir"), path(), QStringLiteral("--boot-seconds=0") };
        m_process.start(QStringLiteral(ZIRVO_BIN_DIR "/zirvo-chassis-sim"), always + arguments);
        if (answerLine().startsWith("ready"))
            open();
    }
    ~SimHarness() { end(); }
    Q_DISABLE_COPY_MOVE(SimHarness)

    /// Ends the simulator if it still runs; its exit code, or -1 after a crash.
    int end()
    {
        m_process.terminate();
        m_process.waitForFinished();
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    [[nodiscard]] QString path(const QString &name = {}) const { return m_folder.filePath(name); }

    /// One console line and the line that answers it.
    QByteArray order(const QByteArray &line)
    {
        m_process.write(line + '\n');
        return answerLine();
    }
    /// Opens a terminal, for itself alone like a serial port, and waits until the chassis has noticed.
    bool open(const char *name = "ttyUSB0", const QByteArray &link = "command")
    {
        m_link = link;
        return m_terminal.open(path(QString::fromLatin1(name))) && shows(m_link + "=open");
    }
    /// Closes the terminal and waits until the chassis has noticed.
    bool close()
    {
        m_terminal.close();
        m_bytes.clear();
        return shows(m_link + "=plugged");
    }
    bool reopen(const char *name = "ttyUSB0", const QByteArray &link = "command")
    {
        return close() && open(name, link);
    }
    /// The terminal that is open.
    [[nodiscard]] const Terminal &terminal() const { return m_terminal; }
    /// Whether poll() reports @p event on the terminal in time.
    [[nodiscard]] bool sees(short event, int ms = 3000) const { return m_terminal.sees(event, ms); }

    void write(const QByteArray &text) const
    {
        const QByteArray frame = '\x02' + text + '\x0d';
        if (m_terminal.writeBytes(frame) != frame.size())
            qFatal("the terminal took no request");
    }
    /// What came behind the last frame, and the next bytes; empty after @p ms without any.
    QByteArray readBytes(int ms = 3000) { return std::exchange(m_bytes, {}) + m_terminal.readBytes(ms); }
    /// Text of the next frame with ACK and NAK spelt out; "(nothing)" after @p ms without one.
    QByteArray nextFrame(int ms = 3000)
    {
        static const QRegularExpression frame(QStringLiteral("\\x02([^\\x02\\r]*)\\r"));
        QRegularExpressionMatch match;
        while (!(match = frame.match(QString::fromLatin1(m_bytes))).hasMatch()) {
            const QByteArray more = m_terminal.readBytes(ms);
            if (more.isEmpty())
                return "(nothing)";
            m_bytes += more;
        }
        m_bytes.remove(0, match.capturedEnd());
        return match.captured(1).toLatin1().replace('\x06', "ACK").replace('\x15', "NAK");
    }
    /// Frames up to and including the one that begins with @p last.
    QByteArrayList framesUntil(const QByteArray &last)
    {
        QByteArrayList frames{ nextFrame() };
        const QDeadlineTimer deadline(10'000);
        while (!frames.last().startsWith(last) && frames.last() != "(nothing)" && !deadline.hasExpired())
            frames += nextFrame();
        return frames;
    }
    /// Everything that comes for a request, joined by blanks. The answer to a second, harmless query ends the wait.
    QByteArray ask(const QByteArray &text)
    {
        write(text);
        write("U0:VERTSKB");
        const QByteArrayList frames = framesUntil("U0:VERTSKB:");
        return frames.first(frames.size() - (frames.last() == "(nothing)" ? 0 : 1)).join(' ');
    }
    /// Goes through steps as talk() does; a request that begins with "$" is for the console.
    QByteArray talk(const QByteArray &steps)
    {
        const auto request = [this](const QByteArray &said) {
            return said.startsWith('$') ? order(said.mid(1)) : ask(said);
        };
        return ::talk(steps, request, [this] { (void)m_terminal.sees(POLLHUP, 20); });
    }

    /// Waits until the chassis shows @p state, "command=open" for a client at that link, "command=plugged" for none.
    bool shows(const QByteArray &state)
    {
        const QDeadlineTimer deadline(10'000);
        while (!order("show").split(' ').contains(state) && !deadline.hasExpired()) {
        }
        return !deadline.hasExpired();
    }

private:
    QByteArray answerLine()
    {
        const QDeadlineTimer deadline(10'000);
        while (!m_process.canReadLine() && !deadline.hasExpired() && m_process.state() != QProcess::NotRunning)
            m_process.waitForReadyRead(100);
        return m_process.readLine().trimmed();
    }

    QTemporaryDir m_folder;
    QProcess m_process;
    Terminal m_terminal;
    QByteArray m_link;
    QByteArray m_bytes;
};
