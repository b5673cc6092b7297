#include "channels/DmdChan.h"
#include "link/LinkGuard.h"
#include "support/CommandLinkBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Link = SerialPortController;
using enum SerialPortController::PORT_TYPE;

/// The frames of a start: what discovery queries, every setting, and the request for reports.
QByteArrayList reading(const QByteArrayList &before)
{
    return before + LinkBench::systemQueries() + LinkBench::receiverQueries("R1") + LinkBench::receiverQueries("R2") +
           QByteArrayList{ "U0:TRON:ON" };
}

} // namespace

/// Links whose cable is pulled and put back.
class LinkGuardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lostAndFound_data();
    void lostAndFound();
    void strayError();
    void lostDuringDiscovery_data();
    void lostDuringDiscovery();
    void lostBehindAnAnswer();
    void linksToTheClient();
    void eyeLink();
};

void LinkGuardTest::lostAndFound_data()
{
    QTest::addColumn<bool>("hasErrors"); // some versions of the serial library spin without reporting
    QTest::addRow("reported by the port") << true;
    QTest::addRow("silent") << false;
}

void LinkGuardTest::lostAndFound()
{
    QFETCH(const bool, hasErrors);
    CommandLinkBench bench;
    QSignalSpy allSettings(&bench.link, &Link::AllSettingsObtained);
    QVERIFY(bench.start());
    RcvrChan *const receiver = bench.receiver(1);
    bench.far.setAnswering(false);
    receiver->setFREQ(u"2260.5"_s);
    receiver->setIFBW(u"2"_s);
    QVERIFY(bench.far.waitForFrame("R1:FREQ:2260.5"));
    bench.far.send("\x02R1:FREQ:99"); // never ended
    QVERIFY(bench.link.port().waitForReadyRead(5000));

    QStringList signalled;
    connect(
        receiver, &Channel::SettingChanged, this,
        [&signalled](const QString &, const QString &mnemonic, const QString &data) { signalled += mnemonic + data; });
    bench.link.port().blockSignals(!hasErrors);
    bench.link.findChild<LinkGuard *>()->watch(); // restarts its timer
    bench.far.unplug();
    QVERIFY(waitUntil([&bench] { return bench.link.isLost(); }, hasErrors ? 250 : 600));
    QVERIFY(waitUntil([&signalled] { return signalled.size() == 2; }, 100));
    QCOMPARE(signalled, QStringList({ u"FREQ2250.5"_s, u"IFBW1"_s }));
    receiver->setFREQ(u"2270.5"_s); // while the link is lost, changes end at once
    QVERIFY(waitUntil([&signalled] { return signalled.size() == 3; }, 100));
    bench.link.port().blockSignals(false);

    bench.far.clear();
    bench.far.plug();
    bench.far.setValue("R2:FREQ", "2299.5"); // changed meanwhile
    QVERIFY(waitUntil([&bench] { return !bench.link.isLost(); }));
    bench.far.send("9\r");               // the end of a frame whose start was lost
    QVERIFY(bench.far.waitForFrames(2)); // the chassis still boots: the first two queries time out
    bench.far.setAnswering(true);
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QByteArrayList frames = bench.far.frames();
    while (frames.size() > 2 && frames[2].startsWith("U0:VER"))
        frames.removeAt(2);
    QCOMPARE(frames, reading({ "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7", "U0:CLST" }));
    QVERIFY(bench.idle());
    QCOMPARE(bench.receiver(2)->getFREQ(), u"2299.5"_s);
    QCOMPARE(receiver->getFREQ(), u"2250.5"_s);
    QVERIFY(!signalled.contains("FREQ999"_L1));
    QCOMPARE(allSettings.count(), 1);
    QCOMPARE(bench.link.channels().size(), 3);
}

/// What the serial library has buffered by then is read.
void LinkGuardTest::strayError()
{
    CommandLinkBench bench;
    QVERIFY(bench.start());
    QSerialPort &port = bench.link.port();
    port.blockSignals(true); // the library does not report them
    bench.far.sendFrame("R1:SSLV:-61");
    QVERIFY(waitUntil([&port] { return port.bytesAvailable() == 13; }));
    port.blockSignals(false);
    Q_EMIT port.errorOccurred(QSerialPort::ReadError);
    QVERIFY(waitUntil([&bench] { return bench.receiver(1)->getSSLV() == "-61"_L1; }));
    QVERIFY(!bench.link.isLost());
}

void LinkGuardTest::lostDuringDiscovery_data()
{
    QTest::addColumn<QByteArray>("lastFrame"); // the one that is in flight when the cable goes
    QTest::addColumn<QByteArrayList>("again");
    const QByteArrayList begin{ "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7", "U0:CLST" };
    QTest::addRow("version") << QByteArray("U0:VER") << reading(begin);
    QTest::addRow("cards") << QByteArray("U0:CLST") << QByteArrayList{ "U0:VER", "U0:VERTSKB" } + reading(begin);
    QTest::addRow("settings") << QByteArray("R2:AGCF") << reading(begin);
}

