// The reader of a link to the cards and of the link to the remote client, each a real port on a pseudo-terminal.
//
// The first byte of the input chooses the link and what is in flight on it, the next eight where the stream is cut. The
// rest is the stream; DEL and the byte behind it stand for that many times 32 letters, so short inputs make long
// frames.

#include "fuzzing/Fuzz.h"
#include "head/ClientProtocol.h"
#include "head/SerialPortController.h"
#include "head/StandardProtocol.h"
#include "link/RemoteCommand.h"
#include "support/FarEnd.h"
#include "support/Wait.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

#include <poll.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kLongestStream = 12'000;
constexpr qsizetype kLongestOfClient = 4096;
constexpr int kNoTimeOut = 0;

QByteArray expanded(QByteArrayView input)
{
    QByteArray stream;
    while (!input.isEmpty() && stream.size() < kLongestStream) {
        const char next = Fuzz::take(input, 1)[0];
        if (next == '\x7f')
            stream += QByteArray(static_cast<std::uint8_t>(Fuzz::take(input, 1)[0]) * 32, 'x');
        else
            stream += next;
    }
    return stream;
}

QByteArrayList framesOf(const QByteArray &stream, qsizetype longest)
{
    QByteArrayList frames;
    for (const QByteArray &begun : stream.split('\x02').sliced(1)) {
        if (const qsizetype end = begun.indexOf('\r'); end >= 0 && end <= longest)
            frames += begun.first(end);
    }
    return frames;
}

QString framed(const QString &text) { return u'\x02' + text + u'\r'; }

/// A link and its far end. It stays for the whole run, as opening a port takes longer than all the rest; every input
/// leaves it with nothing in flight and no frame begun.
class Link : public QTemporaryDir
{
public:
    explicit Link(SerialPortController::PORT_TYPE type)
        : m_far(filePath(type == SerialPortController::COMMAND_LINK ? u"ttyUSB0"_s : u"ttyUSB4"_s))
    {
        qputenv("ZIRVO_DEVICE_DIR", path().toLocal8Bit());
        m_controller = std::make_unique<SerialPortController>(nullptr, type, u"FUZZ"_s);
    }

    [[nodiscard]] SerialPortController &controller() { return *m_controller; }

    /// Sends @p stream in pieces of the sizes @p cuts, each when the one before has reached the port, and the rest at
    /// once; then goes on until @p isDone. Calls @p pass again and again meanwhile.
    template <typename Pass, typename Condition>
    void run(QByteArrayView stream, const QByteArray &cuts, Pass pass, Condition isDone)
    {
        for (const char cut : cuts + char(0)) {
            if (stream.isEmpty())
                break;
            const auto size = static_cast<std::uint8_t>(cut);
            m_far.send(Fuzz::take(stream, size == 0 ? stream.size() : qMin<qsizetype>(size, stream.size())));
            pollfd arrival{ static_cast<int>(m_controller->port().handle()), POLLIN, 0 };
            (void)::poll(&arrival, 1, 1);
            QCoreApplication::processEvents();
            pass();
        }
        const auto isThere = [&pass, &isDone] {
            pass();
            return isDone();
        };
        Fuzz::require(waitUntil(isThere), "nothing is lost or held back for ever");
        QCoreApplication::processEvents();
        m_far.clear();
    }

private:
    FarEnd m_far;
    std::unique_ptr<SerialPortController> m_controller;
};

// The link to the cards

struct Request
{
    QString address;
    QString mnemonic;
    QString data;
    StandardCommand::CommandType type;
};

const std::optional<Request> kRequests[] = {
    std::nullopt,
    Request{ u"R1"_s, u"FREQ"_s, {}, StandardCommand::Query },
    Request{ u"R1"_s, u"FREQ"_s, u"5"_s, StandardCommand::Set },
    Request{ u"D1"_s, u"RDRG"_s, u"82"_s, StandardCommand::Query },
};

/// What the receiver gets, in one text.
QString told(bool isRequest, int status, int type, const QStringList &texts)
{
    return (QStringList{ isRequest ? u"answered"_s : u"unasked"_s, QString::number(status), QString::number(type) } +
            texts)
        .join(u'\n');
}

