// Both framings: however the bytes are cut, the frames are the same, whole, bounded and clean.

#include "fuzzing/Fuzz.h"
#include "link/FrameDecoder.h"

#include <QByteArrayList>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray whole = Fuzz::bytes(data, size);
    QByteArrayView stream(whole);
    const QByteArray head = Fuzz::take(stream, 2);
    const QByteArray cuts = Fuzz::take(stream, 4);
    const char endByte = head[0] & 1 ? FrameDecoder::kEot : FrameDecoder::kCr;
    const qsizetype bound = static_cast<std::uint8_t>(head[1]);

    QByteArrayList atOnce;
    QByteArrayList inPieces;
    FrameDecoder one(endByte, bound);
    FrameDecoder other(endByte, bound);
    one.feed(stream, [&](const QByteArray &frame) { atOnce += frame; });
    Fuzz::feedInPieces(stream, cuts, [&](QByteArrayView piece) {
        other.feed(piece, [&](const QByteArray &frame) { inPieces += frame; });
    });
    Fuzz::require(atOnce == inPieces, "cutting the stream changes no frame");
    for (const QByteArray &frame : std::as_const(atOnce)) {
        Fuzz::require(frame.size() <= bound, "no frame is longer than the bound");
        Fuzz::require(!frame.contains(FrameDecoder::kStx) && !frame.contains(endByte), "a frame holds no delimiter");
    }
    Fuzz::require(atOnce.size() <= stream.count(endByte), "every frame has an end byte of its own");

    atOnce.clear();
    one.feed(QByteArray(1, FrameDecoder::kStx) + endByte, [&](const QByteArray &frame) { atOnce += frame; });
    Fuzz::require(atOnce == QByteArrayList{ QByteArray() }, "the next frame is found behind anything");
    return 0;
}
