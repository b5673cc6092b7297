#include "channels/UnknownSettings.h"

namespace {

constexpr qsizetype kMostValues = 1000;

} // namespace

void UnknownSettings::report(const QString &mnemonic, const QString &value, bool isLatin1)
{
    store(mnemonic, { value, value, isLatin1 });
}

void UnknownSettings::request(const QString &mnemonic, const QString &value, bool isLatin1)
{
    store(mnemonic, { value, m_values.value(mnemonic).inForce, isLatin1 });
}

void UnknownSettings::refuse(const QString &mnemonic)
{
    const auto entry = m_values.find(mnemonic);
    if (entry == m_values.end())
        return;
    if (entry->inForce.isNull())
        m_values.erase(entry); // the next query goes to the card
    else
        entry->latest = entry->inForce;
}

void UnknownSettings::expect(const QString &mnemonic) { store(mnemonic, {}); }

void UnknownSettings::forgetExpected()
{
    m_values.removeIf([](const auto &entry) { return entry.value().latest.isEmpty(); });
}

void UnknownSettings::store(const QString &mnemonic, const Value &value)
{
    if (m_values.contains(mnemonic) || m_values.size() < kMostValues)
        m_values.insert(mnemonic, value);
}
