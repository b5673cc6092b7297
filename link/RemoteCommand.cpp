#include "link/RemoteCommand.h"

#include "link/FrameDecoder.h"

RemoteCommand::RemoteCommand(Channel *owner, const QString &address, const QString &mnemonic, const QString &data,
                             int timeOutMs, CommandType type, bool queue)
    : m_owner(owner)
    , m_text(QChar::fromLatin1(FrameDecoder::kStx) + address + u':' + mnemonic + u':' + data +
             QChar::fromLatin1(FrameDecoder::kCr))
    , m_type(type)
    , m_status(queue ? Queued : Created)
    , m_timeOutMs(timeOutMs)
{
}
