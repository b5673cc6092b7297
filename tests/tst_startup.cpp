#include "inventory/Card.h"
#include "inventory/CardList.h"
#include "support/CommandLinkBench.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray kReceiver1("0103 MPU 2.3 TUNER A1 X,0121 FPGA1 1.9 TUNER A1 X");
const QByteArray kReceiver2("0104 MPU 2.3 TUNER A2 X,0122 FPGA1 1.9 TUNER A2 X");

struct Chassis : CommandLinkBench
{
    QSignalSpy allSettings{ &link, &SerialPortController::AllSettingsObtained };
};

/// Every request of a start-up, in order; @p cardListRequests of them ask for the card list. The address of a
/// demodulator of the older cards is followed by "+".
QByteArrayList everyRequest(const QByteArrayList &channels, int cardListRequests = 1)
{
    QByteArrayList requests{ "U0:TRON:OFF", "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7" };
    requests += QByteArrayList(cardListRequests, "U0:CLST") + LinkBench::systemQueries();
    QByteArrayList filters; // their frequency has become known
    for (const QByteArray &channel : channels) {
        const QByteArray address = channel.endsWith('+') ? channel.chopped(1) : channel;
        if (address.startsWith('R'))
            requests += LinkBench::receiverQueries(address);
        else if (address == "C1")
            requests += LinkBench::combinerQueries();
        else if (address == "T1")
            requests += LinkBench::tapeQueries();
        else if (address.startsWith("SP"))
            requests += LinkBench::spectralQueries(address);
        else if (address == "S1")
            requests += LinkBench::selfTestQueries();
        else
            requests += LinkBench::demodulatorQueries(address, channel.endsWith('+'));
        if (address.startsWith('D'))
            filters << address + ":IFFL" << address + ":VFFL";
    }
    return requests << "U0:TRON:ON" << filters;
}

} // namespace

/// The conversation from the first byte on the command link to the end of start-up, and what discovery makes of it.
class StartupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRequestInOrder();
    void channels_data();
    void channels();
    void tmoipCards();
    void cards_data();
    void cards();
    void cardListAskedAgainAndTakenOnce();
    void endsOnceWhateverIsMissing();
    void tmoipListBeforeTheCards();
};

void StartupTest::everyRequestInOrder()
{
    Chassis chassis;
    QByteArray lastBeforeEnd;
    QString lastSetting;
    connect(&chassis.link, &SerialPortController::AllSettingsObtained, this, [&] {
        lastBeforeEnd = chassis.far.frames().constLast();
        lastSetting = chassis.receiver(2)->getMANG();
    });
    chassis.far.setValue("R2:MANG", "33");
    chassis.far.sendFrame("loading, no channel is there to take it");
    QVERIFY(chassis.start());

    QCOMPARE(chassis.far.frames(), everyRequest({ "R1", "R2" }));
    QVERIFY(chassis.far.bytes().startsWith("\x02U0:TRON:OFF\x0D\x02U0:VER\x0D"));
    QCOMPARE(chassis.allSettings.count(), 1);
    QCOMPARE(lastBeforeEnd, QByteArray("R2:MANG"));
    QCOMPARE(lastSetting, u"33"_s);
    QCOMPARE(chassis.system()->verTsMain(), u"3.4"_s);
    QCOMPARE(chassis.system()->getNAME(), u"Range 4"_s);
    QCOMPARE(chassis.link.cards().size(), 2);
}

