#include "channels/DmdChan.h"
#include "channels/SpectralChan.h"
#include "link/LinkGuard.h"
#include "support/CommandLinkBench.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

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
    void readInBackground();
    void strayError();
    void lostDuringDiscovery_data();
    void lostDuringDiscovery();
    void switchedOffAndOn();
    void awayWhileRead_data();
    void awayWhileRead();
    void answersLost_data();
    void answersLost();
    void answersLostAgain();
    void lostBehindAnAnswer();
    void spectraGoOn();
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
    QVERIFY(bench.link.port().waitForReadyRead(5000));

    QStringList told;
    connect(receiver, &Channel::SettingChanged, this,
            [&told](const QString &, const QString &mnemonic, const QString &data) { told += mnemonic + data; });
    bench.link.port().blockSignals(!hasErrors);
    bench.link.findChild<LinkGuard *>()->watch(); // its time begins anew
    bench.far.unplug();
    QVERIFY(waitUntil([&bench] { return bench.link.isLost(); }, hasErrors ? 250 : 600));
    QVERIFY(waitUntil([&told] { return told.size() == 2; }, 100));
    QCOMPARE(told, QStringList({ u"FREQ2250.5"_s, u"IFBW1"_s }));
    receiver->setFREQ(u"2270.5"_s); // changes end at once while there is nobody
    QVERIFY(waitUntil([&told] { return told.size() == 3; }, 100));
    bench.link.port().blockSignals(false);

    bench.far.clear();
    bench.far.plug();
    bench.far.setValue("R2:FREQ", "2299.5"); // changed meanwhile
    QVERIFY(waitUntil([&bench] { return !bench.link.isLost(); }));
    bench.far.send("9\r");               // the end of a frame of which nobody has the beginning
    QVERIFY(bench.far.waitForFrames(2)); // the chassis still boots: asked again, the first two time out
    bench.far.setAnswering(true);
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QByteArrayList frames = bench.far.frames();
    while (frames.size() > 2 && frames[2].startsWith("U0:VER"))
        frames.removeAt(2);
    QCOMPARE(frames, reading({ "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7", "U0:CLST" }));
    QVERIFY(bench.idle());
    QCOMPARE(bench.receiver(2)->getFREQ(), u"2299.5"_s);
    QCOMPARE(receiver->getFREQ(), u"2250.5"_s);
    QVERIFY(!told.contains("FREQ999"_L1));
    QCOMPARE(allSettings.count(), 1);
    QCOMPARE(bench.link.channels().size(), 3);
}

/// What the operator does while a chassis that is back is read again goes first, though not for ever.
void LinkGuardTest::readInBackground()
{
    CommandLinkBench bench;
    QVERIFY(bench.start());
    bench.far.unplug();
    bench.link.findChild<LinkGuard *>()->check();
    bench.far.clear();
    bench.far.setValue("U0:CLST", bench.far.value("U0:CLST") + ",0105 MPU 1.4 COMBINER A3 X");
    bench.far.setValue("R1:NAME", "North");
    for (const char *key : { "R1:NAME", "R1:FREQ" })
        bench.far.ignore(key);
    bench.far.plug();
    QVERIFY(bench.far.waitForFrame("R1:NAME")); // its answer is lost
    bench.far.behave("R1:NAME");
    QVERIFY(bench.far.waitForFrame("R1:FREQ"));
    const qsizetype mark = bench.far.frames().size();
    QVERIFY(!bench.link.status().hasOtherCards); // told once
    const LinkStatus status = bench.link.status();
    QCOMPARE(status.state, LinkStatus::State::Reading);
    QCOMPARE(status.settingsRead,
             LinkBench::systemQueries().size() + LinkBench::receiverQueries("R1").indexOf("R1:FREQ") + 1);
    QCOMPARE(status.settingsAsked, reading({}).size() - 1);
    for (const QString &bandwidth : u"2 3 0 2"_s.split(u' '))
        bench.receiver(2)->setIFBW(bandwidth);
    bench.receiver(2)->setAGCT(u"3"_s);
    bench.receiver(2)->setAFC(bench.receiver(2)->getAFC()); // a field that was only left
    bench.far.behave("R1:FREQ");
    bench.far.sendFrame("R1:FREQ:2251.5");
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QCOMPARE(bench.far.framesSince(mark).first(6),
             "R2:IFBW:2 R2:IFBW:3 R2:IFBW:0 R2:IFBW:2 R1:IFLS R2:AGCT:3"_ba.split(' '));
    QVERIFY(bench.idle());
    QCOMPARE(bench.receiver(1)->getNAME(), u"North"_s);
    QCOMPARE(bench.receiver(1)->getFREQ(), u"2251.5"_s);
    QCOMPARE(bench.receiver(2)->getIFBW(), u"2"_s);
    QVERIFY(!bench.far.frames().contains("R2:AFC:1"));
    QCOMPARE(bench.far.frames().count("R1:NAME"), 2);
    QVERIFY(waitUntil([&bench] { return bench.link.status().hasOtherCards; }));
    QCOMPARE(bench.link.status().state, LinkStatus::State::Live);
}

