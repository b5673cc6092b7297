#include "simulator/links/Trace.h"

namespace sim {

bool Trace::open(const QString &path)
{
    m_file.setFileName(path);
    m_clock.start();
    return m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

void Trace::write(Direction direction, const QString &link, const QByteArray &text)
{
    if (!m_file.isOpen())
        return;
    const QByteArray seconds = QByteArray::number(double(m_clock.elapsed()) / 1000.0, 'f', 3);
    const QByteArray line = seconds + ' ' + char(direction) + ' ' + link.toLatin1() + ' ' + readable(text) + '\n';
    if (m_file.write(line) == line.size()) {
        m_wholeSize += line.size();
        return;
    }
    m_problem = QStringLiteral("%1 takes no more, the trace ends").arg(m_file.fileName());
    m_file.resize(m_wholeSize); // fails for a device, which is harmless
    m_file.close();
}

QByteArray Trace::readable(const QByteArray &text)
{
    QByteArray spelt;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        switch (byte) {
        case 0x02:
            spelt += "<STX>";
            break;
        case 0x04:
            spelt += "<EOT>";
            break;
        case 0x06:
            spelt += "<ACK>";
            break;
        case 0x0a:
            spelt += "<LF>";
            break;
        case 0x0d:
            spelt += "<CR>";
            break;
        case 0x15:
            spelt += "<NAK>";
            break;
        default:
            if (byte >= 0x20 && byte < 0x7f)
                spelt += c;
            else
                spelt += "<0x" + QByteArray(1, c).toHex().toUpper() + '>';
        }
    }
    return spelt;
}

} // namespace sim
