#include "remote/commands/ApplyPlan.h"

#include "remote/wire/Catalogue.h"

#include <QSet>

#include <algorithm>

namespace remote {

const QByteArray ApplyPlan::kSlaveKey = "U0:SLAVE";

namespace {

QByteArray addressOf(const QByteArray &key) { return key.left(key.indexOf(':')); }

QByteArray mnemonicOf(const QByteArray &key) { return key.mid(key.indexOf(':') + 1); }

} // namespace

ApplyPlan::ApplyPlan(const SettingsReader::Values &saved, const QByteArrayList &channels) : m_saved(saved)
{
    for (const QByteArray &address : channels) {
        for (const std::string_view mnemonic : Catalogue::of(address).settings) {
            const QByteArray key = Catalogue::key(address, mnemonic);
            if (saved.contains(key) && key != kSlaveKey)
                m_keys.append(key);
        }
    }
    skipUnknown(channels);
}

void ApplyPlan::skipUnknown(const QByteArrayList &channels)
{
    QSet<QByteArray> skipped;
    for (auto setting = m_saved.begin(); setting != m_saved.end(); ++setting) {
        const QByteArray address = addressOf(setting.key());
        const bool channelKnown = channels.contains(address);
        if (!channelKnown || !Catalogue::isSetting(address, mnemonicOf(setting.key())))
            skipped.insert(channelKnown ? setting.key() : address);
    }
    m_skipped = QByteArrayList(skipped.begin(), skipped.end());
    std::ranges::sort(m_skipped);
}

QList<ApplyPlan::Step> ApplyPlan::steps(const SettingsReader::Values &present) const
{
    QList<Step> steps;
    QByteArray uncommitted;
    const auto commit = [&steps, &uncommitted] {
        if (!uncommitted.isEmpty())
            steps.append({ uncommitted + ":COMT", "1", true });
        uncommitted.clear();
    };
    for (const QByteArray &key : m_keys) {
        const QByteArray value = m_saved.value(key);
        const QByteArray address = addressOf(key);
        if (address != uncommitted)
            commit();
        if (!canBeSent(key, present) || Message::sameValue(present.value(key), value))
            continue;
        steps.append({ key, value });
        if (Catalogue::needsCommit(address, mnemonicOf(key)))
            uncommitted = address;
    }
    commit();
    return steps;
}

QByteArrayList ApplyPlan::unsendable(const SettingsReader::Values &present) const
{
    QByteArrayList keys;
    QByteArrayList saved = m_keys;
    if (m_saved.contains(kSlaveKey))
        saved.append(kSlaveKey);
    for (const QByteArray &key : saved) {
        if (!canBeSent(key, present) && !Message::sameValue(present.value(key), wanted(key)))
            keys.append(key);
    }
    return keys;
}

bool ApplyPlan::canBeSent(const QByteArray &key, const SettingsReader::Values &present) const
{
    return present.contains(key) && Message::setProblem(key, wanted(key)).isEmpty();
}

} // namespace remote
