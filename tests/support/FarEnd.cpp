#include "support/FarEnd.h"

#include "support/Wait.h"

#include <QFile>
#include <QSocketNotifier>

#include <array>
#include <utility>

#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

FarEnd::FarEnd(const QString &devicePath) : m_devicePath(devicePath) { plug(); }

FarEnd::~FarEnd() { unplug(); }

void FarEnd::plug()
{
    std::array<char, 128> slaveName{};
    termios raw{};
    ::cfmakeraw(&raw);
    if (::openpty(&m_master, &m_slave, slaveName.data(), &raw, nullptr) != 0)
        qFatal("no pseudo-terminal to be had");
    ::fcntl(m_master, F_SETFL, O_NONBLOCK);
    // A program that the test starts must not hold the line open itself.
    ::fcntl(m_master, F_SETFD, FD_CLOEXEC);
    ::fcntl(m_slave, F_SETFD, FD_CLOEXEC);
    QFile::link(QString::fromLocal8Bit(slaveName.data()), m_devicePath);

    m_notifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &FarEnd::receive);
}

void FarEnd::unplug()
{
    delete std::exchange(m_notifier, nullptr);
    QFile::remove(m_devicePath);
    ::close(std::exchange(m_slave, -1));
    ::close(std::exchange(m_master, -1));
    m_partial.clear();
}

void FarEnd::setReading(bool reading) { m_notifier->setEnabled(reading); }

void FarEnd::jam() { ::tcflow(m_slave, TCOOFF); }

void FarEnd::clear()
{
    m_bytes.clear();
    m_frames.clear();
}

bool FarEnd::waitForFrames(qsizetype count, int timeOutMs)
{
    return waitUntil([this, count] { return m_frames.size() >= count; }, timeOutMs);
}

bool FarEnd::waitForFrame(const QByteArray &frame, int timeOutMs)
{
    return waitUntil([this, &frame] { return m_frames.contains(frame); }, timeOutMs);
}

void FarEnd::send(const QByteArray &rawBytes)
{
    for (qsizetype sent = 0; sent < rawBytes.size();) {
        const auto written = ::write(m_master, rawBytes.constData() + sent, size_t(rawBytes.size() - sent));
        if (written > 0)
            sent += written;
        else
            QCoreApplication::processEvents(); // the terminal's buffer is full: let the port read
    }
}

void FarEnd::receive()
{
    std::array<char, 4096> buffer;
    const auto count = ::read(m_master, buffer.data(), buffer.size());
    if (count <= 0)
        return;
    const QByteArray arrived(buffer.data(), count);
    m_bytes += arrived;
    for (const char c : arrived) {
        if (c == '\x02') {
            m_partial.clear();
        } else if (c == '\x0D') {
            m_frames += m_partial;
            if (m_handler)
                m_handler(m_frames.constLast());
            if (m_answering)
                answer(m_frames.constLast());
        } else {
            m_partial += c;
        }
    }
}

void FarEnd::answer(const QByteArray &frame)
{
    const QByteArrayList parts = frame.split(':');
    const QByteArray key = parts.mid(0, 2).join(':');
    const QByteArray data = parts.mid(2).join(':');
    const bool readsRegister = parts.value(1) == "RDRG";
    const bool writesRegister = parts.value(1) == "CDRG";
    const bool isSet = parts.size() > 2 && !readsRegister;
    const QByteArray valueKey = readsRegister ? frame : writesRegister ? parts[0] + ":RDRG:" + data.left(2) : key;
    const Reaction reaction = m_reactions.value(key, Reaction::Answer);
    if (reaction == Reaction::Ignore || (!isSet && !m_values.contains(valueKey) && reaction == Reaction::Answer))
        return;
    if (reaction == Reaction::Refuse) {
        nak();
    } else if (isSet) {
        m_values[valueKey] = writesRegister ? data.mid(2) : data;
        ack();
    } else {
        sendFrame(key + ':' + (readsRegister ? data : QByteArray()) + m_values.value(valueKey));
    }
}
