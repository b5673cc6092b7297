#pragma once

#include "simulator/links/Link.h"
#include "simulator/links/NullModem.h"

#include <vector>

namespace sim {

class Trace;

/// All links of a chassis, with the null modems between the remote links and their clients.
class LinkSet
{
public:
    /// `trace` must outlive the links. The terminals appear in `folder` when they are plugged.
    LinkSet(const QString &folder, Trace &trace);

    [[nodiscard]] Link &command() const;
    [[nodiscard]] Link &eye() const;
    [[nodiscard]] Link &spectral() const;

    /// Makes the folder and plugs all. False with `error` set if that fails.
    [[nodiscard]] bool open(QString &error);
    /// Plugs or unplugs the link of that role, a remote one with its client's end, or "all". False with `error` set if
    /// there is none or it cannot be made.
    [[nodiscard]] bool setPlugged(const QString &role, bool plugged, QString &error);
    /// Detects clients that came or left, and steps the null modems; to be called every step.
    void step();
    /// The state of each link, "command=open eye=plugged ...".
    [[nodiscard]] QByteArray summary() const;

private:
    [[nodiscard]] QStringList roles() const;

    QString m_folder;
    std::vector<std::unique_ptr<Link>> m_links;
    std::vector<std::unique_ptr<NullModem>> m_nullModems;
};

} // namespace sim
