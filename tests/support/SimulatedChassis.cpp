#include "support/SimulatedChassis.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {
const QString kRecord = u"trace"_s;
constexpr int kClientMs = 30'000;
} // namespace

SimulatedChassis::SimulatedChassis(const QStringList &arguments, Record record)
    : m_program(QStringLiteral(ZIRVO_BIN_DIR "/zirvo-chassis-sim"),
                QStringList{ u"--device-dir"_s, path(), u"--boot-seconds"_s, u"0"_s } +
                    (record == Record::Kept ? QStringList{ u"--trace"_s, path(kRecord) } : QStringList()) + arguments)
{
    if (!m_program.nextLine().startsWith("ready"))
        qFatal("the simulated chassis does not start");
    qputenv("ZIRVO_DEVICE_DIR", path().toLocal8Bit());
    qputenv("ZIRVO_STARTUP_SECONDS", "0");
}

QByteArray SimulatedChassis::order(const QByteArray &line)
{
    m_program.write(line + '\n');
    return m_program.nextLine();
}

SimulatedChassis::Outcome SimulatedChassis::client(const QStringList &arguments) const
{
    QProcess client;
    client.start(QStringLiteral(ZIRVO_BIN_DIR "/zirvo-remote"),
                 QStringList{ u"--quiet"_s, u"--device-dir"_s, path() } + arguments);
    const bool ended = waitUntil([&client] { return client.state() == QProcess::NotRunning; }, kClientMs);
    const bool isNormal = ended && client.exitStatus() == QProcess::NormalExit;
    return { isNormal ? client.exitCode() : -1, client.readAllStandardOutput() };
}

QByteArrayList SimulatedChassis::requests() const
{
    QFile file(path(kRecord));
    QByteArrayList requests;
    for (const QByteArray &line : file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : requests) {
        for (const QByteArray mark : { " < command ", " < spectral " }) {
            if (const qsizetype at = line.indexOf(mark); at > 0)
                requests += line.mid(at + mark.size());
        }
    }
    return requests;
}

QByteArrayList SimulatedChassis::values()
{
    const QByteArray answer = order("values");
    if (!answer.startsWith("ok "))
        qFatal("the simulated chassis does not tell its values");
    return answer.sliced(3).split('\t');
}
