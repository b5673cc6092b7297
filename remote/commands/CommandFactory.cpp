#include "remote/commands/CommandFactory.h"

#include "remote/commands/ApplyCommand.h"
#include "remote/commands/DumpCommand.h"
#include "remote/commands/GetCommand.h"
#include "remote/commands/RecordCommand.h"
#include "remote/commands/ReplayCommand.h"
#include "remote/commands/ResendCommand.h"
#include "remote/commands/SetCommand.h"
#include "remote/commands/WatchCommand.h"

namespace remote {

std::unique_ptr<Command> createCommand(Session &session)
{
    const QString &name = session.options().command;
    if (name == u"get")
        return std::make_unique<GetCommand>(session);
    if (name == u"set")
        return std::make_unique<SetCommand>(session);
    if (name == u"watch")
        return std::make_unique<WatchCommand>(session);
    if (name == u"dump")
        return std::make_unique<DumpCommand>(session);
    if (name == u"apply")
        return std::make_unique<ApplyCommand>(session);
    if (name == u"record")
        return std::make_unique<RecordCommand>(session);
    if (session.options().send)
        return std::make_unique<ResendCommand>(session);
    return std::make_unique<ReplayCommand>(session);
}

} // namespace remote
