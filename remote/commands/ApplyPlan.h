#pragma once

#include "remote/wire/SettingsReader.h"

#include <QList>

namespace remote {

/// The steps that restore saved settings, in the order in which the settings depend on each other. Slaving is not part
/// of it: ApplyCommand turns it off before and restores it afterwards.
class ApplyPlan
{
public:
    static const QByteArray kSlaveKey; ///< the slaving mode of the chassis

    struct Step
    {
        QByteArray key;
        QByteArray value;
        bool isCommit = false; ///< an order that makes network settings take effect
    };

    ApplyPlan() = default;
    /// @param saved settings by key; @param channels addresses of this chassis
    ApplyPlan(const SettingsReader::Values &saved, const QByteArrayList &channels);

    /// Keys of the settings to restore.
    [[nodiscard]] const QByteArrayList &keys() const { return m_keys; }
    [[nodiscard]] QByteArray wanted(const QByteArray &key) const { return m_saved.value(key); }
    /// Saved slaving mode; empty if none was saved.
    [[nodiscard]] QByteArray wantedSlaving() const { return m_saved.value(kSlaveKey); }
    /// Saved settings that this chassis or this program does not know: keys, and addresses of whole channels.
    [[nodiscard]] const QByteArrayList &skipped() const { return m_skipped; }

    /// The steps for settings that differ from @p present, without those that the head does not know or that cannot be
    /// sent.
    [[nodiscard]] QList<Step> steps(const SettingsReader::Values &present) const;

    /// Settings that differ from @p present and are left out by steps().
    [[nodiscard]] QByteArrayList unsendable(const SettingsReader::Values &present) const;

private:
    [[nodiscard]] bool canBeSent(const QByteArray &key, const SettingsReader::Values &present) const;
    void skipUnknown(const QByteArrayList &channels);

    SettingsReader::Values m_saved;
    QByteArrayList m_keys;
    QByteArrayList m_skipped;
};

} // namespace remote
