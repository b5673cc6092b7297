#include "inventory/Micro.h"

Micro::Micro(const QStringList &addresses, const QString &kind, const QString &version)
    : m_kind(kind.isEmpty() ? kNotAvailable : kind)
    , m_version(version.isEmpty() ? kNotAvailable : version)
    , m_addresses(addresses)
{
}

QString Micro::GetFormattedMicroInfoString() const { return m_addresses.join(u'/') + u';' + m_kind + u';' + m_version; }
