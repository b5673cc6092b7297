#pragma once

class RemoteCommand;
class StandardCommand;

/// Whoever sends a message, and is handed it once more when it has ended.
class CommandOwner
{
public:
    virtual void ProcessCmd(const StandardCommand &command) = 0;
    virtual void ProcessCmd(const RemoteCommand &message) = 0;

protected:
    CommandOwner() = default;
    ~CommandOwner() = default;
    CommandOwner(const CommandOwner &) = delete;
    CommandOwner &operator=(const CommandOwner &) = delete;
};
