#include "channels/BistChan.h"
#include "channels/SpectralChan.h"
#include "head/SilenceWatch.h"
#include "link/LinkGuard.h"
#include "link/RemoteCommand.h"
#include "support/CommandLinkBench.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Link = SerialPortController;
using enum SerialPortController::PORT_TYPE;

/// A spectral link with a self-test.
struct SelfTestBench
{
    [[nodiscard]] bool start()
    {
        far.setAnswering(true);
        link.StartEstablishCommTmr(20, nullptr);
        const bool isLive = far.waitForFrame("U0:TRON:ON", 20'000);
        far.clear();
        return isLive;
    }

    LinkBench bench;
    FarEnd &far = bench.spectral();
    Link link{ nullptr, SPECTRAL_LINK, {} };
};

/// A chassis that reports at these times, in tenths of a second: the seconds at which it is read again.
class Silence
{
public:
    explicit Silence(bool isAcknowledged) : m_isAcknowledged(isAcknowledged) { m_watch.endReading(isAcknowledged); }

    void run(int seconds, const std::function<bool(int now, int readingEnd)> &reports)
    {
        for (const int end = m_now + seconds * 10; m_now < end; ++m_now) {
            if (m_now == m_readingEnd)
                m_watch.endReading(m_isAcknowledged);
            if (reports(m_now, m_readingEnd))
                m_watch.noteReport();
            if (m_now % 10 == 0 && m_now > m_readingEnd && m_watch.isOver(true)) {
                m_readings += m_now / 10;
                m_watch.beginReading();
                m_readingEnd = m_now + 10;
            }
        }
    }
    [[nodiscard]] QList<int> readings() const { return m_readings; }

private:
    int m_now = 0;
    SilenceWatch m_watch{ [this] { return m_now * 100; } };
    bool m_isAcknowledged;
    int m_readingEnd = 0;
    QList<int> m_readings;
};

} // namespace

/// A chassis that was there before: all its settings are read again, whatever happens meanwhile.
class RepeatedReadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readInBackground();
    void switchedOffAndOn();
    void awayWhileRead_data();
    void awayWhileRead();
    void answersLost_data();
    void answersLost();
    void answersLostAgain();
    void spectraGoOn();
    void silence();
};

/// What the operator does while a chassis that is back is read again goes first, though not for ever.
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
    QVERIFY(!bench.link.status().hasOtherCards); // told once
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

/// On a line that stays well nothing but silence tells.
void RepeatedReadingTest::switchedOffAndOn()
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
    SelfTestBench regular;
    SelfTestBench seldom;
    for (SelfTestBench *bench : { &regular, &seldom }) {
        QVERIFY(bench->start());
        for (const char *reading : { "RTMP:36", "RXYZ:1", bench == &regular ? "RTMP:36" : "CFRQ:70" })
            bench->far.sendFrame(QByteArray("S1:") + reading);
    }
    CommandLinkBench changing; // lists its cards otherwise, once it is back
    QVERIFY(changing.start());
    changing.far.unplug();
    changing.link.findChild<LinkGuard *>()->check();
    changing.far.ignore("U0:CLST");
    changing.far.clear();
    changing.far.plug();
    silent.far.setAnswering(false);
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
    QVERIFY(regular.far.waitForFrame("U0:TRON:ON", 8000) && seldom.far.frames().isEmpty());
    const auto cardLists = [&changing] { return changing.far.frames().count("U0:CLST"); };
    QVERIFY(waitUntil([&] { return cardLists() == 5; }, 8000));
    QVERIFY(!waitUntil([&] { return cardLists() > 5; }, 3500)); // not without end
    const QByteArray cards = changing.far.value("U0:CLST");
    for (const auto &[list, isBelieved] : { std::pair("0103 MPU"_ba, false), std::pair(cards, false),
                                            std::pair("0103 MPU"_ba, false), std::pair("0103 MPU"_ba, true) }) {
        changing.far.sendFrame("U0:CLST:" + list);
        QVERIFY(changing.idle());
        QCOMPARE(changing.link.status().hasOtherCards, isBelieved);
    }
    QVERIFY(sets > 9 && quiet.far.frames().isEmpty() && lacking.far.frames().isEmpty());
}