void StartupTest::channels_data()
{
    QTest::addColumn<QByteArray>("cardList");
    QTest::addColumn<QByteArray>("channels");
    const auto row = [](const QByteArray &cardList, const QByteArray &channels) {
        QTest::addRow("%s: %s", cardList.constData(), channels.constData()) << cardList << channels;
    };

    const QByteArrayList micros = kReceiver1.split(',') + kReceiver2.split(',');
    row(kReceiver2 + ',' + kReceiver1, "R1 R2");
    row(kReceiver2, "R2");
    row(micros[0] + ',' + kReceiver2, "R2");
    row(micros[1], "");
    row(micros[2] + ',' + kReceiver1, "R1");
    row(micros[0] + ',' + micros[3], "");
    row("0199 MPU 1 TUNER 0103-0121 X", "R1"); // anywhere in the text
    row("", "");

    row("0110 MPU 1 TAPE S5 X", "T1");
    row("0170 MPU 1 SPECTRUM S6 X", "SP1 SP2 SP3");
    row("0136 MPU 1 SPECTRUM S6 X,0170 MPU 1 SPECTRUM S6 X,0110 MPU 1 TAPE S5 X,0105 MPU 1 COMBINER A3 X",
        "C1 T1 SP1 SP2 SP3 S1");
    row("0105 MPU 1 COMBINER A3 X", "C1");
    row("0109 FPGA1 1 COMBINER A3 X", "C1");
    row("DEMOD2 MPU 1.2 K3050 S2", "D2+");
    row("DEMOD3 MPU 1 K3060 S3,DEMOD1 MPU 1 K3060 S1,0102 K412W 1 K9V S2 X", "D1+ D3+");
    row("DEMOD1 MPU 1 K3070 S1,0101 K4 1 K412 S2 X,0102  K412W 1 QLN412 S2 X,0102 k9v", "");
    row("0101 K414V 1 X S1 X,0108 K9V 1 X S2 X", "D1 D2");
    row("0107 K9V 1 X S1 X,0102 K9V 1 X S2 X,0109 K9V 1 X S3 X", "C1 D1 D2");
    row("0101 K9V 1 X S1 X,0102 K414V 1 X S2 X,0109 K424V 1 X S3 X", "C1 D1 D2 D3");
    row("0101 K424V 1 X S1 X,0102 K412 1 X S2 X,0109 K414V 1 X S3 X", "C1 D2 D3");
    row("0107 K412 1 X S1 X,0108 K414V 1 X S2 X,0109 K412 1 X S3 X", "C1 D3");
    row(QByteArrayList{ LinkBench::kRegisterDemodulators, LinkBench::kCombiner, LinkBench::kReceivers }.join(','),
        "R1 R2 C1 D1 D2");
    row(QByteArrayList{ LinkBench::kOlderDemodulators, kReceiver1 }.join(','), "R1 D1+ D2+ D3+");
}

void StartupTest::channels()
{
    QFETCH(QByteArray, cardList);
    QFETCH(QByteArray, channels);

    Chassis chassis;
    chassis.far.setValue("U0:CLST", cardList);
    QVERIFY(chassis.start());
    QCOMPARE(chassis.far.frames(), everyRequest(channels.isEmpty() ? QByteArrayList{} : channels.split(' ')));
    QCOMPARE(chassis.allSettings.count(), 1);
}

void StartupTest::tmoipCards()
{
    Chassis chassis;
    QSignalSpy cards(&chassis.link, &SerialPortController::TmoipCardObtained);
    chassis.bench.fit({ kReceiver1 });
    chassis.far.setValue("U0:TLST", ", ,TM, TM1 2.1,TM1,TM1x,TMWW 2,TM123,W");
    QVERIFY(chassis.start());
    QVERIFY(chassis.idle());
    QCOMPARE(chassis.far.frames(), everyRequest({ "R1" }) + LinkBench::tmoipQueries() << "U0:VERTSKB");
    QCOMPARE(chassis.allSettings.count(), 1);
    chassis.far.sendFrame("U0:TLST:TM2");
    QVERIFY(chassis.idle());
    QCOMPARE(cards.count(), 1);
}

void StartupTest::cards_data()
{
    QTest::addColumn<QString>("cardList");
    QTest::addColumn<QString>("cards");

    QTest::newRow("six fields or more") << u"0103 MPU 2.3 TUNER A1 X,0104 MPU 2.3 TUNER A2 X Y"_s
                                        << u"TUNER;A1;X;0103;MPU;2.3|TUNER;A2;X;0104;MPU;2.3"_s;
    QTest::newRow("five fields") << u"0103 MPU 2.3 TUNER A1,DEMOD2 MPU 1.0 K3050 S9"_s
                                 << u"TUNER;A1;N/A;0103;MPU;2.3|K3050;S9;N/A;DEMOD2;DEMOD;1.0"_s;
    QTest::newRow("other numbers of fields") << u"0103 MPU 2.3 TUNER,0103 MPU,0103,,"_s << QString();
    QTest::newRow("empty fields") << u"0103  2.3   "_s << u"N/A;N/A;N/A;0103;N/A;2.3"_s;
    QTest::newRow("model named by the kind") << u"0101 K412W 1.1 QLN412 S1 X,0102 QLN412W 1.1 QLN412 S2 X"_s
                                             << u"QLN412W;S1;X;0101;K412W;1.1|QLN412;S2;X;0102;QLN412W;1.1"_s;
    QTest::newRow("one card: the same model and serial number")
        << u"0103 MPU 2.3 TUNER A1 X,0130 FPGA1 1.0 MODEM A1 X,0121 FPGA1 1.9 TUNER A1 Z"_s
        << u"TUNER;A1;X;0103;MPU;2.30121;FPGA1;1.9|MODEM;A1;X;0130;FPGA1;1.0"_s;
    QTest::newRow("three fields join the first card of the model, even if they come first")
        << u"0130 QLN9V 1.2,0101 MPU 1 QLN9V S1 X,0102 MPU 1 QLN9V S2 X,0131 QLN9V 1.3"_s
        << u"QLN9V;S1;X;0130;FPGA QLN9V;1.20101;MPU;10131;FPGA QLN9V;1.3|QLN9V;S2;X;0102;MPU;1"_s;
    QTest::newRow("three fields of a model without card")
        << u"0130 QLN9V 1.2,0131 QLN9V 1.3"_s << u"QLN9V;N/A;N/A;0130;FPGA QLN9V;1.20131;FPGA QLN9V;1.3"_s;
}

