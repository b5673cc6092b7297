// Blocks of the eye link. The first byte of the input chooses the frame's size, for no mutation hits it by chance.

#include "fuzzing/Fuzz.h"
#include "link/EyeConstData.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray whole = Fuzz::bytes(data, size);
    QByteArrayView rest(whole);
    const char choice = Fuzz::take(rest, 1)[0];
    QByteArray frame = rest.toByteArray();
    if (choice == 'E')
        frame = frame.leftJustified(EyeConstData::kEyeFrameSize, '0', true);
    else if (choice == 'S')
        frame = frame.leftJustified(EyeConstData::kSerialDataFrameSize, 'f', true);

    const EyeConstData block(frame);
    const qsizetype expected = frame.size() == 2051 ? 1024 : frame.size() == 15 ? 5 : 0;
    Fuzz::require(block.bytes().size() == expected, "the frame's size decides the block's");
    Fuzz::require(block.channel().size() == (frame.size() >= 3 ? 1 : 0), "the channel is one character");
    Fuzz::require(expected == 0 || block.text().size() == 2 * expected, "two digits a byte");
    const EyeConstData upper(frame.toUpper());
    Fuzz::require(upper.bytes() == block.bytes() && upper.text() == block.text() && upper.channel() == block.channel(),
                  "digits of either case mean the same");
    Fuzz::require(decodeHexPairs(frame.toHex()) == frame, "digits of bytes are decoded to these bytes");
    Fuzz::require(decodeHexPairs(frame).size() == frame.size() / 2, "half as many bytes as digits");
    return 0;
}
