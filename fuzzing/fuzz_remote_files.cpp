// Files that the client's program reads: settings of a chassis and recorded traffic.

#include "fuzzing/Fuzz.h"
#include "remote/files/Recording.h"
#include "remote/files/SettingsFile.h"
#include "remote/wire/Catalogue.h"

#include <QTemporaryFile>

using namespace remote;

namespace {

/// A file of the same name with other content.
QString fileWith(const QByteArray &content)
{
    static QTemporaryFile file;
    Fuzz::require(file.isOpen() || file.open(), "a file for the content");
    Fuzz::require(file.resize(0) && file.seek(0) && file.write(content) == content.size() && file.flush(),
                  "the content is written");
    return file.fileName();
}

void checkSettings(const QByteArray &content)
{
    SettingsFile file;
    if (!file.read(fileWith(content)).isEmpty()) {
        Fuzz::require(file.settings().isEmpty(), "nothing of a file with a fault is taken");
        return;
    }
    QByteArrayList channels;
    for (auto setting = file.settings().begin(); setting != file.settings().end(); ++setting) {
        Fuzz::require(Message::keyProblem(setting.key()).isEmpty(), "a key that was read is one");
        Fuzz::require(!setting->isEmpty() && !Message::hasControlCharacter(*setting), "a value can be sent");
        if (const QByteArray address = setting.key().split(':').first(); !channels.contains(address))
            channels.append(address);
    }
    SettingsFile again;
    const QByteArray text = SettingsFile::text(channels, file.settings(), QDateTime());
    Fuzz::require(again.read(fileWith(text)).isEmpty(), "a file that was written is read");
    for (const QByteArray &address : std::as_const(channels)) {
        for (const std::string_view mnemonic : Catalogue::of(address).settings) {
            const QByteArray key = Catalogue::key(address, mnemonic);
            const QByteArray value = file.settings().value(key);
            Fuzz::require(!Message::isKnown(value) || again.settings().value(key) == value, "a value comes back");
        }
    }
}

QList<RecordedFrame> framesOf(Recording &recording)
{
    QList<RecordedFrame> frames;
    while (const auto frame = recording.next())
        frames.append(*frame);
    Fuzz::require(recording.atEnd(), "what was checked can be read");
    return frames;
}

void checkRecording(const QByteArray &content)
{
    Recording recording;
    if (!recording.open(fileWith(content)).isEmpty())
        return;
    const QList<RecordedFrame> frames = framesOf(recording);
    QByteArray text = Recording::header(recording.start()) + '\n';
    for (const RecordedFrame &frame : frames)
        text += Recording::line(frame) + '\n';
    Recording again;
    Fuzz::require(again.open(fileWith(text)).isEmpty() && !again.isCutOff(), "a recording that was written is read");
    const QList<RecordedFrame> copies = framesOf(again);
    Fuzz::require(copies.size() == frames.size(), "a recording that was written is read to its end");
    for (qsizetype i = 0; i < copies.size(); ++i) {
        const RecordedFrame &frame = frames[i];
        const RecordedFrame &copy = copies[i];
        Fuzz::require(copy.microseconds == frame.microseconds && copy.link == frame.link &&
                          copy.fromHead == frame.fromHead && copy.frame == frame.frame,
                      "a frame comes back");
        Fuzz::require(Recording::dueMs(copy, 1e-300) >= Recording::dueMs(copy, 1) && Recording::dueMs(copy, 1) >= 0 &&
                          Recording::dueMs(copy, 0) == 0,
                      "a frame is due after the start");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray content = Fuzz::bytes(data, size);
    checkSettings(content);
    checkRecording(content);
    return 0;
}
