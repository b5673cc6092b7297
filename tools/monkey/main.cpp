#include "support/LiveHead.h"
#include "support/SimulatedChassis.h"
#include "tools/monkey/ClientMonkey.h"
#include "tools/monkey/PanelMonkey.h"
#include "tools/monkey/Trouble.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

constexpr int kAgreeMs = 10'000; // from the end of the trouble
constexpr int kActionMs = 20;

struct Run
{
    QString who; ///< "panel" or "client"
    quint32 seed;
    int ms;
};

/// Does @p action over and over through trouble, and ends the trouble.
void act(SimulatedChassis &chassis, const Run &run, const std::function<void()> &action)
{
    Trouble trouble(chassis, run.seed);
    QDeadlineTimer mixture(0);
    for (const QDeadlineTimer deadline(run.ms); !deadline.hasExpired();) {
        if (mixture.hasExpired())
            mixture.setRemainingTime(trouble.next());
        action();
        (void)waitUntil([] { return false; }, kActionMs);
    }
    trouble.end();
}

/// What @p head shows and a head that has just read the same chassis does not.
QStringList shownWrongly(const QStringList &shown)
{
    LiveHead fresh;
    if (!fresh.start(true))
        return { u"a fresh head does not start"_s };
    fresh.openAdvancedWindows();
    QStringList lines = shown;
    const QStringList right = fresh.shown();
    for (const QString &line : right)
        lines.removeOne(line);
    for (QString &line : lines) {
        const QString name = line.left(line.indexOf(u'='));
        const auto other = right.filter(QRegularExpression(u'^' + QRegularExpression::escape(name) + u'='));
        line += u"; should be "_s + other.join(u", "_s);
    }
    return lines;
}

/// Lets the one who runs act against @p chassis while there is trouble.
void act(SimulatedChassis &chassis, LiveHead &head, const ClientView &view, const Run &run, Ledger &ledger)
{
    if (run.who == "panel"_L1) {
        PanelMonkey monkey(head, run.seed, ledger);
        act(chassis, run, [&monkey] { monkey.act(); });
    } else {
        ClientMonkey monkey(chassis, view, run.seed, ledger);
        act(chassis, run, [&monkey] { monkey.act(); });
    }
}

/// What is wrong after a run; empty if nothing is.
QStringList faults(const Run &run, QTextStream &out)
{
    SimulatedChassis chassis({ u"--seed"_s, QString::number(run.seed) });
    auto head = std::make_unique<LiveHead>();
    if (!head->start(true))
        return { u"the head does not start"_s };
    head->openAdvancedWindows();
    const ClientView before = ClientView::read(chassis);
    QStringList lines = before.differences(chassis, before);
    if (!lines.isEmpty())
        return lines;

    Ledger ledger;
    act(chassis, *head, before, run, ledger);
    QElapsedTimer sinceTrouble;
    sinceTrouble.start();
    lines = ClientView::differencesAfter(kAgreeMs, chassis, before);
    out << run.who << ", seed " << run.seed << ": " << ledger.asked() << " changes asked for, compared after "
        << sinceTrouble.elapsed() << " ms" << Qt::endl;
    lines += ledger.unasked(chassis.requests());
    const QStringList shown = head->shown();
    head.reset();
    return lines + shownWrongly(shown);
}

} // namespace

/// An operator and then a client who change anything while answers are lost, late and refused. Afterwards the head must
/// show, answer and have written the right values.
int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const double minutes = argc > 1 ? QByteArray(argv[1]).toDouble() : 10;
    QList<quint32> seeds;
    for (int i = 2; i < argc; ++i)
        seeds += QByteArray(argv[i]).toUInt();
    QTextStream out(stdout);
    int failed = 0;
    for (const quint32 seed : seeds.isEmpty() ? QList<quint32>{ 1, 2, 3 } : seeds) {
        for (const QString &who : { u"panel"_s, u"client"_s }) {
            const QStringList lines = faults({ who, seed, int(minutes * 60'000) }, out);
            failed += lines.isEmpty() ? 0 : 1;
            for (const QString &line : lines)
                out << "  " << line << Qt::endl;
        }
    }
    out << (failed > 0 ? "FAILED" : "PASSED") << Qt::endl;
    return failed > 0 ? 1 : 0;
}
