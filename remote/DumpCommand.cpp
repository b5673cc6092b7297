#include "DumpCommand.h"

#include "EndSignals.h"
#include "ExistingFile.h"
#include "SettingsFile.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

#include <unistd.h>

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
    const QString path = options().arguments.value(0);
    const ExistingFile target(path);
    if (path.isEmpty() || target.isStandardOutput()) {
        output().line(text);
        return end(ExitCode::Fine);
    }
    if (target.exists() && !target.isRegular())
        writeInto(path, text + '\n');
    else
        replaceFile(target.exists() ? QFileInfo(path).canonicalFilePath() : path, text + '\n');
}

void DumpCommand::replaceFile(const QString &path, const QByteArray &text)
{
    QSaveFile file(path);
    const bool opened = file.open(QIODevice::WriteOnly);
    if (opened && file.write(text) >= 0 && file.commit())
        return tellSaved();
    output().error(u"%1: %2"_s.arg(file.fileName(), file.errorString()));
    end(opened ? ExitCode::NoAnswer : ExitCode::Usage);
}

/// A device or a FIFO stays what it is.
void DumpCommand::writeInto(const QString &path, const QByteArray &text)
{
    const int file = EndSignals::openForWriting(QFile::encodeName(path).constData());
    const int openFault = file < 0 ? errno : 0;
    const int fault = file < 0 ? openFault : EndSignals::write(file, text);
    if (file >= 0)
        ::close(file);
    if (fault == EINTR)
        return; // the signal ends the program
    if (fault == 0)
        return tellSaved();
    output().error(u"%1: %2"_s.arg(path, QString::fromLocal8Bit(std::strerror(fault))));
    end(openFault != 0 ? ExitCode::Usage : ExitCode::NoAnswer);
}

void DumpCommand::tellSaved()
{
    output().note(m_channels.size() == 1 ? u"settings of 1 channel saved"_s
                                         : u"settings of %1 channels saved"_s.arg(m_channels.size()));
    end(ExitCode::Fine);
}