void RepeatedReadingTest::awayWhileRead_data()
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

void RepeatedReadingTest::awayWhileRead()
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
    QVERIFY(silent.contains("R1:FREQ") || waitUntil([&] { return bench.receiver(1)->getFREQ() == "2250.5"_L1; }));
    QCOMPARE(bench.link.status().state, LinkStatus::State::Live);
    QCOMPARE(allSettings.count(), 1);
    QVERIFY(!waitUntil([&] { return bench.far.frames().count("U0:TRON:ON") > readings; }, 1500));
}

void RepeatedReadingTest::answersLost_data()
{
    QTest::addColumn<QByteArray>("lost"); // one answer each, but "+" for one that is not
    QTest::addRow("behind the version") << "U0:VERTSKB U0:SYSID U0:CLST U0:NAME U0:SLAVE"_ba;
    QTest::addRow("the card list's") << "U0:CLST"_ba;
    QTest::addRow("two in a row, and again the one that tells")
        << "R1:SLPA R1:SLPB R1:SLPB +R1:SLPB R1:SLPA R1:SLPB R1:SLPB"_ba;
}

/// Whatever a chassis that is back has left unanswered is known in the end.
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
        const auto next = std::ranges::find_if(left, [&key](const QByteArray &entry) { return entry.endsWith(key); });
        const bool isLost = next != left.end() && *next == key;
        if (next != left.end())
            left.erase(next);
        isLost ? bench.far.ignore(key) : bench.far.behave(key);
    });
    bench.far.plug();
    QVERIFY(waitUntil([&] { return bench.link.status().hasOtherCards; }, 20'000));
    QVERIFY(waitUntil([&] { return bench.link.status().state == LinkStatus::State::Live; }, 20'000));
    QVERIFY(waitUntil([&] { return bench.receiver(1)->getSLPA() == "2"_L1; }, 5000));
    QCOMPARE(bench.system()->getNAME(), u"Other"_s);
}

/// A line that loses answers each time does not have the chassis read without end.
void RepeatedReadingTest::answersLostAgain()
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
    second->setData(u"0"_s); // no more of them, asked for while it is read again
    QVERIFY(far.waitForFrame("U0:TRON:ON", 10'000));
    QByteArrayList data = far.frames();
    data.removeIf([](const QByteArray &frame) { return !frame.contains(":DATA:"); });
    QCOMPARE(data, QByteArrayList({ "SP3:DATA:1", "SP1:DATA:1", "SP2:DATA:1", "SP1:DATA:0", "SP2:DATA:0" }));
    QVERIFY(far.frames().contains("S1:NAME:Test"));
}

/// Who is read again for silence, and when.
void RepeatedReadingTest::silence()
{
    const auto never = [](int, int) { return false; };
    const auto regularly = [](int now, int) { return now % 2 == 0; };
    Silence quiet(true); // it may have nothing to report
    quiet.run(3600, never);
    QCOMPARE(quiet.readings(), QList<int>());
    Silence refusing(false);
    refusing.run(3600, never);
    QCOMPARE(refusing.readings(), (QList<int>{ 10, 31, 72 }));
    Silence off(true);
    off.run(60, regularly);
    off.run(600, never);
    QCOMPARE(off.readings(), (QList<int>{ 70, 91, 132, 213, 374 }));
    Silence offTwice(true); // reports again as soon as it is asked to
    for (const int offSince : { 3000, 6200 }) {
        offTwice.run(300, regularly);
        offTwice.run(20, [offSince](int now, int readingEnd) { return readingEnd > offSince && now >= readingEnd; });
    }
    QCOMPARE(offTwice.readings(), (QList<int>{ 310, 630 }));
    Silence rare(true);
    rare.run(3600, [](int now, int) { return now % 300 == 0; });
    QVERIFY2(rare.readings().size() <= 3, qPrintable(QString::number(rare.readings().size())));
    Silence once(true); // one report behind each reading, and no more
    once.run(3600, [](int now, int readingEnd) { return now == readingEnd + 5; });
    QVERIFY2(once.readings().size() <= 10, qPrintable(QString::number(once.readings().size())));
}

QTEST_MAIN(RepeatedReadingTest)
#include "tst_repeated_reading.moc"
