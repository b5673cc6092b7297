#include "remote/commands/ApplyCommand.h"

#include "remote/files/Json.h"
#include "remote/wire/Escaping.h"

#include <nlohmann/json.hpp>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

constexpr int kMaxPasses = 3;
constexpr qsizetype kMaxReported = 10;

} // namespace

ApplyCommand::ApplyCommand(Session &session)
    : Command(session)
    , m_reader(session.requester())
    , m_change(session.requester(), session.options().confirmMs)
{
    showProgress(m_reader);
    connect(&m_reader, &SettingsReader::finished, this, &ApplyCommand::takePresent);
    connect(&m_reader, &SettingsReader::silent, this,
            [this](qsizetype done, qsizetype all) { endSilent(u"%1 of %2 values read"_s.arg(done).arg(all)); });
    connect(&m_change, &SettingChange::finished, this, &ApplyCommand::takeOutcome);
}

QString ApplyCommand::readInput() { return m_file.read(options().arguments[0]); }

void ApplyCommand::start()
{
    askForChannels([this](const QByteArrayList &channels) { plan(channels); });
}

QString ApplyCommand::progress() const
{
    QString text = u"%1 settings were sent"_s.arg(m_sent.size());
    if (m_pass > 0)
        text += u", step %1 of %2 in pass %3"_s.arg(m_stepsDone).arg(m_stepsDone + m_steps.size()).arg(m_pass);
    if (m_slavingOff)
        text += u"; slaving was turned off, it was %1 before"_s.arg(QString::fromLocal8Bit(m_slavingBefore));
    return text;
}

void ApplyCommand::plan(const QByteArrayList &channels)
{
    m_plan = ApplyPlan(m_file.settings(), channels);
    const QByteArrayList &skipped = m_plan.skipped();
    for (const QByteArray &name : skipped.first(qMin(skipped.size(), kMaxReported)))
        output().error(u"%1 is not known here and is skipped"_s.arg(QString::fromLocal8Bit(Escaping::brief(name))));
    if (const qsizetype more = skipped.size() - kMaxReported; more > 0)
        output().error(u"%1 more are not known here and are skipped"_s.arg(more));
    readPresent();
}

void ApplyCommand::readPresent() { m_reader.read(m_plan.keys() + QByteArrayList{ ApplyPlan::kSlaveKey }); }

void ApplyCommand::takePresent(const SettingsReader::Values &values)
{
    m_present = values;
    if (!m_known) {
        m_slavingBefore = presentSlaving();
        m_allCanBeSent = reportUnsendable();
    }
    m_known = true;
    if (m_passesOver)
        return report();
    const QList<Step> steps = m_plan.steps(m_present);
    if (options().dryRun)
        return showDryRun(steps);
    const bool worthwhile = m_pass == 0 || (m_helped && m_pass < kMaxPasses);
    if (steps.isEmpty() || !worthwhile)
        endPasses();
    else
        beginPass(steps);
}

/// While the chassis is slaved, a set of one channel would be copied over others.
bool ApplyCommand::isSlaved() const { return Message::isKnown(presentSlaving()) && presentSlaving() != "0"; }

QByteArray ApplyCommand::finalSlaving() const
{
    if (Message::setProblem(ApplyPlan::kSlaveKey, m_plan.wantedSlaving()).isEmpty())
        return m_plan.wantedSlaving();
    return m_slavingOff ? m_slavingBefore : QByteArray();
}

void ApplyCommand::beginPass(const QList<Step> &steps)
{
    ++m_pass;
    m_helped = false;
    m_steps = steps;
    m_stepsDone = 0;
    if (isSlaved())
        m_steps.prepend({ ApplyPlan::kSlaveKey, "0" });
    sendNext();
}

void ApplyCommand::sendNext()
{
    if (m_steps.isEmpty())
        return readPresent();
    output().progress(u"pass %1, sending"_s.arg(m_pass), m_stepsDone + 1, m_stepsDone + m_steps.size());
    const Step &step = m_steps.constFirst();
    if (step.isCommit)
        return m_change.startOrder(step.key, step.value);
    m_sent.insert(step.key);
    m_change.start(step.key, step.value);
}

