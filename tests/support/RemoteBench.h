#pragma once

#include "support/FarEnd.h"
#include "support/Wait.h"

#include <QFile>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

inline const QByteArray kRecording = "zirvo-recording 1 2026-01-01T00:00:00.000Z\n";

/// The arguments of a command line.
inline QStringList words(const char *line) { return QString::fromLatin1(line).split(u' ', Qt::SkipEmptyParts); }

/// A settings file with these channels.
inline QByteArray settingsFile(const QByteArray &channels)
{
    return R"({"format":"zirvo-settings","version":1,"channels":{)" + channels + "}}";
}

inline QByteArray channel(const QByteArray &address, const QByteArray &settings)
{
    return '"' + address + "\":{\"settings\":{" + settings + "}}";
}

/// Runs zirvo-remote as a user starts it, against a scripted head.
///
/// A script is words separated by ";": "R1:FREQ=2250.5" is a value, every other one a reaction and its key: "nak"
/// refuses, "keep" lets the card refuse, "quiet" pushes nothing, "drop" neither stores nor pushes, "silent" answers
/// nothing, "mute" no set, "late" answers a query after the next, "twice" answers twice, "hangup" pulls the cable;
/// "move R1:FREQ R1:IFBW=1" lets a set change another setting.
class RemoteBench
{
public:
    explicit RemoteBench(const QByteArray &script = {})
        : m_remote(std::make_unique<FarEnd>(path("client-remote")))
        , m_status(path("client-status"))
    {
        m_remote->setHandler([this](const QByteArray &frame) { answer(frame); });
        play(script);
    }
    ~RemoteBench()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(RemoteBench)

