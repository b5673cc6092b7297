#include "head/RcvdCmdQueueReader.h"

#include "channels/DataSource.h"
#include "channels/UniversalChan.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

void deliver(CommandOwner *target, const StandardCommand &command)
{
    if (target)
        target->ProcessCmd(command);
}

bool concerns(const StandardCommand &command, QLatin1StringView mnemonic)
{
    return command.responseMnemonic() == mnemonic || command.mnemonic() == mnemonic;
}

/// Address of the demodulator whose data source the command selects or reports; empty for any other command. The
/// acknowledgement of a set carries no mnemonic, so the request's counts as well.
QString dataSourceAddress(const StandardCommand &command)
{
    const QString address = DataSource::addressOf(command.responseMnemonic());
    return address.isEmpty() ? DataSource::addressOf(command.mnemonic()) : address;
}

} // namespace

RcvdCmdQueueReader::RcvdCmdQueueReader(ChannelLink &link, TransmitQueue<StandardCommand> &queue)
    : Dispatcher(link)
    , m_queue(queue)
{
}

void RcvdCmdQueueReader::CheckRcvdCmdQueue(StandardCommand *command)
{
    const std::unique_ptr<const StandardCommand> owned(command);
    if (!isFinished())
        route(*command);
    m_queue.release(command);
}

void RcvdCmdQueueReader::route(const StandardCommand &command)
{
    switch (command.status()) {
    case StandardCommand::Received:
    case StandardCommand::Completed:
    case StandardCommand::Failed:
    case StandardCommand::TimedOut:
        break;
    case StandardCommand::Unparsed:
        deliver(m_systemChannel, command);
        return;
    case StandardCommand::Created:
    case StandardCommand::Queued:
    case StandardCommand::Sent:
        return;
    }

    // The system address goes first: with owner and address rules behind it a system reply would be handled twice.
    if (command.address() == UniversalChan::Address || command.responseAddress() == UniversalChan::Address)
        routeSystem(command);
    else if (command.owner())
        deliver(command.owner(), command);
    else
        deliver(directory().at(command.responseAddress()), command);
}

void RcvdCmdQueueReader::routeSystem(const StandardCommand &command)
{
    if (const QString demodulator = dataSourceAddress(command); !demodulator.isEmpty()) {
        deliver(directory().at(demodulator), command);
    } else if (concerns(command, UniversalChan::Commands::SLAVE)) {
        for (Channel *channel : link().channels())
            deliver(channel, command);
    } else if (command.responseMnemonic() == UniversalChan::Commands::VER ||
               command.mnemonic() == UniversalChan::Commands::NOTIFY) {
        Q_EMIT startupCommandEnded(command);
    } else {
        deliver(m_systemChannel, command);
    }
}
