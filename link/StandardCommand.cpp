#include "link/StandardCommand.h"

#include "link/FrameDecoder.h"

namespace {

QString framed(const QString &content)
{
    return QChar::fromLatin1(FrameDecoder::kStx) + content + QChar::fromLatin1(FrameDecoder::kCr);
}

QString framed(const QString &address, const QString &mnemonic, const QString &data)
{
    const QString head = address + u':' + mnemonic;
    return framed(data.isEmpty() ? head : head + u':' + data);
}

} // namespace

StandardCommand::StandardCommand(Channel *owner, const QString &address, const QString &mnemonic, const QString &data,
                                 CommandStatus status, CommandType type, int timeOutMs)
    : m_owner(owner)
    , m_type(type)
    , m_status(status)
    , m_timeOutMs(timeOutMs)
{
    if (status == Received) {
        m_responseText = framed(address, mnemonic, data);
        m_responseAddress = address;
        m_responseMnemonic = mnemonic;
        m_responseData = data;
    } else {
        m_commandText = framed(address, mnemonic, data);
        m_address = address;
        m_mnemonic = mnemonic;
        m_data = data;
    }
}

StandardCommand::StandardCommand(Channel *owner, const QString &frame, CommandStatus status, CommandType type)
    : m_owner(owner)
    , m_responseText(framed(frame))
    , m_type(type)
    , m_status(status)
{
}

void StandardCommand::ResponseReceived(const QString &text)
{
    if (text.size() == 1 && text.front() == kAck) {
        m_status = Completed;
        return;
    }
    if (text.size() == 1 && text.front() == kNak) {
        m_status = Failed;
        return;
    }
    if (text.count(u':') < 2)
        return;

    m_responseAddress = text.section(u':', 0, 0);
    m_responseMnemonic = text.section(u':', 1, 1);
    m_responseData = text.section(u':', 2);
    m_responseText = framed(text);
    m_status = Completed;
}
