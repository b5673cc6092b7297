#include "DumpCommand.h"

#include "SettingsFile.h"

#include <QSaveFile>

using namespace Qt::StringLiterals;

DumpCommand::DumpCommand(Session &session) : Command(session), m_reader(session.requester())
{
    connect(&m_reader, &SettingsReader::progressed, this,
            [this](qsizetype done, qsizetype all) { output().progress(u"reading"_s, done, all); });
    connect(&m_reader, &SettingsReader::finished, this, &DumpCommand::write);
    connect(&m_reader, &SettingsReader::silent, this, [this](qsizetype done, qsizetype all) {
        endSilent(u"%1 of %2 values read, nothing saved"_s.arg(done).arg(all));
    });
}

void DumpCommand::start()
{
    askForChannels([this](const QByteArrayList &channels) {
        m_channels = channels;
        m_reader.read(SettingsFile::keys(channels));
    });
}

void DumpCommand::write(const SettingsReader::Values &values)
{
    const QByteArray text = SettingsFile::text(m_channels, values, QDateTime::currentDateTimeUtc());
    if (options().arguments.isEmpty()) {
        output().line(text);
        return end(ExitCode::Fine);
    }
    QSaveFile file(options().arguments[0]);
    if (!file.open(QIODevice::WriteOnly) || file.write(text + '\n') < 0 || !file.commit()) {
        output().error(u"%1: %2"_s.arg(file.fileName(), file.errorString()));
        return end(ExitCode::Usage);
    }
    output().note(u"settings of %1 channels saved"_s.arg(m_channels.size()));
    end(ExitCode::Fine);
}