/// What the serial library has taken in by then is read.
void LinkGuardTest::strayError()
{
    CommandLinkBench bench;
    QVERIFY(bench.start());
    QSerialPort &port = bench.link.port();
    port.blockSignals(true); // the library forgets to tell
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

    // A chassis that still boots for longer than a card list is waited for is asked for its version alone.
    bench.far.setAnswering(lastFrame != "U0:CLST");
    bench.far.plug();
    QVERIFY(bench.far.waitForFrames(2));
    bench.far.setAnswering(true);
    QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    QCOMPARE(bench.far.frames(), again);
    QCOMPARE(allSettings.count(), 1);
    QCOMPARE(bench.link.channels().size(), 3);
}

/// On a line that stays well nothing but silence tells.
void LinkGuardTest::switchedOffAndOn()
{
    using State = LinkStatus::State;
    CommandLinkBench quiet; // it may have nothing to report
    CommandLinkBench unheard;
    unheard.far.ignore("U0:TRON");
    CommandLinkBench refused;
    refused.far.refuse("U0:TRON");
    CommandLinkBench lacking; // it reports all the same
    for (const char *key : { "U0:TRON", "R1:IFBW", "R1:AGCF" })
        lacking.far.ignore(key);
    CommandLinkBench silent;
    CommandLinkBench busy;
    for (CommandLinkBench *bench : { &quiet, &lacking, &unheard, &refused, &silent, &busy })
        QVERIFY(bench->start());
    for (CommandLinkBench *bench : { &lacking, &silent, &busy })
        bench->far.sendFrame("R1:SSLV:-61");
    for (CommandLinkBench *bench : { &quiet, &lacking, &unheard, &refused, &silent, &busy }) {
        QVERIFY(bench->idle());
        bench->far.clear();
    }
    LinkBench cards; // with a self-test's reading
    FarEnd &card = cards.spectral();
    card.setAnswering(true);
    Link spectral(nullptr, SPECTRAL_LINK, {});
    spectral.StartEstablishCommTmr(20, nullptr);
    QVERIFY(card.waitForFrame("U0:TRON:ON", 20'000));
    card.sendFrame("S1:RTMP:36");
    silent.far.setAnswering(false);
    card.clear();
    int sets = 0;
    const auto work = [&] { // answers, settings and what a booting chassis chatters are no reports
        busy.far.sendFrame("R1:SLPA:" + QByteArray::number(sets % 2));
        busy.receiver(1)->setFREQ(QString::number(2250 + ++sets % 10));
        busy.far.sendFrame("U0:BOOT:1");
        lacking.far.sendFrame("R1:SSLV:-61");
    };
    QTimer worker;
    connect(&worker, &QTimer::timeout, this, work);
    worker.start(1000);
    QVERIFY(waitUntil([&] { return silent.link.status().isSilent() && busy.link.status().isSilent(); }, 8000));
    QVERIFY(waitUntil([&] { return silent.link.status().state == State::Waiting; }, 8000));
    silent.far.setAnswering(true);
    unheard.far.behave("U0:TRON");
    for (CommandLinkBench *bench : { &unheard, &refused, &silent, &busy }) {
        QVERIFY(bench->far.waitForFrame("U0:TRON:ON", 8000));
        QVERIFY(bench->far.frames().contains("R2:FREQ"));
        QVERIFY(waitUntil([bench] { return bench->link.status().state == State::Live; }));
        QVERIFY(!bench->link.status().isSilent());
    }
    QVERIFY(card.waitForFrame("U0:TRON:ON", 8000));
    QVERIFY(sets > 9 && quiet.far.frames().isEmpty() && lacking.far.frames().isEmpty());
}

void LinkGuardTest::awayWhileRead_data()
{
    QTest::addColumn<int>("unanswered");
    QTest::addColumn<QByteArray>("silent");
    QTest::addColumn<int>("readings");
    QTest::addRow("one answer lost") << 1 << QByteArray() << 1;
    QTest::addRow("away for a while") << 3 << QByteArray() << 2;
    QTest::addRow("away until the end") << 1000 << QByteArray() << 2;
    QTest::addRow("away for a while, and settings that the chassis does not have") << 3 << "R2:POLA R2:POLB"_ba << 2;
    QTest::addRow("settings that the chassis does not have") << 3 << "R1:FREQ R1:IFBW R1:IFLS R1:NAME"_ba << 1;
}

void LinkGuardTest::awayWhileRead()
{
    QFETCH(const int, unanswered);
    QFETCH(const QByteArray, silent);
    QFETCH(const int, readings);
    CommandLinkBench bench;
    QSignalSpy allSettings(&bench.link, &Link::AllSettingsObtained);
    for (const QByteArray &key : silent.split(' '))
        bench.far.ignore(key);
    bench.far.ignore("R1:FREQ");
    bench.open();
    QVERIFY(bench.far.waitForFrame("R1:FREQ"));
    bench.far.setAnswering(false);
    for (int i = 0; i < unanswered && !bench.far.frames().contains("U0:TRON:ON"); ++i) {
        QVERIFY(waitUntil([&bench] { return bench.link.txmtCmdQueue().isAwaitingAnswer(); }));
        if (i + 1 == unanswered)
            bench.far.setAnswering(true);
        bench.link.StopTimeOutTmr();
        bench.link.TimeOutTmr_Tick();
        QTest::qWait(1);
    }
    if (!silent.contains("R1:FREQ"))
        bench.far.behave("R1:FREQ");
    bench.far.setAnswering(true);
    QVERIFY(waitUntil([&] { return bench.far.frames().count("U0:TRON:ON") == readings; }, 20'000) && bench.idle());
    QCOMPARE(bench.receiver(1)->getFREQ(), !silent.contains("R1:FREQ") && readings == 2 ? u"2250.5"_s : u"Unknown"_s);
    QCOMPARE(bench.link.status().state, LinkStatus::State::Live);
    QCOMPARE(allSettings.count(), 1);
    QVERIFY(!waitUntil([&] { return bench.far.frames().count("U0:TRON:ON") > readings; }, 1500));
}

void LinkGuardTest::answersLost_data()
{
    QTest::addColumn<QByteArray>("lost"); // as often as it stands there
    QTest::addRow("behind the version") << "U0:VERTSKB U0:SYSID U0:CLST U0:NAME U0:SLAVE"_ba;
    QTest::addRow("the card list's") << "U0:CLST"_ba;
    QTest::addRow("two in a row, and again the one that tells") << "R1:SLPA R1:SLPB R1:SLPB"_ba;
}

/// Whatever a chassis that is back has left unanswered is known in the end.
void LinkGuardTest::answersLost()
{
    QFETCH(const QByteArray, lost);
    CommandLinkBench bench;
    QVERIFY(bench.start());
    bench.far.unplug();
    bench.link.findChild<LinkGuard *>()->check();
    for (const auto &[key, value] :
         { std::pair("U0:CLST", "0103 MPU 2.3 TUNER A1 X"), std::pair("U0:NAME", "Other"), std::pair("R1:SLPA", "2") })
        bench.far.setValue(key, value);
    QByteArrayList left = lost.split(' ');
    for (const QByteArray &key : left)
        bench.far.ignore(key);
    bench.far.setHandler([&](const QByteArray &frame) {
        const QByteArray key = frame.split(':').first(2).join(':');
        if (!left.removeOne(key))
            bench.far.behave(key);
    });
    bench.far.plug();
    QVERIFY(waitUntil([&] { return bench.link.status().hasOtherCards; }, 20'000));
    QVERIFY(waitUntil([&] { return bench.link.status().state == LinkStatus::State::Live; }, 20'000));
    QVERIFY(waitUntil([&] { return bench.receiver(1)->getSLPA() == "2"_L1; }, 5000));
    QCOMPARE(bench.system()->getNAME(), u"Other"_s);
}

/// A line that loses answers each time does not have the chassis read without end.
void LinkGuardTest::answersLostAgain()
{
    CommandLinkBench bench;
    QVERIFY(bench.start());
    bench.far.unplug();
    bench.link.findChild<LinkGuard *>()->check();
    bench.far.plug();
    bench.far.setValue("R1:SLPA", "2");
    for (int reading = 0; reading < 2; ++reading) {
        bench.far.clear();
        QVERIFY(bench.far.waitForFrame("U0:VER", 10'000));
        for (const char *key : { "R1:SLPA", "R1:SLPB" })
            bench.far.ignore(key);
        QVERIFY(bench.far.waitForFrame("R1:POLA", 10'000));
        for (const char *key : { "R1:SLPA", "R1:SLPB" })
            bench.far.behave(key);
        QVERIFY(bench.far.waitForFrame("U0:TRON:ON"));
    }
    bench.far.clear();
    QVERIFY(!waitUntil([&] { return bench.far.frames().contains("U0:VER"); }, 1500));
    QCOMPARE(bench.receiver(1)->getSLPA(), u"2"_s);
    QCOMPARE(bench.link.status().state, LinkStatus::State::Live);
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
    QVERIFY(bench.link.status().timeOuts < 5); // nothing is asked of a link that is gone
}

void LinkGuardTest::spectraGoOn()
{
    LinkBench bench;
    FarEnd &far = bench.spectral();
    far.setAnswering(true);
    Link link(nullptr, SPECTRAL_LINK, {});
    link.StartEstablishCommTmr(20, nullptr);
    QVERIFY(far.waitForFrame("U0:TRON:ON", 10'000));
    auto *const second = qobject_cast<SpectralChan *>(link.channels().value(2));
    auto *const third = qobject_cast<SpectralChan *>(link.channels().value(3));
    second->setData(u"1"_s);
    QVERIFY(waitUntil([second] { return second->getDATA() == u"1"; }));
    far.unplug();
    QVERIFY(waitUntil([&link] { return link.isLost(); }, 600));
    far.clear();
    for (const char *key : { "U0:VER", "U0:NAME" })
        far.ignore(key);
    far.plug();
    QVERIFY(far.waitForFrame("U0:VER", 10'000));
    third->setData(u"1"_s);
    far.sendFrame("U0:VER:2.1");
    QVERIFY(far.waitForFrame("U0:NAME", 10'000));
    second->setData(u"0"_s); // no more of them, asked for while it is read again
    QVERIFY(far.waitForFrame("U0:TRON:ON", 10'000));
    QByteArrayList data = far.frames();
    data.removeIf([](const QByteArray &frame) { return !frame.contains(":DATA:"); });
    QCOMPARE(data, QByteArrayList({ "SP3:DATA:1", "SP1:DATA:0", "SP2:DATA:1", "SP2:DATA:0" }));
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
    QVERIFY(!client.frames().contains("R1:FREQ:2261.5") && !client.frames().contains("R1:IFBW:1\x06"));
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