QString told(const StandardCommand &message, bool isRequest)
{
    return told(
        isRequest, message.status(), message.type(),
        { message.responseAddress(), message.responseMnemonic(), message.responseData(), message.responseText() });
}

/// UTF-8, or Latin-1 if writing it again gives other bytes.
QString textOf(const QByteArray &frame)
{
    const QString text = QString::fromUtf8('.' + frame).sliced(1); // keeps a byte-order mark
    return text.toUtf8() == frame ? text : QString::fromLatin1(frame);
}

/// What has to be dispatched for @p frame. It ends @p inFlight if it answers that.
QString expected(const QByteArray &frame, std::optional<Request> &inFlight)
{
    using enum StandardCommand::CommandStatus;
    const QString text = textOf(frame);
    if (inFlight && (frame == "\x15" || (frame == "\x06" && inFlight->type == StandardCommand::Set))) {
        const auto type = std::exchange(inFlight, std::nullopt)->type;
        return told(true, frame == "\x15" ? Failed : Completed, type, { {}, {}, {}, {} });
    }
    if (frame.size() == 1 || !text.contains(u':'))
        return told(false, Unparsed, StandardCommand::Set, { {}, {}, {}, framed(text) });

    const QString address = text.section(u':', 0, 0);
    const QString mnemonic = text.section(u':', 1, 1);
    const QString wire = text.section(u':', 2);
    const QString flat = QString(wire).remove(u':');
    const bool hasData = text.count(u':') >= 2;
    if (hasData && inFlight && inFlight->type == StandardCommand::Query && inFlight->address == address &&
        inFlight->mnemonic == mnemonic && (mnemonic != u"RDRG"_s || flat.startsWith(inFlight->data))) {
        inFlight.reset();
        return told(true, Completed, StandardCommand::Query, { address, mnemonic, wire, framed(text) });
    }
    const QString data = address.startsWith(u"TM"_s) && mnemonic == u"TIME"_s ? wire : flat;
    return told(false, Received, hasData ? StandardCommand::Set : StandardCommand::Query,
                { address, mnemonic, data, framed(address + u':' + mnemonic + (data.isEmpty() ? data : u':' + data)) });
}

class Cards : public Link
{
public:
    Cards() : Link(SerialPortController::COMMAND_LINK)
    {
        // In place of the dispatcher, as it deletes what it was given.
        controller().disconnect(SIGNAL(RcvdCmd(StandardCommand *)));
        const auto take = [this](StandardCommand *message) {
            m_received += told(*message, message == m_command);
            controller().findChild<StandardProtocol *>()->queue().release(message);
            m_command = message == m_command ? nullptr : m_command;
            delete message;
        };
        QObject::connect(&controller(), &SerialPortController::RcvdCmd, &controller(), take, Qt::QueuedConnection);
    }

    void check(const std::optional<Request> &request, const QByteArray &stream, const QByteArray &cuts)
    {
        if (request)
            ask(*request);
        QStringList wanted;
        std::optional<Request> inFlight = request;
        for (const QByteArray &frame : framesOf(stream, stream.size()))
            wanted += expected(frame, inFlight);
        run(
            stream, cuts, [] {}, [&] { return m_received.size() >= wanted.size(); });
        Fuzz::require(m_received == wanted, "each message comes once, in order, and ends only what it answers");
        Fuzz::require((m_command != nullptr) == inFlight.has_value(), "a request waits for its answer");
        controller().TimeOutTmr_Tick();
        QCoreApplication::processEvents();
        m_received = {};
    }

private:
    void ask(const Request &request)
    {
        m_command = new StandardCommand(nullptr, request.address, request.mnemonic, request.data,
                                        StandardCommand::Queued, request.type, kNoTimeOut);
        controller().AddCmdToTxmtCmdQueue(m_command);
        QCoreApplication::processEvents();
    }

    StandardCommand *m_command = nullptr;
    QStringList m_received;
};

// The link to the remote client

