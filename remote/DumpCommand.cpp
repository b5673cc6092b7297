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
    session().requester().query("U0:CHANS", [this](const Requester::Answer &answer) {
        using State = Requester::Answer::State;
        if (answer.state == State::Silent)
            return endSilent(u"U0:CHANS"_s);
        if (answer.state == State::Refused || !Message::isKnown(answer.data)) {
            output().error(u"the head knows no channels yet"_s);
            return end(ExitCode::Refused);
        }
        readChannels(answer.data);
    });
}

void DumpCommand::readChannels(const QByteArray &list)
{
    m_channels = list.split(',');
    m_channels.removeAll(QByteArray());
    m_reader.read(SettingsFile::keys(m_channels));
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
