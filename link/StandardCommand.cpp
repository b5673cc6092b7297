#include "link/StandardCommand.h"

#include "link/FrameDecoder.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kRegisterNumberSize = 2;

bool namesSameRegister(const QString &a, const QString &b)
{
    return QStringView(a).left(kRegisterNumberSize) == QStringView(b).left(kRegisterNumberSize);
}

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

StandardCommand::StandardCommand(CommandOwner *owner, const QString &address, const QString &mnemonic,
                                 const QString &data, CommandStatus status, CommandType type, int timeOutMs)
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

StandardCommand::StandardCommand(CommandOwner *owner, const QString &frame, CommandStatus status, CommandType type)
    : m_owner(owner)
    , m_responseText(framed(frame))
    , m_type(type)
    , m_status(status)
{
}

StandardCommand StandardCommand::query(CommandOwner *owner, const QString &address, const QString &mnemonic,
                                       const QString &data)
{
    return { owner, address, mnemonic, data, Created, Query, kTimeOutMs };
}

StandardCommand StandardCommand::set(CommandOwner *owner, const QString &address, const QString &mnemonic,
                                     const QString &data)
{
    return { owner, address, mnemonic, data, Created, Set, kTimeOutMs };
}

StandardCommand StandardCommand::fromCard(const QString &frame)
{
    const QStringList parts = frame.split(u':');
    if (parts.size() < 2)
        return { nullptr, frame, Unparsed, Set };
    if (parts.size() == 2)
        return { nullptr, parts[0], parts[1], {}, Received, Query, kTimeOutMs };
    // Only a time of day keeps its colons.
    const bool keepsColons = parts[0].startsWith("TM"_L1) && parts[1] == "TIME"_L1;
    const QString data = parts.sliced(2).join(keepsColons ? u":"_s : QString());
    return { nullptr, parts[0], parts[1], data, Received, Set, kTimeOutMs };
}

bool StandardCommand::isAnsweredBy(const StandardCommand &message) const
{
    return m_type == Query && message.m_status == Received && message.m_type == Set &&
           m_address == message.m_responseAddress && m_mnemonic == message.m_responseMnemonic &&
           (m_mnemonic != "RDRG"_L1 || namesSameRegister(m_data, message.m_responseData));
}

StandardCommand StandardCommand::readingBack() const
{
    const bool isReport = m_status == Received;
    const QString &address = isReport ? m_responseAddress : m_address;
    const QString &mnemonic = isReport ? m_responseMnemonic : m_mnemonic;
    const QString &data = isReport ? m_responseData : m_data;
    const bool isRegister = mnemonic == "CDRG"_L1 || mnemonic == "RDRG"_L1;
    return query(m_owner, address, isRegister ? u"RDRG"_s : mnemonic,
                 isRegister ? data.left(kRegisterNumberSize) : QString());
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
