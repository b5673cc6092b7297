// Answers of the cards: bytes to frames, frames to the fields of the command in flight.

#include "fuzzing/Fuzz.h"
#include "link/FrameDecoder.h"
#include "link/StandardCommand.h"

using namespace Qt::StringLiterals;

namespace {

QString framed(const QString &text) { return u'\x02' + text + u'\r'; }

void checkAnswer(StandardCommand::CommandType type, const QString &text)
{
    using enum StandardCommand::CommandStatus;
    StandardCommand command(nullptr, u"R1"_s, u"FREQ"_s, u"1"_s, Sent, type, StandardCommand::kTimeOutMs);
    command.ResponseReceived(text);

    Fuzz::require(command.commandText() == framed(u"R1:FREQ:1"_s) && command.type() == type,
                  "an answer leaves the request alone");
    const bool isReply = text.count(u':') >= 2;
    const bool isAck = text == QChar(StandardCommand::kAck);
    const bool isNak = text == QChar(StandardCommand::kNak);
    Fuzz::require(command.status() == (isReply || isAck ? Completed : isNak ? Failed : Sent), "status of the answer");
    if (!isReply) {
        Fuzz::require(command.responseText().isEmpty(), "what is no reply fills no field");
        return;
    }
    const QString &address = command.responseAddress();
    const QString &mnemonic = command.responseMnemonic();
    const QString &data = command.responseData();
    Fuzz::require(!address.contains(u':') && !mnemonic.contains(u':'), "address and mnemonic hold no colon");
    Fuzz::require(address + u':' + mnemonic + u':' + data == text, "the fields are the reply");
    Fuzz::require(command.responseText() == framed(text), "the response text is the frame");

    const StandardCommand unasked(nullptr, address, mnemonic, data, Received, type, 0);
    Fuzz::require(unasked.commandText().isEmpty(), "an unsolicited message is no request");
    Fuzz::require(unasked.responseText() == framed(data.isEmpty() ? address + u':' + mnemonic : text),
                  "an unsolicited message is framed as the reply");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FrameDecoder decoder(FrameDecoder::kCr);
    decoder.feed(Fuzz::bytes(data, size), [](const QByteArray &frame) {
        checkAnswer(StandardCommand::Query, QString::fromLocal8Bit(frame));
        checkAnswer(StandardCommand::Set, QString::fromLocal8Bit(frame));
    });
    return 0;
}