void ApplyCommand::takeOutcome(SettingChange::Outcome outcome)
{
    using Outcome = SettingChange::Outcome;
    const Step step = m_steps.constFirst();
    const bool refused = outcome == Outcome::RefusedByHead || outcome == Outcome::RefusedByCard;
    if (outcome == Outcome::Silent)
        return endSilent(QString::fromLocal8Bit(step.key));
    m_steps.removeFirst();
    ++m_stepsDone;
    m_helped = m_helped || (!refused && !step.isCommit && step.key != ApplyPlan::kSlaveKey);
    if (step.isCommit && refused)
        m_refusedCommits.append(step.key);
    if (step.key == ApplyPlan::kSlaveKey && !m_passesOver) {
        m_slavingOff = !refused;
        if (refused) {
            output().error(u"slaving cannot be turned off, nothing else is sent"_s);
            m_passesOver = true;
            m_steps.clear();
        }
    }
    sendNext();
}

/// Slaving comes last; the report shows what it changes.
void ApplyCommand::endPasses()
{
    m_passesOver = true;
    const QByteArray slaving = finalSlaving();
    if (slaving.isEmpty() || slaving == presentSlaving())
        return report();
    m_steps = { { ApplyPlan::kSlaveKey, slaving } };
    sendNext();
}

void ApplyCommand::report()
{
    ApplyReport report;
    report.skipped = m_plan.skipped();
    const auto count = [this, &report](const QByteArray &key, const QByteArray &wanted, bool moved) {
        if (!Message::sameValue(m_present.value(key), wanted))
            report.refused.append({ key, wanted, m_present.value(key) });
        else
            ++(moved ? report.changed : report.same);
    };
    for (const QByteArray &key : m_plan.keys())
        count(key, m_plan.wanted(key), m_sent.contains(key));
    const QByteArray slaving = m_plan.wantedSlaving().isEmpty() ? finalSlaving() : m_plan.wantedSlaving();
    if (!slaving.isEmpty())
        count(ApplyPlan::kSlaveKey, slaving, slaving != m_slavingBefore);
    for (const QByteArray &key : m_refusedCommits)
        report.refused.append({ key, "1", {} });
    output().line(options().json ? report.json() : report.text());
    end(report.isComplete() ? ExitCode::Fine : ExitCode::Refused);
}

void ApplyCommand::showDryRun(QList<Step> steps)
{
    m_slavingOff = !steps.isEmpty() && isSlaved();
    if (m_slavingOff)
        steps.prepend({ ApplyPlan::kSlaveKey, "0" });
    const QByteArray slaving = finalSlaving();
    if (!slaving.isEmpty() && (m_slavingOff || slaving != presentSlaving()))
        steps.append({ ApplyPlan::kSlaveKey, slaving });
    for (const Step &step : steps) {
        const QByteArray present = step.isCommit ? QByteArray() : m_present.value(step.key);
        if (options().json)
            output().line(Json::line({ { "setting", Json::text(step.key) },
                                       { "value", Json::text(present) },
                                       { "wanted", Json::text(step.value) } }));
        else
            output().line(step.key + ' ' + (step.isCommit ? "" : Escaping::printable(present) + " -> ") + step.value);
    }
    end(m_allCanBeSent && m_plan.skipped().isEmpty() ? ExitCode::Fine : ExitCode::Refused);
}

bool ApplyCommand::reportUnsendable()
{
    const QByteArrayList keys = m_plan.unsendable(m_present);
    for (const QByteArray &key : keys) {
        const QString problem = Message::setProblem(key, m_plan.wanted(key));
        output().error(u"%1 wanted %2: %3"_s.arg(QString::fromLocal8Bit(key),
                                                 QString::fromLocal8Bit(Escaping::brief(m_plan.wanted(key))),
                                                 problem.isEmpty() ? u"the head does not know it"_s : problem));
    }
    return keys.isEmpty();
}

} // namespace remote
