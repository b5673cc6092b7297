#include "SimHarness.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>

#include <array>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

SimHarness::SimHarness(const QStringList &arguments)
{
    QStringList all{ QStringLiteral("--device-dir"), m_folder.path() };
    if (!arguments.contains(QStringLiteral("--boot-seconds")))
        all += { QStringLiteral("--boot-seconds"), QStringLiteral("0") };
    m_process.start(program(), all + arguments);
    m_ready = readConsoleLine().startsWith("ready");
}

SimHarness::~SimHarness()
{
    close();
    m_process.terminate();
    m_process.waitForFinished();
}

QString SimHarness::program() { return QCoreApplication::applicationDirPath() + QStringLiteral("/zirvo-chassis-sim"); }

QByteArray SimHarness::order(const QByteArray &line)
{
    m_process.write(line + '\n');
    return readConsoleLine();
}

QByteArray SimHarness::readConsoleLine()
{
    const QDeadlineTimer deadline(10'000);
    while (!m_process.canReadLine() && !deadline.hasExpired() && m_process.state() != QProcess::NotRunning)
        m_process.waitForReadyRead(100);
    return m_process.readLine().trimmed();
}

bool SimHarness::open(const QString &name)
{
    close();
    m_descriptor = ::open(QFile::encodeName(path(name)).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    const bool isCommandLink = name == QStringLiteral("ttyUSB0") || name == QStringLiteral("ttyUSB3");
    const QDeadlineTimer deadline(3000);
    while (isCommandLink && !order("show").contains("command=open")) {
        if (deadline.hasExpired())
            return false;
    }
    return m_descriptor >= 0;
}

void SimHarness::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_bytes.clear();
}

bool SimHarness::hungUp(int ms) const
{
    pollfd state{ m_descriptor, 0, 0 };
    return ::poll(&state, 1, ms) > 0 && (state.revents & POLLHUP) != 0;
}

void SimHarness::write(const QByteArray &text)
{
    const QByteArray frame = '\x02' + text + '\x0d';
    if (::write(m_descriptor, frame.constData(), size_t(frame.size())) != frame.size())
        qFatal("the terminal took no request");
}

QByteArray SimHarness::readBytes(int ms)
{
    pollfd state{ m_descriptor, POLLIN, 0 };
    std::array<char, 65536> bytes{};
    const ssize_t count = ::poll(&state, 1, ms) > 0 ? ::read(m_descriptor, bytes.data(), bytes.size()) : 0;
    return count > 0 ? QByteArray(bytes.data(), count) : QByteArray();
}

QByteArray SimHarness::nextFrame(int ms)
{
    const QDeadlineTimer deadline(ms);
    while (true) {
        const qsizetype end = m_bytes.indexOf('\x0d', m_bytes.indexOf('\x02') + 1);
        if (m_bytes.contains('\x02') && end >= 0) {
            const QByteArray text = m_bytes.left(end).mid(m_bytes.left(end).lastIndexOf('\x02') + 1);
            m_bytes.remove(0, end + 1);
            return text;
        }
        const QByteArray more = readBytes(int(deadline.remainingTime()));
        if (more.isEmpty())
            return "(nothing)";
        m_bytes += more;
    }
}

QByteArray SimHarness::ask(const QByteArray &text)
{
    write(text);
    write("U0:VERTSKB");
    const QByteArray answer = nextFrame();
    if (!answer.startsWith("U0:VERTSKB:"))
        nextFrame();
    return answer;
}

QByteArray SimHarness::valueOf(const QByteArray &query)
{
    const QByteArray answer = ask(query);
    return answer.startsWith(query + ':') ? answer.mid(query.size() + 1) : "(no answer)";
}

QList<QByteArray> SimHarness::framesUntil(const QByteArray &last)
{
    QList<QByteArray> frames;
    do
        frames.append(nextFrame());
    while (frames.last() != last && frames.last() != "(nothing)");
    return frames;
}
