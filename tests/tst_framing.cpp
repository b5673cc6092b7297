#include "link/FrameDecoder.h"
#include "link/StandardCommand.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Bytes to frames, and frames to the fields of a command; no port involved.
class FramingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stream_data();
    void stream();
    void bound();
    void command_data();
    void command();
};

namespace {

QByteArrayList framesOf(char endByte, const QByteArrayList &reads)
{
    FrameDecoder decoder(endByte);
    QByteArrayList frames;
    for (const QByteArray &bytes : reads)
        decoder.feed(bytes, [&frames](const QByteArray &frame) { frames += frame; });
    return frames;
}

} // namespace

void FramingTest::stream_data()
{
    QTest::addColumn<char>("endByte");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArrayList>("frames");

    const auto row = [](const char *name, char endByte, const QByteArray &bytes, const QByteArrayList &frames) {
        QTest::newRow(name) << endByte << bytes << frames;
    };
    row("two frames in one read", '\r', "\x02R1:AFC:1\r\x02R2:AFC:2\r", { "R1:AFC:1", "R2:AFC:2" });
    row("start byte inside a frame", '\r', "\x02R1\x02R1:FREQ:2250.5\r", { "R1:FREQ:2250.5" });
    row("noise before, between and behind", '\r', "boot\r\x06\x02R1:AFC:1\r\x15\rR2:AFC:9\r\x02U0:VER:1\rtail",
        { "R1:AFC:1", "U0:VER:1" });
    row("single bytes and nothing", '\r', "\x02\x06\r\x02\x15\r\x02\r", { "\x06", "\x15", "" });
    row("no end", '\r', "\x02R1:FREQ:2250.5", {});
    row("EOT and NUL are content", '\r', QByteArray("\x02x\x04y\0z\r", 7), { QByteArray("x\x04y\0z", 5) });
    row("eye block, CR is content", '\x04', "\x02x\ry\x04\x02z\x04", { "x\ry", "z" });
}

void FramingTest::stream()
{
    QFETCH(char, endByte);
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArrayList, frames);

    // However the stream is cut into reads, the frames are the same.
    for (qsizetype cut = 0; cut <= bytes.size(); ++cut)
        QCOMPARE(framesOf(endByte, { bytes.first(cut), bytes.sliced(cut) }), frames);
}

void FramingTest::bound()
{
    constexpr int kLongest = 1048576;
    for (const int size : { kLongest, kLongest + 1, 3 * kLongest }) {
        for (const int readSize : { 4093, size }) {
            const QByteArray content(size, 'x');
            QByteArrayList reads{ "\x02" };
            for (int sent = 0; sent < size; sent += readSize)
                reads += content.mid(sent, readSize);
            // What follows a dropped frame is skipped up to the next start byte, its own end byte included.
            reads += QByteArrayList{ "\r", "noise\r\x02U0:VER:1\r" };
            const QByteArrayList kept(size > kLongest ? 0 : 1, content);
            QVERIFY2(framesOf('\r', reads) == kept + QByteArrayList{ "U0:VER:1" }, QByteArray::number(size));
        }
    }
}

void FramingTest::command_data()
{
    QTest::addColumn<StandardCommand>("command");
    QTest::addColumn<QByteArrayList>("answers"); // contents of the frames given to it
    QTest::addColumn<QByteArray>("fields");      // status, then the request, then the response

    const auto row = [](const char *name, StandardCommand::CommandStatus status, const QString &data,
                        const QByteArrayList &answers, const QByteArray &fields) {
        const StandardCommand command(nullptr, u"U0"_s, u"TRON"_s, data, status, StandardCommand::Set, 1000);
        QTest::newRow(name) << command << answers << fields;
    };
    using enum StandardCommand::CommandStatus;
    row("colons in the request", Queued, u"12:30"_s, {}, "2|\x02U0:TRON:12:30\r|U0|TRON|12:30||||");
    row("unsolicited", Received, u"OFF"_s, {}, "3|||||\x02U0:TRON:OFF\r|U0|TRON|OFF");
    row("ACK, request without data", Sent, {}, { "\x06" }, "5|\x02U0:TRON\r|U0|TRON|||||");
    row("NAK", Sent, u"OFF"_s, { "\x15" }, "6|\x02U0:TRON:OFF\r|U0|TRON|OFF||||");
    row("colons in the reply", Sent, {}, { "R1:TIME:12:30" },
        "5|\x02U0:TRON\r|U0|TRON||\x02R1:TIME:12:30\r|R1|TIME|12:30");
    row("reply without data", Sent, {}, { "R1:TIME:" }, "5|\x02U0:TRON\r|U0|TRON||\x02R1:TIME:\r|R1|TIME|");
    row("no answer", Sent, {}, { "U0:TRON", "TRON", "\x06\x06", "" }, "4|\x02U0:TRON\r|U0|TRON|||||");
    QTest::newRow("raw") << StandardCommand(nullptr, u"noise"_s, Unparsed, StandardCommand::Set) << QByteArrayList{}
                         << QByteArray("8|||||\x02noise\r|||");
}

void FramingTest::command()
{
    QFETCH(StandardCommand, command);
    QFETCH(QByteArrayList, answers);
    QFETCH(QByteArray, fields);

    for (const QByteArray &answer : answers)
        command.ResponseReceived(QString::fromLatin1(answer));
    const QStringList request{ command.commandText(), command.address(), command.mnemonic(), command.data() };
    const QStringList response{ command.responseText(), command.responseAddress(), command.responseMnemonic(),
                                command.responseData() };
    QCOMPARE((QString::number(command.status()) + u'|' + (request + response).join(u'|')).toLatin1(), fields);
}

QTEST_APPLESS_MAIN(FramingTest)
#include "tst_framing.moc"