bool answersQuery(const QString &text)
{
    const QString data = text.section(u':', 2);
    return text.startsWith(u"R1:FREQ:"_s) && !text.contains(u'?') &&
           (data.endsWith(u'\x06') || data.endsWith(u'\x15')) &&
           std::none_of(data.begin(), data.end() - 1, [](QChar c) { return c.category() == QChar::Other_Control; });
}

class Client : public Link
{
public:
    Client() : Link(SerialPortController::REMOTE_LINK)
    {
        StandardCommand version(nullptr, u"U0"_s, u"VER"_s, {}, StandardCommand::Sent, StandardCommand::Query, 0);
        version.ResponseReceived(u"U0:VER:1"_s);
        m_cards.controller().ProcessCmd(version);
        m_cards.controller().GenerateChannelList(u"0103 MPU 2 TUNER A1 X,0121 FPGA1 1 TUNER A1 X"_s);
        controller().GenerateChannelList(&m_cards.controller());
        const auto note = [this](RemoteCommand *message) {
            const QString &answer = message->responseText();
            if (message->status() != RemoteCommand::TimedOut)
                m_received += (message == m_query ? u"answered"_s : QString()) +
                              (answer.isEmpty() ? message->commandText() : answer);
            m_query = message == m_query ? nullptr : m_query;
        };
        QObject::connect(&controller(), &SerialPortController::RcvdRemoteCmd, &controller(), note);
    }

    void check(bool asks, const QByteArray &stream, const QByteArray &cuts)
    {
        if (asks)
            ask();
        QStringList wanted;
        for (const QByteArray &frame : framesOf(stream, kLongestOfClient)) {
            const QString text = textOf(frame);
            const bool isAnswer = asks && answersQuery(text);
            asks = asks && !isAnswer;
            wanted += (isAnswer ? u"answered"_s : QString()) + framed(text);
        }
        run(
            stream, cuts, [this] { timeOutCards(); }, [&] { return m_received.size() >= wanted.size(); });
        Fuzz::require(m_received == wanted, "each message comes once, in order, and answers only what it fits");
        Fuzz::require((m_query != nullptr) == asks, "a question waits for its answer");
        (void)controller().findChild<ClientProtocol *>()->queue().takeWaiting();
        controller().StopTimeOutTmr();
        controller().TimeOutTmrRemote_Tick();
        QCoreApplication::processEvents();
        m_received = {};
    }

private:
    void ask()
    {
        m_query = new RemoteCommand(nullptr, u"R1"_s, u"FREQ"_s, kNoTimeOut, true);
        controller().AddCmdToTxmtRemoteCmdQueue(m_query);
        // What the previous input has caused may still be sent first.
        Fuzz::require(waitUntil([this] { return m_query->status() == RemoteCommand::Sent; }), "a question is asked");
    }
    /// The cards answer nothing, so a client that sets much is held back.
    void timeOutCards()
    {
        m_cards.controller().StopTimeOutTmr();
        m_cards.controller().TimeOutTmr_Tick();
    }

    Link m_cards{ SerialPortController::COMMAND_LINK };
    RemoteCommand *m_query = nullptr;
    QStringList m_received;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static auto *const application = new QCoreApplication(*argc, *argv);
    // The ports keep buffers of nearly every input, and a search for leaks behind each would take longer than all the
    // rest. The one at the end stays.
    static QList<char *> arguments(*argv, *argv + *argc);
    static std::array<char, 16> option = std::to_array("-detect_leaks=0");
    arguments += option.data();
    *argc = static_cast<int>(arguments.size());
    arguments += nullptr;
    *argv = arguments.data();
    return application ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray whole = Fuzz::bytes(data, size);
    QByteArrayView input(whole);
    const auto head = static_cast<std::uint8_t>(Fuzz::take(input, 1)[0]);
    const QByteArray cuts = Fuzz::take(input, 8);
    const QByteArray stream = expanded(input) + "\x02Z9:END:\r";
    const int choice = head >> 1;
    static auto *const cards = new Cards;
    static auto *const client = new Client;
    if (head & 1)
        client->check(choice & 1, stream, cuts);
    else
        cards->check(kRequests[size_t(choice) % std::size(kRequests)], stream, cuts);
    return 0;
}