void LinkGuardTest::lostDuringDiscovery()
{
    QFETCH(const QByteArray, lastFrame);
    QFETCH(const QByteArrayList, again);
    CommandLinkBench bench;
    QSignalSpy allSettings(&bench.link, &Link::AllSettingsObtained);
    bench.far.ignore(lastFrame);
    bench.link.StartEstablishCommTmr(20, nullptr);
    QVERIFY(bench.far.waitForFrame(lastFrame));
    bench.far.unplug();
    QVERIFY(waitUntil([&bench] { return bench.link.isLost(); }, 600));
    bench.far.behave(lastFrame);
    bench.far.clear();
    QVERIFY(!waitUntil([&allSettings] { return allSettings.count() > 0; }, 50));

    // A chassis that boots for longer than the card list's retry gets version queries only.
    bench.far.setAnswering(lastFrame != "U0:CLST");
    bench.far.plug();
    QVERIFY(bench.far.waitForFrames(2));
    bench.far.setAnswering(true);
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QCOMPARE(bench.far.frames(), again);
    QCOMPARE(allSettings.count(), 1);
    QCOMPARE(bench.link.channels().size(), 3);
}

void LinkGuardTest::lostBehindAnAnswer()
{
    CommandLinkBench bench;
    QVERIFY(bench.start());
    auto *const guard = bench.link.findChild<LinkGuard *>();
    const auto pull = [&bench, guard] {
        bench.far.unplug();
        bench.far.clear();
        guard->check();
        bench.far.plug();
        return bench.link.isLost();
    };
    bench.far.ignore("U0:VER");
    QVERIFY(pull());
    QVERIFY(bench.far.waitForFrame("U0:VER"));
    bench.far.sendFrame("U0:VER:2.1");
    QVERIFY(bench.link.port().waitForReadyRead(1000)); // read, and not dispatched yet
    bench.far.behave("U0:VER");
    QVERIFY(pull());
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QVERIFY(bench.link.status().timeOuts < 5); // a lost link gets no queries
}

void LinkGuardTest::linksToTheClient()
{
    CommandLinkBench bench;
    QVERIFY(bench.start());
    Link remote(nullptr, REMOTE_LINK, {});
    Link status(nullptr, REMOTE_EYE_AND_STATUS_LINK, {});
    FarEnd &client = bench.bench.remote();
    FarEnd &statusClient = bench.bench.remoteEyeAndStatus();
    for (Link *link : { &remote, &status })
        link->GenerateChannelList(&bench.link);
    bench.system()->RemoteStatusTimeOut();
    QVERIFY(client.waitForFrame("U0:REMOTE?"));
    client.sendFrame("U0:REMOTE:1\x06");
    QVERIFY(bench.far.waitForFrame("U0:REMOTE:1"));

    bench.system()->RemoteStatusTimeOut();
    QVERIFY(waitUntil([&client] { return client.frames().count("U0:REMOTE?") == 2; }));
    client.send(QByteArray("\x02R1:IFBW?\r").repeated(20)); // all but the first still wait
    QVERIFY(remote.port().waitForReadyRead(5000));
    client.unplug();
    statusClient.unplug();
    remote.findChild<LinkGuard *>()->check();
    for (const Link *link : { &remote, &status })
        QVERIFY(waitUntil([link] { return link->isLost(); }, 600));
    QVERIFY(bench.far.waitForFrame("U0:REMOTE:0", 100)); // the presence query was not answered
    bench.far.sendFrame("R1:FREQ:2261.5");
    bench.far.sendFrame("R1:SSLV:-61");
    QVERIFY(bench.idle());

    client.clear();
    client.plug();
    statusClient.plug();
    for (const Link *link : { &remote, &status })
        QVERIFY(waitUntil([link] { return !link->isLost(); }));
    client.sendFrame("R1:SSLV?");
    bench.far.sendFrame("R1:FREQ:2262.5");
    bench.far.sendFrame("R1:SSLV:-62");
    QVERIFY(client.waitForFrame("R1:FREQ:2262.5"));
    QVERIFY(statusClient.waitForFrame("R1:SSLV:-62"));
    QVERIFY(client.waitForFrame("R1:SSLV:-61\x06") || client.frames().contains("R1:SSLV:-62\x06"));
    QVERIFY(!client.frames().contains("R1:FREQ:2261.5"));
    QVERIFY(!client.frames().contains("R1:IFBW:1\x06"));
    QVERIFY(!statusClient.frames().contains("R1:SSLV:-61"));
}

void LinkGuardTest::eyeLink()
{
    LinkBench bench;
    Link link(nullptr, EYE_CONST_LINK, {});
    QSignalSpy blocks(&link, &Link::RcvdEyeConstData);
    bench.eye().send("\x02"
                     "ED1SD00000");
    QVERIFY(link.port().waitForReadyRead(5000));
    bench.eye().unplug();
    QVERIFY(waitUntil([&link] { return link.isLost(); }, 600));
    bench.eye().plug();
    QVERIFY(waitUntil([&link] { return !link.isLost(); }));
    bench.eye().send("00001\x04\x02"
                     "ED1SD0000000002\x04");
    QVERIFY(waitUntil([&blocks] { return !blocks.isEmpty(); }));
    QCOMPARE(blocks.count(), 1);
}

QTEST_MAIN(LinkGuardTest)
#include "tst_link_guard.moc"
