// The client's side of the remote links: frames, messages, and bytes as text.

#include "fuzzing/Fuzz.h"
#include "remote/wire/Escaping.h"
#include "remote/wire/FrameCutter.h"
#include "remote/wire/Message.h"

using namespace remote;

namespace {

void checkMessage(const QByteArray &frame)
{
    const auto message = Message::parse(frame);
    if (!message)
        return;
    Fuzz::require(!message->address.isEmpty() && !message->address.contains(':'), "a message has an address");
    const bool isSendable =
        Message::queryProblem(message->key()).isEmpty() && Message::setProblem(message->key(), message->data).isEmpty();
    const QByteArray sent = FrameCutter::framed(Message::set(message->key(), message->data));
    Fuzz::require(!isSendable || (sent.size() <= 4098 && FrameCutter().feed(sent).size() == 1),
                  "what can be sent is one frame that the head takes");
    if (message->kind == Message::Kind::Query) {
        Fuzz::require(Message::query(message->key()) == frame, "a query written again is the same");
        return;
    }
    const QByteArray value = Message::set(message->key(), message->data);
    Fuzz::require(frame.startsWith(value) && frame.size() == value.size() + message->isAnswer(),
                  "a value written again is the same, its acknowledgement aside");
    if (message->kind == Message::Kind::Acknowledged)
        Fuzz::require(Message::acknowledged(message->key(), message->data) == frame, "so is an answer");
    Fuzz::require(Message::sameValue(message->data, message->data), "a value is the same as itself");
}

void checkText(const QByteArray &bytes)
{
    const QByteArray text = Escaping::escaped(bytes);
    Fuzz::require(!Message::hasControlCharacter(text), "escaped bytes are printable");
    Fuzz::require(Escaping::unescaped(text) == bytes, "escaped bytes come back");
    Fuzz::require(!Message::hasControlCharacter(Escaping::printable(bytes)), "what goes to a terminal is printable");
    Fuzz::require(
        Escaping::printable(bytes).startsWith(Escaping::brief(bytes.first(qMin(bytes.size(), qsizetype(80))))),
        "a message shows the beginning");
    if (const auto unescaped = Escaping::unescaped(bytes)) {
        Fuzz::require(unescaped->size() <= bytes.size(), "escapes are no shorter than what they stand for");
        Fuzz::require(Escaping::unescaped(Escaping::escaped(*unescaped)) == unescaped, "what was read comes back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray whole = Fuzz::bytes(data, size);
    QByteArrayView stream(whole);
    const QByteArray cuts = Fuzz::take(stream, 4);
    FrameCutter one;
    FrameCutter other;
    const QByteArrayList frames = one.feed(stream);
    QByteArrayList inPieces;
    Fuzz::feedInPieces(stream, cuts, [&](QByteArrayView piece) { inPieces += other.feed(piece); });
    Fuzz::require(frames == inPieces, "cutting the stream changes no frame");
    for (const QByteArray &frame : frames) {
        Fuzz::require(!frame.contains('\x02') && !frame.contains('\r'), "a frame holds no delimiter");
        Fuzz::require(FrameCutter().feed(FrameCutter::framed(frame)) == QByteArrayList{ frame }, "a frame comes back");
        checkMessage(frame);
    }
    checkMessage(stream.toByteArray());
    checkText(stream.toByteArray());
    return 0;
}
