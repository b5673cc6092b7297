#include "channels/SpectralChan.h"
#include "link/LinkGuard.h"
#include "link/RemoteCommand.h"
#include "support/CommandLinkBench.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

using Link = SerialPortController;
using enum SerialPortController::PORT_TYPE;

} // namespace

/// A chassis that is back: all its settings are re-read over a real port, whatever happens meanwhile.
class RepeatedReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readInBackground();
    void switchedOffAndOn();
    void awayWhileRead();
    void answersLost_data();
    void answersLost();
    void spectraGoOn();
};

/// The operator's changes go ahead of a re-read, which never starves.
void RepeatedReadingTest::readInBackground()
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
    QVERIFY(!bench.link.status().hasOtherCards); // received only once so far
    const LinkStatus status = bench.link.status();
    QCOMPARE(status.state, LinkStatus::State::Reading);
    QCOMPARE(status.settingsRead,
             LinkBench::systemQueries().size() + LinkBench::receiverQueries("R1").indexOf("R1:FREQ") + 1);
    QCOMPARE(status.settingsAsked, LinkBench::systemQueries().size() + 2 * LinkBench::receiverQueries("R1").size());
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

/// On a healthy line only missing reports show that a chassis was off. Answers, reported settings and the output of a
/// booting chassis are no reports.
void RepeatedReadingTest::switchedOffAndOn()
{
    using State = LinkStatus::State;
    CommandLinkBench changing; // lists other cards when it is back
    QVERIFY(changing.start());
    changing.far.unplug();
    changing.link.findChild<LinkGuard *>()->check();
    changing.far.ignore("U0:CLST");
    changing.far.clear();
    changing.far.plug();
    const auto cardLists = [&changing] { return changing.far.frames().count("U0:CLST"); };
    QVERIFY(waitUntil([&] { return cardLists() == 3; }, 10'000)); // the last of five precedes the end of the silence
    CommandLinkBench silent;
    CommandLinkBench busy;
    for (CommandLinkBench *bench : { &silent, &busy }) {
        QVERIFY(bench->start());
        bench->far.sendFrame("R1:SSLV:-61");
        QVERIFY(bench->idle());
        bench->far.clear();
    }
    silent.far.setAnswering(false);
    int sets = 0;
    QTimer worker;
    connect(&worker, &QTimer::timeout, this, [&] {
        busy.far.sendFrame("R1:SLPA:" + QByteArray::number(sets % 2));
        busy.receiver(1)->setFREQ(QString::number(2250 + ++sets % 10));
        busy.far.sendFrame("U0:BOOT:1");
    });
    worker.start(1000);
    QVERIFY(waitUntil([&] { return silent.link.status().isSilent(); }, 8000));
    QVERIFY(waitUntil([&] { return busy.link.status().isSilent(); }, 8000));
    QVERIFY(waitUntil([&] { return silent.link.status().state == State::Waiting; }, 8000));
    silent.far.setAnswering(true);
    for (CommandLinkBench *bench : { &silent, &busy }) {
        QVERIFY(bench->far.waitForFrame("U0:TRON:ON", 8000));
        QVERIFY(bench->far.frames().contains("R2:FREQ"));
        QVERIFY(waitUntil([bench] { return bench->link.status().state == State::Live; }));
        QVERIFY(!bench->link.status().isSilent());
    }
    QCOMPARE(cardLists(), 5);
    for (const bool isAccepted : { false, true }) {
        changing.far.sendFrame("U0:CLST:0103 MPU");
        QVERIFY(changing.idle());
        QCOMPARE(changing.link.status().hasOtherCards, isAccepted);
    }
}

/// The answers to three queries in a row are lost: everything is read once more.
void RepeatedReadingTest::awayWhileRead()
{
    CommandLinkBench bench;
    QSignalSpy allSettings(&bench.link, &Link::AllSettingsObtained);
    bench.far.ignore("R1:FREQ");
    bench.open();
    QVERIFY(bench.far.waitForFrame("R1:FREQ"));
    bench.far.setAnswering(false);
    for (const char *query : { "R1:FREQ", "R1:IFLS", "R1:IFBW" }) {
        QVERIFY(bench.far.waitForFrame(query));
        bench.far.setAnswering(query == QByteArrayView("R1:IFBW"));
        bench.link.StopTimeOutTmr();
        bench.link.TimeOutTmr_Tick();
    }
    bench.far.behave("R1:FREQ");
    QVERIFY(waitUntil([&] { return bench.far.frames().count("U0:TRON:ON") == 2; }, 20'000));
    QVERIFY(bench.idle());
    QCOMPARE(bench.receiver(1)->getFREQ(), u"2250.5"_s);
    QCOMPARE(bench.link.status().state, LinkStatus::State::Live);
    QCOMPARE(bench.far.frames().count("U0:TRON:ON"), 2);
    QCOMPARE(allSettings.count(), 1);
}

void RepeatedReadingTest::answersLost_data()
{
    QTest::addColumn<QByteArray>("lost"); // one answer each
    QTest::addRow("behind the version") << "U0:VERTSKB U0:SYSID U0:CLST U0:NAME U0:SLAVE"_ba;
    QTest::addRow("two settings in a row") << "R1:SLPA R1:SLPB"_ba;
}

/// In the end everything is known, whatever a chassis that is back has left unanswered.
void RepeatedReadingTest::answersLost()
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
    bench.far.setHandler([&](const QByteArray &frame) {
        const QByteArray key = frame.split(':').first(2).join(':');
        left.removeOne(key) ? bench.far.ignore(key) : bench.far.behave(key);
    });
    bench.far.plug();
    QVERIFY(waitUntil([&] { return bench.link.status().hasOtherCards; }, 20'000));
    QVERIFY(waitUntil([&] { return bench.link.status().state == LinkStatus::State::Live; }, 20'000));
    QVERIFY(waitUntil([&] { return bench.receiver(1)->getSLPA() == "2"_L1; }, 5000));
    QCOMPARE(bench.system()->getNAME(), u"Other"_s);
}

/// A client's set of the value held, and requests for spectra, while a link that is back is re-read.
void RepeatedReadingTest::spectraGoOn()
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
    far.refuse("SP1:DATA");
    third->setData(u"1"_s);
    qobject_cast<SpectralChan *>(link.channels().value(1))->setData(u"1"_s);
    far.sendFrame("U0:VER:2.1");
    QVERIFY(far.waitForFrame("U0:NAME", 10'000));
    link.channels().last()->ProcessCmd(RemoteCommand::fromClient(u"S1:NAME:Test"_s)); // the name held
    second->setData(u"0"_s);                                                          // stops them during the re-read
    QVERIFY(far.waitForFrame("U0:TRON:ON", 10'000));
    QByteArrayList data = far.frames();
    data.removeIf([](const QByteArray &frame) { return !frame.contains(":DATA:"); });
    QCOMPARE(data, QByteArrayList({ "SP3:DATA:1", "SP1:DATA:1", "SP2:DATA:1", "SP1:DATA:0", "SP2:DATA:0" }));
    QVERIFY(far.frames().contains("S1:NAME:Test"));
}

QTEST_MAIN(RepeatedReadingTest)
#include "tst_repeated_reading.moc"
