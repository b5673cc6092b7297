#include "remote/commands/DumpCommand.h"

#include "common/EndSignals.h"
#include "remote/files/ExistingFile.h"
#include "remote/files/OutputFile.h"
#include "remote/files/SettingsFile.h"

using namespace Qt::StringLiterals;

namespace remote {

DumpCommand::DumpCommand(Session &session) : Command(session), m_reader(session.requester())
{
    showProgress(m_reader);
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
    const QString path = options().arguments.value(0);
    if (path.isEmpty() || ExistingFile(path).isStandardOutput()) {
        output().line(text);
        return end(ExitCode::Fine);
    }
    OutputFile file;
    if (file.create(path, text + '\n')) {
        output().note(m_channels.size() == 1 ? u"settings of 1 channel saved"_s
                                             : u"settings of %1 channels saved"_s.arg(m_channels.size()));
        return end(ExitCode::Fine);
    }
    if (EndSignals::haveArrived())
        return; // main() handles the signal
    output().error(file.problem());
    end(ExitCode::of(file.fault()));
}

} // namespace remote
