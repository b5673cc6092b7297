#pragma once

#include <QByteArray>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// The help of the program and of its commands.
namespace remote::HelpText {

/// The help of @p app, which is the program or one of its commands.
[[nodiscard]] QByteArray of(const CLI::App &app);
/// How the arguments of @p command are written.
[[nodiscard]] QByteArray synopsis(const CLI::App &command);
/// Whether @p command takes @p option of the program: the group of an option names the commands, or is that of all.
[[nodiscard]] bool takes(const CLI::App &command, const CLI::Option &option);

} // namespace remote::HelpText