void StartupTest::cards()
{
    QFETCH(QString, cardList);
    QFETCH(QString, cards);

    QStringList shown;
    for (const Card &card : CardList::consolidated(CardList::parse(cardList)))
        shown += card.GetFormattedCardInfoString();
    QCOMPARE(shown.join(u'|'), cards);
}

void StartupTest::cardListAskedAgainAndTakenOnce()
{
    Chassis answered; // its time to ask again comes before the other's
    QVERIFY(answered.start());
    Chassis chassis;
    chassis.far.ignore("U0:CLST");
    chassis.open();
    QVERIFY(chassis.far.waitForFrame("U0:CLST"));
    QElapsedTimer sinceFirst;
    sinceFirst.start();
    QVERIFY(waitUntil([&chassis] { return chassis.far.frames().count("U0:CLST") == 2; }, 10'000));
    QVERIFY(sinceFirst.elapsed() > 2000);
    QCOMPARE(chassis.allSettings.count(), 0);

    // The second list is there before a single request has followed the first; a third comes when all is done.
    chassis.far.send("\x02U0:CLST:" + kReceiver1 + "\x0D\x02U0:CLST:" + kReceiver2 + '\x0D');
    QVERIFY(chassis.far.waitForFrame("U0:TRON:ON"));
    chassis.far.sendFrame("U0:CLST:" + kReceiver2);
    QVERIFY(chassis.idle());
    QCOMPARE(chassis.far.frames(), everyRequest({ "R1" }, 2) << "U0:VERTSKB");
    QCOMPARE(chassis.link.cards().size(), 1);
    QCOMPARE(chassis.system()->getCLST(), QString::fromLatin1(kReceiver1));
    QCOMPARE(chassis.allSettings.count(), 1);

    // The two timers are coarse: they may change places by a few hundred milliseconds.
    QVERIFY2(!waitUntil([&answered] { return answered.far.frames().count("U0:CLST") > 1; }, 400), "asked again");
}

void StartupTest::endsOnceWhateverIsMissing()
{
    Chassis chassis;
    const auto &queue = chassis.link.txmtCmdQueue();
    chassis.far.refuse("R1:FREQ");
    chassis.far.ignore("R2:MANG"); // the last: start-up must wait for its time-out, which comes early here
    chassis.open();
    QVERIFY(chassis.far.waitForFrame("R2:MANG"));
    QCOMPARE(chassis.allSettings.count(), 0);
    chassis.link.StopTimeOutTmr();
    chassis.link.TimeOutTmr_Tick();

    // A stray NAK gets in before the marker's time is over.
    QVERIFY(waitUntil([&queue] { return queue.inFlight() && queue.inFlight()->type() == StandardCommand::Marker; }));
    chassis.link.StartTimeOutTmr(600'000);
    chassis.far.nak();
    QVERIFY(chassis.far.waitForFrame("U0:TRON:ON"));
    QVERIFY(chassis.idle());
    QCOMPARE(chassis.allSettings.count(), 1);
    QCOMPARE(chassis.receiver(1)->getFREQ(), u"Unknown"_s);
    QCOMPARE(chassis.receiver(2)->getMANG(), u"Unknown"_s);
    QCOMPARE(chassis.receiver(2)->getCATN(), u"0"_s);

    chassis.queue(nullptr, u"U0"_s, u"NOTIFY"_s, {}, StandardCommand::Marker);
    chassis.link.StartTimeOutTmr(1);
    QVERIFY(chassis.idle());
    QCOMPARE(chassis.allSettings.count(), 1);
}

/// A list that names no card counts as none, and a card of an early list is queried once.
void StartupTest::tmoipListBeforeTheCards()
{
    Chassis chassis;
    chassis.far.ignore("U0:CLST");
    chassis.open();
    QVERIFY(chassis.far.waitForFrame("U0:CLST"));
    chassis.far.sendFrame("U0:TLST:,XX 1,TMx");
    chassis.far.sendFrame("U0:TLST:TM1 2.1");
    chassis.far.behave("U0:CLST");
    chassis.far.sendFrame("U0:CLST:" + kReceiver1);
    QVERIFY(chassis.far.waitForFrame("U0:TRON:ON", 20'000));
    QByteArrayList asked = chassis.far.frames();
    asked.removeIf([](const QByteArray &frame) { return !frame.startsWith("TM"); });
    QCOMPARE(asked, LinkBench::tmoipQueries());
}

QTEST_MAIN(StartupTest)
#include "tst_startup.moc"
