#include "link/RemoteCommand.h"

#include "link/FrameDecoder.h"

#include <QStringList>

#include <type_traits>

namespace {

/// Whether a message can be built from these arguments behind owner, address and mnemonic.
template <typename... Arguments>
constexpr bool kTakes =
    std::is_constructible_v<RemoteCommand, CommandOwner *, const QString &, const QString &, Arguments...>;

static_assert(kTakes<bool> && kTakes<int, bool> && kTakes<QString, bool> && kTakes<QString, int, bool>);
static_assert(kTakes<QString, bool, bool> && kTakes<QString, int, bool, bool>);
static_assert(kTakes<QString, int, RemoteCommand::CommandType, bool>);
static_assert(!kTakes<int> && !kTakes<const char *> && !kTakes<const char *, bool> && !kTakes<bool, bool>);
static_assert(!kTakes<QString, int, int> && !kTakes<QString, bool, int> && !kTakes<QString, int, int, bool>);
static_assert(!kTakes<QString, RemoteCommand::CommandType, bool> && !kTakes<QString, const char *, bool>);

/// Removes control characters from @p field; returns whether there were any.
bool removeControls(QString &field)
{
    const qsizetype size = field.size();
    field.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    return field.size() != size;
}

/// Removes the acknowledgement from the end of what the client sent; returns the status that it stands for.
RemoteCommand::CommandStatus takeAcknowledgement(QString &data)
{
    const bool isAck = data.endsWith(RemoteCommand::kAck);
    if (!isAck && !data.endsWith(RemoteCommand::kNak))
        return RemoteCommand::Received;
    data.chop(1);
    return isAck ? RemoteCommand::Completed : RemoteCommand::Failed;
}

QString framed(const QString &content)
{
    return QChar::fromLatin1(FrameDecoder::kStx) + content + QChar::fromLatin1(FrameDecoder::kCr);
}

} // namespace

RemoteCommand::RemoteCommand(CommandOwner *owner, const QString &address, const QString &mnemonic, const QString &data,
                             int timeOutMs, CommandType type, bool queue, const QString &acknowledgement)
    : m_owner(owner)
    , m_address(address)
    , m_mnemonic(mnemonic)
    , m_data(data)
    , m_text(framed(type == Query ? address + u':' + mnemonic + u'?'
                                  : address + u':' + mnemonic + u':' + data + acknowledgement))
    , m_type(type)
    , m_status(queue ? Queued : Created)
    , m_timeOutMs(timeOutMs)
{
}

RemoteCommand RemoteCommand::fromClient(const QString &frame)
{
    RemoteCommand message;
    const QStringList parts = frame.split(u':');
    if (frame.contains(u'?') && parts.size() == 2)
        message = RemoteCommand(nullptr, parts[0], parts[1].section(u'?', 0, 0), 0, false);
    else if (!frame.contains(u'?') && parts.size() >= 3)
        message = RemoteCommand(nullptr, parts[0], parts[1], parts.sliced(2).join(u':'), 0, Value, false);
    else
        message.m_status = Unparsed;

    if (message.m_status != Unparsed)
        message.m_status = takeAcknowledgement(message.m_data);
    for (QString *field : { &message.m_address, &message.m_mnemonic, &message.m_data })
        message.m_isGarbled = removeControls(*field) || message.m_isGarbled;
    if (message.m_isGarbled && message.m_status != Received)
        message.m_status = Unparsed;
    message.m_text = framed(frame);
    return message;
}

void RemoteCommand::answeredBy(const RemoteCommand &answer)
{
    m_status = answer.m_status;
    m_responseData = answer.m_data;
    m_responseText = answer.m_text;
}

void RemoteCommand::setTimedOut()
{
    m_status = TimedOut;
    m_responseData.clear();
    m_responseText.clear();
}
