#include "remote/commands/Usage.h"

#include <algorithm>
#include <array>
#include <limits>

namespace remote {

namespace {

using Usage::CommandRow;
using Usage::OptionRow;

constexpr int kAny = std::numeric_limits<int>::max();

constexpr auto kCommands = std::to_array<CommandRow>({
    { "get", "ADDR:MNEM...", "prints values",
      "Prints a line \"R1:FREQ 2250.5\" for each setting asked for.\n\n  zirvo-remote get R1:FREQ D1:DMOD\n", 1, kAny,
      true },
    { "set", "ADDR:MNEM VALUE", "sets a value and waits for the card",
      "Ends with 0 when the card took the value, or when it was passed on and nothing tells what became of it\n"
      "(\"acknowledged, not confirmed\"), and with 1 when the head or the card refused it.\n\n"
      "  zirvo-remote set R1:FREQ 2251.5\n",
      2, 2, true },
    { "watch", "[PATTERN...]", "shows values as they change",
      "Shows what the head tells on both links. Patterns are wildcards over ADDR:MNEM.\n\n"
      "  zirvo-remote watch 'R*:FREQ' 'D1:*'\n  zirvo-remote watch --json --for 60 > changes.jsonl\n",
      0, kAny, true },
    { "dump", "[FILE]", "saves every setting",
      "Writes every known setting of every channel as JSON, to standard output without FILE.\n\n"
      "  zirvo-remote dump rack7.json\n",
      0, 1, true },
    { "apply", "FILE", "puts saved settings back",
      "Sends what differs from FILE, waits for each verdict of the cards, and looks again for settings that moved\n"
      "others, three times at most. Slaving is turned off meanwhile and put back last.\n\n"
      "  zirvo-remote apply --dry-run rack7.json\n  zirvo-remote apply rack7.json\n",
      1, 1, true },
    { "record", "FILE", "records the traffic of both links",
      "Writes a line a frame: seconds since the start, link, \"<\" from the head or \">\" to it, the frame.\n\n"
      "  zirvo-remote record --for 60 traffic.txt\n",
      1, 1, true },
    { "replay", "FILE [PATTERN...]", "plays a recording",
      "Shows what the head had sent, as watch does. With --send the client's own requests are sent again, each answer\n"
      "is waited for, and answers that differ from the recorded ones are told.\n\n"
      "  zirvo-remote replay --speed 0 traffic.txt 'D1:*'\n  zirvo-remote replay --send traffic.txt\n",
      1, kAny, false },
});

constexpr auto kOptions = std::to_array<OptionRow>({
    { "link", "PATH", nullptr, "device of the remote link (or ZIRVO_REMOTE_LINK)" },
    { "status-link", "PATH", nullptr, "device of the eye-and-status link (or ZIRVO_REMOTE_STATUS_LINK)" },
    { "device-dir", "DIR", nullptr, "both in DIR: client-remote and client-status (or ZIRVO_DEVICE_DIR)" },
    { "timeout", "MS", nullptr, "time for an answer; default 1500" },
    { "record", "FILE", " get set watch dump apply replay ", "records the traffic of the command" },
    { "quiet", nullptr, nullptr, "no notes and no progress" },
    { "raw", nullptr, " get ", "prints the values alone" },
    { "confirm", "MS", " set apply ", "time for the card's verdict; default 2500" },
    { "no-confirm", nullptr, " set ", "does not wait for the card" },
    { "json", nullptr, " watch replay apply ", "a JSON object a line; for apply, the report" },
    { "dry-run", nullptr, " apply ", "shows what would be sent" },
    { "count", "N", " watch record ", "ends after N values or frames" },
    { "for", "SECONDS", " watch record ", "ends after that time" },
    { "speed", "X", " replay ", "times the recorded pace; 0 for at once; default 1" },
    { "send", nullptr, " replay ", "sends the client's recorded requests to the head" },
    { "help", nullptr, nullptr, "this text" },
    { "version", nullptr, nullptr, "the version" },
});

const char kExitCodes[] =
    "\nExit codes: 0 all fine; 1 refused, or something differs in the end; 2 no answer, a link that\n"
    "will not open or was lost, or output that nobody took; 64 wrong usage or a file that cannot be used.\n";

QByteArray optionLine(const OptionRow &row)
{
    QByteArray name = "  --" + QByteArray(row.name);
    if (row.value != nullptr)
        name += ' ' + QByteArray(row.value);
    return name.leftJustified(22) + row.text + '\n';
}

template <typename Rows>
auto find(const Rows &rows, const QString &name)
{
    const auto row = std::ranges::find_if(rows, [&name](const auto &r) { return name == QLatin1String(r.name); });
    return row == rows.end() ? nullptr : &*row;
}

} // namespace

const Usage::CommandRow *Usage::command(const QString &name) { return find(kCommands, name); }

const Usage::OptionRow *Usage::option(const QString &name) { return find(kOptions, name); }

bool Usage::takes(const CommandRow &command, const OptionRow &option)
{
    return option.commands == nullptr || QByteArray(option.commands).contains(' ' + QByteArray(command.name) + ' ');
}

QByteArray Usage::help()
{
    QByteArray text = "Usage: zirvo-remote [OPTIONS] COMMAND ...\n\n"
                      "The client's side of a display head's remote links.\n\nCommands:\n";
    for (const CommandRow &row : kCommands)
        text += "  " + (QByteArray(row.name) + ' ' + row.synopsis).leftJustified(26) + row.summary + '\n';
    text += "  help [COMMAND]            more about a command\n\nOptions of every command:\n";
    for (const OptionRow &row : kOptions) {
        if (row.commands == nullptr)
            text += optionLine(row);
    }
    return text + kExitCodes;
}

QByteArray Usage::help(const CommandRow &command)
{
    QByteArray text = "Usage: zirvo-remote " + QByteArray(command.name) + " [OPTIONS] " + command.synopsis + "\n\n" +
                      command.text + "\nOptions:\n";
    for (const OptionRow &row : kOptions) {
        if (takes(command, row))
            text += optionLine(row);
    }
    return text + kExitCodes;
}

} // namespace remote
