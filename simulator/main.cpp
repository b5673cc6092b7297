#include "common/EndSignals.h"
#include "simulator/chassis/Chassis.h"
#include "simulator/chassis/Family.h"
#include "simulator/console/Console.h"
#include "simulator/console/LineReader.h"
#include "simulator/console/Options.h"
#include "simulator/console/Script.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

namespace {

constexpr int kFileLost = 1;
constexpr int kCannotStart = 2;

int fail(const QString &reason, int exitCode = kCannotStart)
{
    std::fprintf(stderr, "zirvo-chassis-sim: %s\n", qPrintable(reason));
    return exitCode;
}

void say(const QByteArray &line)
{
    std::fprintf(stdout, "%s\n", line.constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    sim::Options options;
    const int exitCode = options.read(QCoreApplication::arguments());
    if (exitCode >= 0)
        return exitCode;

    QString error;
    sim::Script script;
    if (!options.scriptFile.isEmpty() && !script.load(options.scriptFile, error))
        return fail(error);
    const auto family = sim::Family::load(options.family, error);
    if (!family)
        return fail(error);

    // Files, terminals and readers report their faults where they are used.
    const EndSignals endSignals({ SIGINT, SIGTERM }, { SIGPIPE, SIGTTIN, SIGXFSZ });
    QObject::connect(&endSignals, &EndSignals::arrived, &application, &QCoreApplication::quit);
    sim::Chassis chassis(options.setup);
    sim::Console console(chassis);
    const auto execute = [&console](const QByteArray &line) {
        say(console.execute(line));
        if (console.wantsQuit())
            QCoreApplication::quit();
    };
    QObject::connect(&chassis, &sim::Chassis::stepped, &application, [&script, &execute](double seconds) {
        for (const QByteArray &order : script.takeDue(seconds))
            execute(order);
    });
    int endCode = 0;
    const auto tellFileProblem = [&chassis, &endCode] {
        if (const QString problem = chassis.takeFileProblem(); !problem.isEmpty())
            endCode = fail(problem, kFileLost);
    };
    QObject::connect(&chassis, &sim::Chassis::stepped, &application, tellFileProblem);
    if (!chassis.start(*family, error))
        return fail(error);
    sim::LineReader input;
    QObject::connect(&input, &sim::LineReader::lineRead, &application, execute);
    say("ready " + family->title.toUtf8());
    QCoreApplication::exec();
    tellFileProblem();
    return endCode;
}