    [[nodiscard]] QString path(const char *file) const { return m_folder.filePath(QString::fromLatin1(file)); }
    QString write(const char *file, const QByteArray &text) const
    {
        QFile target(path(file));
        if (!target.open(QIODevice::WriteOnly) || target.write(text) != text.size())
            qFatal("cannot write a file");
        return target.fileName();
    }
    [[nodiscard]] QByteArray read(const char *file) const
    {
        QFile source(path(file));
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }
    /// Makes a FIFO. @return a non-blocking descriptor for reading, owned by the caller
    int makeFifo(const char *file, int pipeSize = 65'536) const
    {
        const QByteArray name = QFile::encodeName(path(file));
        const int made = ::mkfifo(name.constData(), 0600);
        const int reader = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (made != 0 || reader < 0 || ::fcntl(reader, F_SETPIPE_SZ, pipeSize) < 0)
            qFatal("cannot make a FIFO");
        return reader;
    }
    void play(const QByteArray &script)
    {
        for (const QByteArray &word : script.split(';')) {
            const QByteArrayList parts = word.trimmed().split(' ');
            if (const qsizetype equals = word.indexOf('='); equals > 0 && parts[0] != "move")
                m_values[word.left(equals).trimmed()] = word.mid(equals + 1);
            else if (parts.size() > 2)
                m_moves[parts[1]] = parts[2];
            else if (parts.size() == 2)
                m_reactions[parts[1]] = parts[0];
        }
    }

    /// Lets the program write files of up to @p bytes, as on a disk with that much room.
    void limitFiles(rlim_t bytes)
    {
        m_process.setChildProcessModifier([bytes] {
            const rlimit limit{ bytes, RLIM_INFINITY };
            ::setrlimit(RLIMIT_FSIZE, &limit);
        });
    }
    /// Whether the program handles SIGTERM and waits for something.
    [[nodiscard]] bool waitsForSignal() const
    {
        static const QRegularExpression catches(QStringLiteral("State:\\sS.*SigCgt:\\s[0-9a-f]*[4-7c-f][0-9a-f]{3}\\n"),
                                                QRegularExpression::DotMatchesEverythingOption);
        QFile status(QStringLiteral("/proc/%1/status").arg(m_process.processId()));
        return status.open(QIODevice::ReadOnly) && catches.match(QString::fromLatin1(status.readAll())).hasMatch();
    }

    void start(const QStringList &arguments) { m_process.start(program(), options() + expanded(arguments)); }
    /// Through a shell that redirects standard output, as "| head -n 1"; the exit code goes to standard error.
    void startInto(const QString &output, const QStringList &arguments)
    {
        const QStringList shell{ QStringLiteral("-c"), QStringLiteral("{ \"$0\" \"$@\"; echo $? >&2; } ") + output };
        m_process.start(QStringLiteral("/bin/sh"), shell + QStringList{ program() } + options() + expanded(arguments));
    }
    /// Waits for the end. @return the exit code, or -1 after the time-out
    int finish()
    {
        const bool ended = waitUntil([this] { return m_process.state() == QProcess::NotRunning; }, 30'000);
        return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    int run(const QStringList &arguments)
    {
        start(arguments);
        return finish();
    }
    /// Waits until the client has opened its links and reported its presence.
    [[nodiscard]] bool waitForClient() { return m_remote->waitForFrame("U0:REMOTE:1\x06"); }

    [[nodiscard]] QProcess &process() { return m_process; }
    /// What the program has written since the last call.
    [[nodiscard]] QByteArray output() { return m_process.readAllStandardOutput(); }
    [[nodiscard]] QByteArray errors() { return m_process.readAllStandardError(); }
    [[nodiscard]] FarEnd &remote() { return *m_remote; }
    [[nodiscard]] FarEnd &status() { return m_status; }
    /// What the client sent in this run, joined by blanks: without presence answers, and a repeated query only once.
    [[nodiscard]] QByteArray sent() const { return m_sent.join(' '); }
    /// The sets among it.
    [[nodiscard]] QByteArray sets() const
    {
        QByteArrayList sets = m_sent;
        sets.removeIf([](const QByteArray &frame) { return frame.endsWith('?'); });
        return sets.join(' ');
    }

private:
    [[nodiscard]] static QString program() { return QStringLiteral(ZIRVO_BIN_DIR "/zirvo-remote"); }
    [[nodiscard]] QStringList options() const { return { QStringLiteral("--device-dir"), m_folder.path() }; }
    /// "@file" is a file in the folder of the links.
    [[nodiscard]] QStringList expanded(QStringList arguments)
    {
        m_sent.clear();
        if (m_remote)
            m_remote->clear();
        return arguments.replaceInStrings(QStringLiteral("@"), m_folder.path() + QLatin1Char('/'));
    }

    void answer(const QByteArray &frame)
    {
        if (frame.endsWith('\x06'))
            return;
        const QByteArrayList parts = frame.split(':');
        const bool isQuery = frame.endsWith('?');
        if (!isQuery || m_sent.isEmpty() || m_sent.constLast() != frame)
            m_sent.append(frame);
        const QByteArray key = isQuery ? frame.chopped(1) : parts.first(2).join(':');
        const QByteArray reaction = m_reactions.value(key);
        if (reaction == "silent" || (reaction == "mute" && !isQuery))
            return;
        if (reaction == "hangup") {
            QMetaObject::invokeMethod(
                qApp, [this] { m_remote.reset(); }, Qt::QueuedConnection);
        } else if (!m_values.contains(key) || (reaction == "nak" && !isQuery)) {
            m_remote->sendFrame(key + ":\x15");
        } else if (isQuery) {
            query(key, reaction);
        } else {
            m_remote->sendFrame(frame + '\x06');
            set(key, parts.sliced(2).join(':'), reaction);
        }
    }
    void query(const QByteArray &key, const QByteArray &reaction)
    {
        const QByteArray text = key + ':' + m_values[key] + '\x06';
        const QByteArray late = std::exchange(m_late, reaction == "late" ? text : QByteArray());
        if (reaction != "late")
            m_remote->sendFrame(text);
        if (reaction == "twice")
            m_remote->sendFrame(text);
        if (!late.isEmpty())
            m_remote->sendFrame(late);
    }
    void set(const QByteArray &key, const QByteArray &value, const QByteArray &reaction)
    {
        if (reaction != "keep" && reaction != "drop")
            m_values[key] = value;
        if (const QByteArray moved = m_moves.value(key); !moved.isEmpty()) {
            play(moved);
            m_remote->sendFrame(QByteArray(moved).replace('=', ':'));
        }
        if (reaction != "quiet" && reaction != "drop")
            m_remote->sendFrame(key + ':' + m_values[key]);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<FarEnd> m_remote;
    FarEnd m_status;
    QProcess m_process;
    QMap<QByteArray, QByteArray> m_values;
    QMap<QByteArray, QByteArray> m_reactions;
    QMap<QByteArray, QByteArray> m_moves;
    QByteArray m_late;
    QByteArrayList m_sent;
};
