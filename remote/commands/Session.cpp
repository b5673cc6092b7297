#include "remote/commands/Session.h"

#include "common/EndSignals.h"
#include "remote/commands/ExitCode.h"
#include "remote/files/ExistingFile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

/// Whether both paths lead to one regular file, existing or yet to be created.
bool isOneFile(const QString &one, const QString &other)
{
    const ExistingFile first(one);
    if (first.exists())
        return first.isRegular() && first.isSameAs(ExistingFile(other));
    const auto whole = [](const QString &path) { return QDir::cleanPath(QFileInfo(path).absoluteFilePath()); };
    return whole(one) == whole(other);
}

} // namespace

Session::Session(const Options &options) : m_options(options) { m_output.setQuiet(options.quiet); }

QList<ClientLink *> Session::links() const
{
    QList<ClientLink *> links{ m_remote.get(), m_status.get() };
    links.removeAll(nullptr);
    return links;
}

std::optional<int> Session::openRecording()
{
    const bool records = m_options.command == u"record";
    const QString path = records ? m_options.arguments[0] : m_options.recordFile;
    if (path.isEmpty())
        return {};
    const bool usesFile = m_options.command == u"dump" || m_options.command == u"apply" || m_options.send;
    const QString used = usesFile ? m_options.arguments.value(0) : QString();
    if (!used.isEmpty() && isOneFile(path, used)) {
        m_output.error(u"%1: the recording would destroy it"_s.arg(used));
        return ExitCode::Usage;
    }
    if (m_recorder.open(path))
        return {};
    if (!EndSignals::haveArrived())
        m_output.error(m_recorder.file().problem());
    return ExitCode::of(m_recorder.file().fault());
}

void Session::reportPresence()
{
    if (m_remote)
        m_remote->reportPresence();
}

QString Session::openLinks()
{
    if (!m_options.usesLink())
        return {};
    QString wrong = openLink(m_remote, "remote", m_options.link);
    if (!wrong.isEmpty())
        return wrong;
    m_requester = std::make_unique<Requester>(*m_remote, m_options.timeoutMs);
    if (m_options.command != u"watch" && m_options.command != u"record")
        return {};
    if (!m_options.statusLink.isEmpty())
        return openLink(m_status, "status", m_options.statusLink);
    m_output.note(u"no status link: status values, eye blocks and spectra are missing"_s);
    return {};
}

QString Session::openLink(std::unique_ptr<ClientLink> &link, const QByteArray &name, const QString &path)
{
    auto opened = std::make_unique<ClientLink>(name);
    if (QString wrong = opened->open(path); !wrong.isEmpty())
        return wrong;
    link = std::move(opened);
    if (m_options.command == u"record" || !m_options.recordFile.isEmpty())
        m_recorder.attach(*link);
    connect(link.get(), &ClientLink::lost, this, [this, name] { Q_EMIT linkLost(name); });
    return {};
}

} // namespace remote
