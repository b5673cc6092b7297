#pragma once

#include <memory>

namespace remote {

class Command;
class Session;

/// The command that the options of @p session select.
[[nodiscard]] std::unique_ptr<Command> createCommand(Session &session);

} // namespace remote
