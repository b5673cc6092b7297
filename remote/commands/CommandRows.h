#pragma once

#include <array>
#include <limits>

namespace remote {

/// A command of the command line, and the texts of its help.
struct CommandRow
{
    const char *name;
    const char *synopsis;
    const char *summary;
    const char *text; ///< further text of its own help
    int least;        ///< arguments
    int most;
};

inline constexpr int kAnyNumber = std::numeric_limits<int>::max();

inline constexpr auto kCommands = std::to_array<CommandRow>({
    { "get", "ADDR:MNEM...", "prints values",
      "Prints a line \"R1:FREQ 2250.5\" for each setting asked for.\n\n  zirvo-remote get R1:FREQ D1:DMOD\n", 1,
      kAnyNumber },
    { "set", "ADDR:MNEM VALUE", "sets a value and waits for the card",
      "Ends with 0 when the card took the value, or when it was passed on and nothing tells what became of it\n"
      "(\"acknowledged, not confirmed\"), and with 1 when the head or the card refused it.\n\n"
      "  zirvo-remote set R1:FREQ 2251.5\n",
      2, 2 },
    { "watch", "[PATTERN...]", "shows values as they change",
      "Shows what the head tells on both links. Patterns are wildcards over ADDR:MNEM.\n\n"
      "  zirvo-remote watch 'R*:FREQ' 'D1:*'\n  zirvo-remote watch --json --for 60 > changes.jsonl\n",
      0, kAnyNumber },
    { "dump", "[FILE]", "saves every setting",
      "Writes every known setting of every channel as JSON, to standard output without FILE.\n\n"
      "  zirvo-remote dump rack7.json\n",
      0, 1 },
    { "apply", "FILE", "puts saved settings back",
      "Sends what differs from FILE, waits for each verdict of the cards, and looks again for settings that moved\n"
      "others, three times at most. Slaving is turned off meanwhile and put back last.\n\n"
      "  zirvo-remote apply --dry-run rack7.json\n  zirvo-remote apply rack7.json\n",
      1, 1 },
    { "record", "FILE", "records the traffic of both links",
      "Writes a line a frame: seconds since the start, link, \"<\" from the head or \">\" to it, the frame.\n\n"
      "  zirvo-remote record --for 60 traffic.txt\n",
      1, 1 },
    { "replay", "FILE [PATTERN...]", "plays a recording",
      "Shows what the head had sent, as watch does. With --send the client's own requests are sent again, each answer\n"
      "is waited for, and answers that differ from the recorded ones are told.\n\n"
      "  zirvo-remote replay --speed 0 traffic.txt 'D1:*'\n  zirvo-remote replay --send traffic.txt\n",
      1, kAnyNumber },
    { "help", "[COMMAND]", "more about a command", "", 0, kAnyNumber },
});

/// Stands below every help.
inline constexpr char kExitCodeText[] =
    "\nExit codes: 0 all fine; 1 refused, or something differs in the end; 2 no answer, a link that\n"
    "will not open or was lost, or output that nobody took; 64 wrong usage or a file that cannot be used.\n";

} // namespace remote
