// Messages of the remote client: accepted ones are clean, and mean the same when they are written again.

#include "fuzzing/Fuzz.h"
#include "link/FrameDecoder.h"
#include "link/RemoteCommand.h"

#include <algorithm>

namespace {

RemoteCommand writtenAgain(const RemoteCommand &message)
{
    const QString &address = message.address();
    const QString &mnemonic = message.mnemonic();
    if (message.type() == RemoteCommand::Query)
        return RemoteCommand(nullptr, address, mnemonic, false);
    if (message.status() == RemoteCommand::Received)
        return RemoteCommand(nullptr, address, mnemonic, message.data(), false);
    return RemoteCommand(nullptr, address, mnemonic, message.data(), message.status() == RemoteCommand::Completed,
                         false);
}

bool isClean(const QString &text)
{
    return std::none_of(text.cbegin(), text.cend(), [](QChar c) { return c.category() == QChar::Other_Control; });
}

void check(const QString &frame)
{
    const RemoteCommand message = RemoteCommand::fromClient(frame);
    if (message.status() == RemoteCommand::Unparsed)
        return;
    Fuzz::require(isClean(message.address()) && isClean(message.mnemonic()) && isClean(message.data()),
                  "a message taken holds no control characters");
    Fuzz::require(!message.address().contains(u':') && !message.mnemonic().contains(u':'),
                  "address and mnemonic hold no colon");
    Fuzz::require(message.owner() == nullptr && !message.isAnswer(), "the client's message belongs to no channel");

    const QString text = writtenAgain(message).commandText();
    Fuzz::require(text.front() == QChar::fromLatin1(FrameDecoder::kStx) && text.back() == u'\r', "text is framed");
    const RemoteCommand again = RemoteCommand::fromClient(text.sliced(1).chopped(1));
    Fuzz::require(again.isAboutSameAs(message) && again.data() == message.data() && again.type() == message.type() &&
                      again.status() == message.status(),
                  "a message written again is read as the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray input = Fuzz::bytes(data, size);
    check(QString::fromLocal8Bit(input));
    FrameDecoder decoder(FrameDecoder::kCr);
    decoder.feed(input, [](const QByteArray &frame) { check(QString::fromLocal8Bit(frame)); });
    return 0;
}
