#include "simulator/links/LinkSet.h"

#include <QByteArrayList>
#include <QDir>

#include <array>

namespace sim {

namespace {

struct LinkPlan
{
    const char *role;
    std::array<const char *, 2> names; ///< in the device folder; null in second place: only one
};

/// The spare link has no purpose but exists on the head as well.
constexpr auto kLinks = std::to_array<LinkPlan>({ { "command", { "ttyUSB0", "ttyUSB3" } },
                                                  { "eye", { "ttyUSB1", "ttyUSB7" } },
                                                  { "spectral", { "ttyUSB2" } },
                                                  { "remote", { "ttyUSB4", "ttyUSB8" } },
                                                  { "status", { "ttyUSB5", "ttyUSB9" } },
                                                  { "spare", { "ttyUSB6" } },
                                                  { "client-remote", { "client-remote" } },
                                                  { "client-status", { "client-status" } } });

// Positions in that list.
constexpr size_t kCommand = 0;
constexpr size_t kEye = 1;
constexpr size_t kSpectral = 2;

struct NullModemPlan
{
    size_t head;
    size_t client;
};
constexpr auto kNullModems = std::to_array<NullModemPlan>({ { 3, 6 }, { 4, 7 } });

} // namespace

LinkSet::LinkSet(const QString &folder, Trace &trace) : m_folder(folder)
{
    for (const LinkPlan &plan : kLinks) {
        QStringList paths;
        for (const char *name : plan.names) {
            if (name)
                paths.append(QStringLiteral("%1/%2").arg(folder, QLatin1String(name)));
        }
        m_links.push_back(std::make_unique<Link>(QString::fromLatin1(plan.role), paths));
    }
    for (const NullModemPlan &plan : kNullModems)
        m_nullModems.push_back(std::make_unique<NullModem>(*m_links.at(plan.head), *m_links.at(plan.client), trace));
}

Link &LinkSet::command() const { return *m_links.at(kCommand); }

Link &LinkSet::eye() const { return *m_links.at(kEye); }

Link &LinkSet::spectral() const { return *m_links.at(kSpectral); }

bool LinkSet::open(QString &error)
{
    if (!QDir().mkpath(m_folder)) {
        error = QStringLiteral("cannot make the folder %1").arg(m_folder);
        return false;
    }
    return setPlugged(QStringLiteral("all"), true, error);
}

bool LinkSet::setPlugged(const QString &role, bool plugged, QString &error)
{
    const bool all = role == QStringLiteral("all");
    if (!all && !roles().contains(role)) {
        error = QStringLiteral("no link \"%1\"; there are: all %2").arg(role, roles().join(u' '));
        return false;
    }
    const QString clientRole = QStringLiteral("client-") + role;
    for (const auto &link : m_links) {
        const bool isMeant = all || link->role() == role || link->role() == clientRole;
        if (!isMeant || link->isPlugged() == plugged)
            continue;
        if (!plugged)
            link->unplug();
        else if (!link->plug(error))
            return false;
    }
    return true;
}

void LinkSet::step()
{
    // Clients that left come first: their last bytes are not for a client that has come since.
    for (const auto &link : m_links)
        link->noticeLeaving();
    for (const auto &link : m_links)
        link->noticeComing();
    for (const auto &nullModem : m_nullModems)
        nullModem->step();
}

QByteArray LinkSet::summary() const
{
    QByteArrayList states;
    for (const auto &link : m_links) {
        const char *state = !link->isPlugged() ? "unplugged" : link->hasClient() ? "open" : "plugged";
        states.append(link->role().toLatin1() + '=' + state);
    }
    return states.join(' ');
}

QStringList LinkSet::roles() const
{
    QStringList roles;
    for (const auto &link : m_links)
        roles.append(link->role());
    return roles;
}

} // namespace sim
