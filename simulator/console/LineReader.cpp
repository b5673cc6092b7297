#include "simulator/console/LineReader.h"

#include <array>

#include <unistd.h>

namespace sim {

LineReader::LineReader(QObject *parent) : QObject(parent), m_notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &LineReader::readInput);
}

void LineReader::readInput()
{
    std::array<char, 4096> bytes; // NOLINT(*-member-init): filled by read
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
        m_notifier.setEnabled(false);
        return;
    }
    m_buffer.append(bytes.data(), count);
    for (qsizetype end = m_buffer.indexOf('\n'); end >= 0; end = m_buffer.indexOf('\n')) {
        const QByteArray line = m_buffer.left(end).trimmed();
        m_buffer.remove(0, end + 1);
        if (!line.isEmpty())
            Q_EMIT lineRead(line);
    }
}

} // namespace sim
