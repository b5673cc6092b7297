#include "head/RemoteProtocol.h"

#include "channels/Channel.h"
#include "head/RcvdRemoteCmdQueueReader.h"
#include "head/TxmtRemoteCmdQueueReader.h"
#include "link/ClientReader.h"
#include "link/FrameText.h"

#include <utility>

namespace {

constexpr std::size_t kMaxAnswers = 256;

} // namespace

RemoteProtocol::RemoteProtocol(LinkPort &port, ChannelLink &link)
    : ClientProtocol(port, link)
    , m_transmitter(std::make_unique<TxmtRemoteCmdQueueReader>(port, queue()))
{
    auto dispatcher = std::make_unique<RcvdRemoteCmdQueueReader>(link, queue());
    m_dispatcher = dispatcher.get();
    setDispatcher(std::move(dispatcher));
    setReader(std::make_unique<ClientReader>(
        &port.port(), [this](const QByteArray &frame) { handleFrame(frame); }, [this] { return isClientHeldBack(); }));
}

RemoteProtocol::~RemoteProtocol() = default;

bool RemoteProtocol::isClientHeldBack() const
{
    return queue().answerCount() >= kMaxAnswers || m_dispatcher->isClientAhead();
}

void RemoteProtocol::serve(Channel *channel) { channel->setSPCRemote(&link()); }

void RemoteProtocol::process(const QByteArray &frame)
{
    const FrameText::Decoded content = FrameText::decode(frame);
    auto message = std::make_unique<RemoteCommand>(RemoteCommand::fromClient(content.text));
    message->setLatin1(content.isLatin1);
    const bool isAnswer = message->status() == RemoteCommand::Completed || message->status() == RemoteCommand::Failed;
    if (!isAnswer || !queue().isAwaitingAnswer() || !queue().inFlight()->isAboutSameAs(*message)) {
        Q_EMIT received(message.release());
        return;
    }
    port().timeOutTimer().stop();
    queue().inFlight()->answeredBy(*message);
    Q_EMIT received(queue().inFlight());
    proceed();
}

/// The sender of a query gets its end as well.
void RemoteProtocol::handleTimedOut(std::unique_ptr<RemoteCommand> message)
{
    if (message->type() == RemoteCommand::Query || message->type() == RemoteCommand::Value)
        Q_EMIT received(message.release());
}
