#include "Session.h"

#include "Usage.h"

using namespace Qt::StringLiterals;

Session::Session(const Options &options) : m_options(options) { m_output.setQuiet(options.quiet); }

QList<ClientLink *> Session::links() const
{
    QList<ClientLink *> links{ m_remote.get(), m_status.get() };
    links.removeAll(nullptr);
    return links;
}

QString Session::openRecording()
{
    const QString path = m_options.command == u"record" ? m_options.arguments[0] : m_options.recordFile;
    return path.isEmpty() ? QString() : m_recorder.open(path);
}

QString Session::openLinks()
{
    if (!Usage::command(m_options.command)->usesLink && !m_options.send)
        return {};
    QString wrong = openLink(m_remote, "remote", m_options.link);
    if (!wrong.isEmpty())
        return wrong;
    m_remote->tellPresence();
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
