#include "channels/DmdChan.h"
#include "support/CommandLinkBench.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Link = SerialPortController;
using enum SerialPortController::PORT_TYPE;

/// The frames of a start: what discovery asks, every setting, and the request that starts the reports.
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
    void lostDuringDiscovery_data();
    void lostDuringDiscovery();
    void switchedOffAndOn();
    void linksToTheClient();
    void eyeLink();
};

void LinkGuardTest::lostAndFound_data()
{
    QTest::addColumn<bool>("hasErrors"); // some versions of the serial library spin without a word
    QTest::addRow("told by the port") << true;
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

    QStringList told;
    connect(receiver, &Channel::SettingChanged, this,
            [&told](const QString &, const QString &mnemonic, const QString &data) { told += mnemonic + data; });
    bench.link.port().blockSignals(!hasErrors);
    bench.far.unplug();
    QVERIFY(waitUntil([&bench] { return bench.link.isLost(); }, 600));
    QVERIFY(waitUntil([&told] { return told.size() == 2; }, 100));
    QCOMPARE(told, QStringList({ u"FREQ2250.5"_s, u"IFBW1"_s }));
    receiver->setFREQ(u"2270.5"_s); // changes end at once while there is nobody
    QVERIFY(waitUntil([&told] { return told.size() == 3; }, 100));
    bench.link.port().blockSignals(false);

    bench.far.clear();
    bench.far.plug();
    bench.far.setValue("R2:FREQ", "2299.5"); // changed meanwhile
    QVERIFY(bench.far.waitForFrames(2));     // the chassis still boots: asked again, the first two time out
    bench.far.setAnswering(true);
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QByteArrayList frames = bench.far.frames();
    while (frames.size() > 2 && frames[2].startsWith("U0:VER"))
        frames.removeAt(2);
    QCOMPARE(frames, reading({ "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7" }));
    QVERIFY(bench.idle());
    QCOMPARE(bench.receiver(2)->getFREQ(), u"2299.5"_s);
    QCOMPARE(receiver->getFREQ(), u"2250.5"_s);
    QCOMPARE(allSettings.count(), 1);
    QCOMPARE(bench.link.channels().size(), 3);
}

void LinkGuardTest::lostDuringDiscovery_data()
{
    QTest::addColumn<QByteArray>("lastFrame"); // the one that is in flight when the cable goes
    QTest::addColumn<QByteArrayList>("again");
    const QByteArrayList version{ "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7" };
    QTest::addRow("version") << QByteArray("U0:VER") << reading(version + QByteArrayList{ "U0:CLST" });
    QTest::addRow("cards") << QByteArray("U0:CLST") << reading(version + QByteArrayList{ "U0:CLST" });
    QTest::addRow("settings") << QByteArray("R2:AGCF") << reading(version);
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

    bench.far.plug();
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QCOMPARE(bench.far.frames(), again);
    QCOMPARE(allSettings.count(), 1);
    QCOMPARE(bench.link.channels().size(), 3);
}

/// On a line that stays well nothing but silence tells.
void LinkGuardTest::switchedOffAndOn()
{
    CommandLinkBench bench;
    QVERIFY(bench.start());
    const auto state = [&bench] { return bench.link.status().state; };
    bench.far.clear();
    QVERIFY(!waitUntil([&] { return !bench.far.frames().isEmpty(); }, 11'500)); // it may have nothing to report
    bench.far.sendFrame("R1:SSLV:-61");
    QVERIFY(bench.idle());
    bench.far.clear();
    bench.far.setAnswering(false);
    QVERIFY(waitUntil([&] { return state() == LinkStatus::State::Waiting; }, 15'000));
    bench.far.setAnswering(true);
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QVERIFY(bench.far.frames().constLast() == "U0:TRON:ON" && bench.far.frames().contains("R2:FREQ"));
    QVERIFY(waitUntil([&] { return state() == LinkStatus::State::Live; }));
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
    client.unplug();
    statusClient.unplug();
    QVERIFY(waitUntil([&] { return remote.isLost() && status.isLost(); }, 600));
    QVERIFY(bench.far.waitForFrame("U0:REMOTE:0", 100)); // nobody has answered the question
    bench.far.sendFrame("R1:FREQ:2261.5");
    bench.far.sendFrame("R1:SSLV:-61");
    QVERIFY(bench.idle());

    client.clear();
    client.plug();
    statusClient.plug();
    QVERIFY(waitUntil([&] { return !remote.isLost() && !status.isLost(); }));
    client.sendFrame("R1:SSLV?");
    bench.far.sendFrame("R1:FREQ:2262.5");
    bench.far.sendFrame("R1:SSLV:-62");
    QVERIFY(client.waitForFrame("R1:FREQ:2262.5") && statusClient.waitForFrame("R1:SSLV:-62"));
    QVERIFY(client.waitForFrame("R1:SSLV:-61\x06") || client.frames().contains("R1:SSLV:-62\x06"));
    QVERIFY(!client.frames().contains("R1:FREQ:2261.5"));
    QVERIFY(!statusClient.frames().contains("R1:SSLV:-61"));
}

void LinkGuardTest::eyeLink()
{
    LinkBench bench;
    Link link(nullptr, EYE_CONST_LINK, {});
    QSignalSpy blocks(&link, &Link::RcvdEyeConstData);
    bench.eye().send("\x02"
                     "ED1SD00000");
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
