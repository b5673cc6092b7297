#pragma once

#include "remote/commands/ApplyPlan.h"
#include "remote/commands/ApplyReport.h"
#include "remote/commands/Command.h"
#include "remote/files/SettingsFile.h"
#include "remote/wire/SettingChange.h"

#include <QSet>

namespace remote {

/// Restores the settings of a file: sends those that differ, re-reads everything because a setting may change others,
/// and repeats that while it helps.
class ApplyCommand : public Command
{
    Q_OBJECT

public:
    explicit ApplyCommand(Session &session);
    [[nodiscard]] QString readInput() override;
    void start() override;
    [[nodiscard]] QString progress() const override;

private:
    using Step = ApplyPlan::Step;

    void plan(const QByteArrayList &channels);
    void readPresent();
    void takePresent(const SettingsReader::Values &values);
    void beginPass(const QList<Step> &steps);
    void sendNext();
    void takeOutcome(SettingChange::Outcome outcome);
    void endPasses();
    void report();

    [[nodiscard]] QByteArray presentSlaving() const { return m_present.value(ApplyPlan::kSlaveKey); }
    [[nodiscard]] bool isSlaved() const;
    /// The slaving mode to end with; empty to leave it as it is.
    [[nodiscard]] QByteArray finalSlaving() const;
    void showDryRun(QList<Step> steps);
    /// Reports the settings that differ and cannot be sent. @return false if there are any
    [[nodiscard]] bool reportUnsendable();

    SettingsFile m_file;
    ApplyPlan m_plan;
    SettingsReader m_reader;
    SettingChange m_change;
    SettingsReader::Values m_present;
    QByteArray m_slavingBefore;
    bool m_known = false; ///< the present values have been read
    bool m_allCanBeSent = false;
    bool m_slavingOff = false;
    bool m_passesOver = false;
    int m_pass = 0;
    bool m_helped = false; ///< a setting was changed in this pass
    QList<Step> m_steps;   ///< of this pass, the current one first
    qsizetype m_stepsDone = 0;
    QSet<QByteArray> m_sent;
    QByteArrayList m_refusedCommits;
};

} // namespace remote
