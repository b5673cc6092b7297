#pragma once

#include "remote/commands/ApplyPlan.h"
#include "remote/commands/ApplyReport.h"
#include "remote/commands/Command.h"
#include "remote/files/SettingsFile.h"
#include "remote/wire/SettingChange.h"

#include <QSet>

namespace remote {

/// Puts the settings of a file back: sends what differs, reads everything again because a setting may move others,
/// and repeats that as long as it helps.
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
    /// The slaving mode to end with; empty to leave it alone.
    [[nodiscard]] QByteArray finalSlaving() const;
    void showDryRun(QList<Step> steps);
    /// Tells what differs and will stay so. @return false if there is any
    [[nodiscard]] bool tellUnsendable();

    SettingsFile m_file;
    ApplyPlan m_plan;
    SettingsReader m_reader;
    SettingChange m_change;
    SettingsReader::Values m_present;
    QByteArray m_slavingBefore;
    bool m_known = false; ///< the present values were read once
    bool m_allCanBeSent = false;
    bool m_slavingOff = false;
    bool m_passesOver = false;
    int m_pass = 0;
    bool m_helped = false; ///< something was changed in this pass
    QList<Step> m_steps;   ///< of this pass, the one under way first
    qsizetype m_stepsDone = 0;
    QSet<QByteArray> m_sent;
    QByteArrayList m_refusedCommits;
};

} // namespace remote
