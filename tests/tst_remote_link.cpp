#include "link/LinkGuard.h"
#include "support/RemoteLinksBench.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int kLong = 600'000; // ms; no test waits for it
const QByteArrayList kChassis{ LinkBench::kReceivers, LinkBench::kOlderDemodulators };

/// Sends messages to the client, and keeps how they end: status and response.
struct Sender : RcvrChan
{
    explicit Sender(SerialPortController *link) : RcvrChan(nullptr, u"1"_s, link) {}

    using RcvrChan::ProcessCmd;
    void ProcessCmd(const RemoteCommand &message) override
    {
        heard += QByteArray::number(message.status()) + ' ' + message.responseData().toLatin1();
    }

    QByteArray heard;
};

} // namespace

/// The link to the remote client: how messages to it end, and a client that is slow or floods.
class RemoteLinkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void renewedValues();
    void endOfMessage_data();
    void endOfMessage();
    void olderAnswer_data();
    void olderAnswer();
    void staleValue();
    void presenceAskedRegularly();
    void presenceNotEvenAsked();
    void clientThatDoesNotRead();
    void clientThatAsksOnly();
    void clientThatFloods();
};

void RemoteLinkTest::endOfMessage_data()
{
    QTest::addColumn<QByteArrayList>("texts"); // what is sent, how the client ends it, and what its sender hears
    const auto row = [](const QByteArrayList &texts) {
        QTest::addRow("%s", texts.join(' ').toPercentEncoding().constData()) << texts;
    };
    row({ "R1:FREQ?", "R1:FREQ:7\x06", "5 7" });
    row({ "R1:FREQ?", "R1:FREQ:\x06", "5 " });
    row({ "R1:FREQ?", "R1:FREQ:a:b\x06", "5 a:b" });
    row({ "R1:FREQ?", "R1:FREQ:why\x15", "6 why" });
    row({ "R1:FREQ?", "R2:FREQ:7\x06", "5 END" }); // "END" follows in any case
    row({ "R1:FREQ?", "R1:AFC:7\x15", "5 END" });
    row({ "R1:FREQ?", "R1:FREQ\x06", "5 END" });
    row({ "R1:FREQ?", "", "7 " }); // the time is over
    row({ "R1:FREQ:3", "R1:FREQ:7\x06", "5 7" });
    row({ "R1:FREQ:3", "R1:FREQ:7\x15", "" });
    row({ "R1:FREQ:3", "R1:AFC:7\x06", "5 END" });
    row({ "R1:FREQ:3", "", "" });
}

void RemoteLinkTest::endOfMessage()
{
    QFETCH(QByteArrayList, texts);

    RemoteLinksBench bench(kChassis);
    Sender sender(&bench.link);
    if (texts[0].endsWith('?'))
        bench.push(&sender, u"R1"_s, u"FREQ"_s, kLong, true);
    else
        bench.push(&sender, u"R1"_s, u"FREQ"_s, u"3"_s, kLong, true);
    bench.push(&sender, u"R1"_s, u"AFCM"_s, u"4"_s, 1, RemoteCommand::Forwarded, true);
    QVERIFY(bench.client.waitForFrame(texts[0]));
    if (texts[1].isEmpty())
        bench.remote.StartTimeOutTmr(1);
    else
        bench.client.sendFrame(texts[1]);
    QVERIFY(texts[2] == "5 END" || bench.client.waitForFrame("R1:AFCM:4"));
    const RemoteLinksBench::Record record = bench.play(u"client R1:FREQ:END\x06"_s);
    QCOMPARE(sender.heard, texts[2]);
    QCOMPARE(record.client, (QStringList{ QString::fromLatin1(texts[0]), u"R1:AFCM:4"_s }));
    QCOMPARE(record.card, QStringList());
}

void RemoteLinkTest::olderAnswer_data()
{
    QTest::addColumn<QByteArray>("asked");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QByteArray>("set");
    const auto row = [](const QByteArray &asked, const QByteArray &answer, const QByteArray &set) {
        QTest::addRow("%s", set.constData()) << asked << asked + answer << set;
    };
    row("R1:FREQ", ":2251.5", "R1:FREQ:2260.5");
    row("U0:SDM1", ":1", "D1:DSRC:2");
    row("D1:DQMON", ":0", "D1:DDQM:1");
    row("D1:RDRG:82", "0001", "D1:DFWD:0100"); // in another register, which has changed unnoticed
    row("SP1:SPAN", ":5", "SP1:SPAN:8");
    row("S1:CFRQ", ":5", "S1:CFRQ:8");
}

