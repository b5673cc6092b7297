#include "simulator/console/Options.h"

#include "simulator/chassis/Family.h"
#include "simulator/console/Console.h"
#include "simulator/units/SettingRow.h"

#include <QCommandLineParser>

#include <cstdio>

namespace sim {

namespace {

constexpr int kGoOn = -1;
constexpr int kUsageError = 2;

const char kDescription[] = "A ZIRVO chassis on pseudo-terminals. It makes ttyUSB0 to ttyUSB9 in the given folder\n"
                            "and answers on the command link (ttyUSB0, older boards ttyUSB3) as a chassis would,\n"
                            "and on the spectral link (ttyUSB2) as the card behind it. client-remote and\n"
                            "client-status are the far ends of the remote links (ttyUSB4 and 5, older 8 and 9).\n"
                            "\"ready\" on standard output tells that the links are there.\n\n"
                            "  zirvo-chassis-sim --device-dir /tmp/head --boot-seconds 0 --trace /tmp/head/trace";

const char kScripts[] = "A script holds the same commands, each as \"@SECONDS command\" (since the start), or\n"
                        "bare after \"wait SECONDS\"; \"#\" begins a comment:\n\n"
                        "  @10 refuse R1:FREQ 1\n"
                        "  wait 5\n"
                        "  power-cycle 3\n";

void print(std::FILE *stream, const QByteArray &text)
{
    std::fputs(text.constData(), stream);
    std::fflush(stream);
}

QByteArray families()
{
    QByteArray lines;
    for (const QString &name : Family::builtIn()) {
        QString error;
        const auto family = Family::load(name, error);
        lines += "  " + name.toLatin1().leftJustified(16) + (family ? family->title.toUtf8() : error.toUtf8()) + '\n';
    }
    return lines;
}

void addOptions(QCommandLineParser &parser)
{
    const auto option = [](const char *name, const char *text, const char *value) {
        return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(value));
    };
    parser.addOptions(
        { option("device-dir", "Folder for the links; made if missing. Required.", "DIR"),
          option("family", "Kind of chassis: a name listed below or a file. Default demod-k3050.", "NAME|FILE"),
          option("boot-seconds", "Time from power-on to the first answer. Default 3.", "S"),
          option("report-hz", "Status reports a second of each channel, 0.1 to 50. Default 5.", "HZ"),
          option("seed", "Start of all randomness. Default 1.", "N"),
          option("presets", "File that keeps the presets from run to run.", "FILE"),
          option("script", "Console commands with their times.", "FILE"),
          option("trace", "Writes every frame to FILE.", "FILE"),
          option("list-families", "Lists the families and ends.", ""), option("help", "This text.", "") });
}

/// What is wrong with a number between two limits; empty if it was read or not given.
QString readNumber(const QCommandLineParser &parser, const QString &name, double low, double high, double &number)
{
    if (!parser.isSet(name))
        return {};
    double read = 0;
    if (!readDecimal(parser.value(name).toUtf8(), read) || read < low || read > high)
        return QStringLiteral("--%1 takes a number from %2 to %3").arg(name).arg(low).arg(high);
    number = read;
    return {};
}

QString readAll(const QCommandLineParser &parser, Options &options)
{
    const auto text = [&parser](const char *name) { return parser.value(QString::fromLatin1(name)); };
    options.setup.deviceDir = text("device-dir");
    options.setup.presetsFile = text("presets");
    options.setup.traceFile = text("trace");
    options.scriptFile = text("script");
    if (parser.isSet(QStringLiteral("family")))
        options.family = text("family");
    if (!parser.positionalArguments().isEmpty())
        return QStringLiteral("unexpected \"%1\"").arg(parser.positionalArguments().constFirst());
    if (options.setup.deviceDir.isEmpty())
        return QStringLiteral("--device-dir is required");
    bool seedRead = true;
    if (parser.isSet(QStringLiteral("seed")))
        options.setup.seed = text("seed").toUInt(&seedRead);
    if (!seedRead)
        return QStringLiteral("--seed takes a whole number");
    const QString wrong = readNumber(parser, QStringLiteral("boot-seconds"), 0, 3600, options.setup.bootSeconds);
    return wrong.isEmpty() ? readNumber(parser, QStringLiteral("report-hz"), 0.1, 50, options.setup.reportHz) : wrong;
}

} // namespace

int Options::read(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(kDescription));
    addOptions(parser);
    const bool parsed = parser.parse(arguments);
    if (parsed && parser.isSet(QStringLiteral("help"))) {
        print(stdout, parser.helpText().toUtf8() + "\nFamilies:\n" + families() +
                          "\nCommands on standard input, each answered with a line:\n" + Console::overview() + '\n' +
                          kScripts);
        return 0;
    }
    if (parsed && parser.isSet(QStringLiteral("list-families"))) {
        print(stdout, families());
        return 0;
    }
    const QString wrong = parsed ? readAll(parser, *this) : parser.errorText();
    if (wrong.isEmpty())
        return kGoOn;
    print(stderr, "zirvo-chassis-sim: " + wrong.toUtf8() + " (see --help)\n");
    return kUsageError;
}

} // namespace sim