/// What the card was asked before the client's set is not the outcome of that.
void RemoteLinkTest::olderAnswer()
{
    QFETCH(const QByteArray, asked);
    QFETCH(const QByteArray, answer);
    QFETCH(const QByteArray, set);

    RemoteLinksBench bench(kChassis + QByteArrayList{ LinkBench::kSpectral });
    FarEnd &card = bench.cardOf(QString::fromLatin1(asked));
    const QByteArray key = asked.split(':').first(2).join(':');
    card.ignore(key);
    card.setValue("D1:RDRG:85", "ebff");
    for (Channel *channel : (&card == &bench.far ? bench.link : *bench.spectral).channels())
        channel->RequestSettings();
    QVERIFY(card.waitForFrame(asked, 20'000));
    bench.client.sendFrame(set);
    QVERIFY(bench.client.waitForFrame(set + '\x06'));
    card.behave(key);
    card.sendFrame(answer);
    const RemoteLinksBench::Record record = bench.play(u"card R1:XXXX:1"_s);
    const QString pushed = QString::fromLatin1(set);
    QCOMPARE((record.client + record.status).filter(pushed.section(u':', 0, 1)),
             QStringList({ pushed + u'+', pushed }));
}

/// A set of the value held is sent while the card may hold another one by now. What is written beside others waits for
/// these to be read.
void RemoteLinkTest::staleValue()
{
    RemoteLinksBench bench({ LinkBench::kReceivers, LinkBench::kRegisterDemodulators });
    bench.far.unplug();
    bench.link.findChild<LinkGuard *>()->check();
    bench.far.ignore("U0:NAME");
    bench.far.plug();
    QVERIFY(bench.far.waitForFrame("U0:NAME", 10'000));
    bench.far.setValue("D1:RDRG:82", "0005");
    bench.far.ignore("D2:RDRG");
    for (const char *set : { "D1:DDQM:1", "D2:DDQM:1", "R1:AGCT:1" })
        bench.client.sendFrame(set);
    QVERIFY(bench.far.waitForFrame("R1:AGCT:1"));
    QVERIFY(bench.far.waitForFrame("D1:CDRG:820035"));
    QVERIFY(bench.client.waitForFrame("D2:DDQM:0"));
    bench.far.behave("D2:RDRG");
    QVERIFY(!bench.far.bytes().contains("D2:CDRG"));
    QVERIFY(!bench.client.frames().contains("D1:DDQM:0"));
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON", 10'000));
    QVERIFY(bench.settle());
    bench.far.clear();
    QCOMPARE(bench.play(u"client R1:AGCT:1"_s).card, QStringList());
}

void RemoteLinkTest::presenceAskedRegularly()
{
    RemoteLinksBench bench({ LinkBench::kReceivers });
    for (const int shortest : { 4500, 1850 }) {
        QElapsedTimer clock;
        clock.start();
        QVERIFY(bench.client.waitForFrame("U0:REMOTE?", 30'000));
        QVERIFY2(clock.elapsed() >= shortest, qPrintable(QString::number(clock.elapsed())));
        bench.client.clear();
        bench.client.sendFrame("U0:REMOTE:1\x06");
    }
}

void RemoteLinkTest::presenceNotEvenAsked()
{
    RemoteLinksBench bench(kChassis);
    bench.play(u"ask U0:REMOTE:1\x06"_s);
    bench.push(nullptr, u"R1"_s, u"FREQ"_s, kLong, true);
    QVERIFY(bench.client.waitForFrame("R1:FREQ?"));
    bench.system()->RemoteStatusTimeOut();
    QCOMPARE(bench.system()->getREMOTE(), u"1"_s);
    bench.system()->RemoteStatusTimeOut();
    QCOMPARE(bench.remote.txmtRemoteCmdQueue().waitingCount(), 1);
    bench.client.sendFrame("R1:FREQ:1\x06");
    QCOMPARE(bench.play(u"client U0:REMOTE:1\x06"_s).card.value(0), u"U0:REMOTE:0"_s);
}

void RemoteLinkTest::clientThatDoesNotRead()
{
    constexpr int kReports = 4000;
    const QByteArrayList keys{
        "R1:FREQ:", "R2:FREQ:", "R1:AFC:", "D1:FOFF:", "D2:FOFF:", "D1:RDRG:40", "D1:ZZZZ:" + QByteArray(100, 'z')
    };
    RemoteLinksBench bench(kChassis);
    bench.client.setReading(false);
    bench.statusClient.setReading(false);
    QStringList answers;
    std::size_t most = 0, mostStatus = 0;
    for (int i = 1; i <= kReports; ++i) {
        const QByteArray n = QByteArray::number(i);
        for (const QByteArray &key : keys)
            bench.far.sendFrame(key + n);
        if (i % 20 != 0)
            continue;
        bench.client.sendFrame("X:" + n + '?');
        answers += u"X:%1:-"_s.arg(i);
        QVERIFY(bench.idle());
        most = qMax(most, bench.remote.txmtRemoteCmdQueue().waitingCount());
        mostStatus = qMax(mostStatus, bench.status.txmtRemoteCmdQueue().waitingCount());
    }
    // 256 before anything is dropped, 128 KiB of series, the values and the answers
    QVERIFY2(most > 1000 && most < 256 + 3500 + 210, qPrintable(QString::number(most)));
    QVERIFY2(mostStatus > 200 && mostStatus < 260, qPrintable(QString::number(mostStatus)));

    bench.client.setReading(true);
    bench.statusClient.setReading(true);
    const auto [card, pushed, pushedStatus] = bench.play(u"client X:0?"_s);
    for (const QString &key : { u"R1:FREQ:"_s, u"R2:FREQ:"_s, u"R1:AFC:"_s, u"D1:RDRG:40"_s, u"D1:FOFF:"_s })
        QCOMPARE((pushed + pushedStatus).filter(key).constLast(), key + QString::number(kReports));
    QCOMPARE(pushed.filter(u"X:"_s), answers << u"X:0:-"_s);
    const QStringList series = pushed.filter(u"D1:ZZZZ:"_s);
    QVERIFY2(series.size() > 500 && series.size() < kReports, qPrintable(QString::number(series.size())));
    for (int i = 0; i < 500; ++i)
        QVERIFY(series.at(series.size() - 1 - i).endsWith(u'z' + QString::number(kReports - i)));
}

void RemoteLinkTest::clientThatAsksOnly()
{
    constexpr int kQueries = 5000;
    RemoteLinksBench bench({ LinkBench::kReceivers });
    bench.client.setReading(false);
    std::size_t most = 0;
    int ticksFull = 0;
    QTimer watch; // lets the client read long after the head has stopped to
    connect(&watch, &QTimer::timeout, this, [&] {
        most = qMax(most, bench.remote.txmtRemoteCmdQueue().answerCount());
        ticksFull += most >= 256 ? 1 : 0;
        bench.client.setReading(ticksFull > 50);
    });
    watch.start(1);
    QStringList answers;
    for (int i = 0; i < kQueries; ++i) {
        bench.client.sendFrame("X:" + QByteArray::number(i) + '?');
        answers += u"X:%1:-"_s.arg(i);
    }
    QVERIFY(bench.client.waitForFrame("X:4999:\x15", 120'000));
    QVERIFY2(most >= 256 && most < 270, qPrintable(QString::number(most)));
    QCOMPARE(RemoteLinksBench::taken(bench.client), answers);
}

void RemoteLinkTest::clientThatFloods()
{
    RemoteLinksBench bench({ LinkBench::kReceivers });
    for (int i = 1; i <= 300; ++i)
        bench.client.sendFrame("R1:AFCM:" + QByteArray::number(i));
    QVERIFY(bench.far.waitForFrame("R1:AFCM:20"));
    const qsizetype before = bench.far.frames().size();
    bench.system()->setTMRF(u"0"_s);
    QVERIFY(bench.far.waitForFrame("R1:AFCM:300", 30'000));
    const qsizetype waited = bench.far.frames().indexOf("U0:TMRF:0") - before;
    QVERIFY2(waited >= 0 && waited <= 12, qPrintable(QString::number(waited)));
}

void RemoteLinkTest::renewedValues()
{
    RemoteTransmitQueue queue;
    const auto append = [&queue](const QString &mnemonic, const QString &data, bool isReplaceable) {
        auto *const message = new RemoteCommand(nullptr, u"D1"_s, mnemonic, data, true);
        message->setReplaceable(isReplaceable);
        queue.appendForSlowClient(message);
    };
    const auto next = [&queue] {
        queue.setReadyToSend();
        (void)queue.takeNext();
        const std::unique_ptr<RemoteCommand> message(queue.takeInFlight());
        return message ? message->mnemonic() + message->data() : QString();
    };
    // Two blocks come for each that goes, and with each a new reading: it goes out all the same, and the newest.
    QStringList readings;
    for (int i = 0; i < 200; ++i) {
        append(u"EYEP"_s, QString(2048, u'0'), false);
        append(u"EYEP"_s, QString(2048, u'1'), false);
        append(u"DLCK"_s, QString::number(i), true);
        if (const QString sent = next(); !sent.startsWith(u"EYEP"_s))
            readings += sent;
    }
    QVERIFY2(readings.size() > 3 && readings.size() < 20, qPrintable(readings.join(u' ')));
    while (queue.waitingCount() > 0)
        (void)next();
    // Behind the answer about it, a value stays behind it.
    append(u"DMOD"_s, u"1"_s, true);
    queue.append(new RemoteCommand(nullptr, u"D1"_s, u"DMOD"_s, u"1"_s, true, true));
    append(u"DMOD"_s, u"2"_s, true);
    QCOMPARE((QStringList{ next(), next(), next() }), QStringList({ u"DMOD1"_s, u"DMOD2"_s, QString() }));
}

QTEST_MAIN(RemoteLinkTest)
#include "tst_remote_link.moc"
