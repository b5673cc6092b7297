#include "link/LinkGuard.h"
#include "link/RemoteCommand.h"
#include "support/ChannelBench.h"

#include <QHash>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A chassis whose answers to single requests are scripted: what it holds is what counts in the end.
class ScriptedBench : public ChannelBench
{
public:
    /// Further verbs: "holds KEY=VALUE"; "on REQUEST = FRAME | FRAME", once, nothing for a request that gets no answer.
    explicit ScriptedBench(const QByteArrayList &cards) : ChannelBench(cards)
    {
        far.setHandler([this](const QByteArray &frame) { react(frame); });
        script().on(u"holds"_s, [this](const QString &text) {
            far.setValue(text.section(u'=', 0, 0).toLatin1(), text.section(u'=', 1).toLatin1());
        });
        script().on(u"report"_s, [this](const QString &text) { far.sendFrame(spelt(text.toLatin1())); });
        script().on(u"on"_s, [this](const QString &text) {
            m_reactions[text.section(u" ="_s, 0, 0).toLatin1()].append(text.section(u" ="_s, 1).trimmed().toLatin1());
        });
    }

private:
    static QByteArray spelt(QByteArray text) { return text.replace("ACK", "\x06").replace("NAK", "\x15"); }

    void react(const QByteArray &frame)
    {
        const QByteArray key = frame.split(':').first(2).join(':');
        QByteArrayList &reactions = m_reactions[frame];
        if (reactions.isEmpty()) {
            far.behave(key);
            return;
        }
        far.ignore(key);
        const QByteArray replies = reactions.takeFirst();
        if (replies.isEmpty())
            link.StartTimeOutTmr(1);
        for (const QByteArray &reply : replies.isEmpty() ? QByteArrayList() : replies.split('|'))
            far.sendFrame(spelt(reply.trimmed()));
    }

    QHash<QByteArray, QByteArrayList> m_reactions;
};

auto on(const char *cards)
{
    return [cards](const char *name, const char *lines, const char *record) {
        QTest::newRow(name) << QByteArray(cards) << QString::fromLatin1(lines) << QString::fromLatin1(record);
    };
}

} // namespace

/// In the end the channels hold what the cards hold, though answers are lost or late. No set is repeated.
class LostAnswersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readBack_data();
    void readBack();
    void clientSetsWhatIsHeld();
    void whileSettingsAreRead();
};

void LostAnswersTest::readBack_data()
{
    QTest::addColumn<QByteArray>("cards");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("record");
    const auto receivers = on(LinkBench::kReceivers);
    receivers("healthy line", "set R1:FREQ:2260.5 & R1:AFC:0", "R1:FREQ:2260.5; R1 FREQ 2260.5; R1:AFC:0; R1 AFC 0");
    receivers("carried out, ACK lost", "on R1:FREQ:2260.5 =; holds R1:FREQ=2260.5; set R1:FREQ:2260.5",
              "R1:FREQ:2260.5; R1 FREQ 2250.5; R1:FREQ; R1 FREQ 2260.5");
    receivers("request lost", "on R1:FREQ:2260.5 =; set R1:FREQ:2260.5",
              "R1:FREQ:2260.5; R1 FREQ 2250.5; R1:FREQ; R1 FREQ 2250.5");
    receivers("of the system", "on U0:NAME:Van =; holds U0:NAME=Van; set U0:NAME:Van",
              "U0:NAME:Van; U0 NAME Range 4; U0:NAME; U0 NAME Van");
    receivers("late ACK taken for that of a refused set",
              "on R1:FREQ:2260.5 =; holds R1:FREQ=2260.5; on R1:AFC:0 =ACK|NAK; set R1:FREQ:2260.5 & R1:AFC:0",
              "R1:FREQ:2260.5; R1 FREQ 2250.5; R1:AFC:0; R1 AFC 0; R1:FREQ; R1 FREQ 2260.5; R1:AFC; R1 AFC 1");
    receivers("late NAK taken for that of a set that was carried out",
              "on R1:FREQ:2260.5 =; on R1:AFC:0 =NAK|ACK; holds R1:AFC=0; set R1:FREQ:2260.5 & R1:AFC:0",
              "R1:FREQ:2260.5; R1 FREQ 2250.5; R1:AFC:0; R1 AFC 1; R1:FREQ; R1 FREQ 2250.5; R1:AFC; R1 AFC 0");
    receivers("stray ACK", "set R1:AFC:0; holds R1:AFC=1; report ACK", "R1:AFC:0; R1 AFC 0; R1:AFC; R1 AFC 1");
    receivers("stray NAK", "set R1:AFC:0; holds R1:AFC=1; report NAK", "R1:AFC:0; R1 AFC 0; R1:AFC; R1 AFC 1");
    receivers("slave copy", "report U0:SLAVE:1; on R2:AFC:0 =; holds R2:AFC=0; set R1:AFC:0",
              "U0 SLAVE 1; R1 U0 SLAVE 1; R2 U0 SLAVE 1; R1:AFC:0; R1 AFC 0; R2:AFC:0; R2 AFC 1; R2:AFC; R2 AFC 0");
    const auto older = on(LinkBench::kOlderDemodulators);
    older("data source", "on U0:SDM2:3 =; holds U0:SDM2=3; set D2:DSRC:3",
          "U0:SDM2:3; D2 U0 SDM2 1; U0:SDM2; D2 U0 SDM2 3");
    older("register", "on D1:CDRG:851234 =; holds D1:RDRG:85=1234; set D1:DFWD:1234",
          "D1:CDRG:851234; D1 DFWD eb90; D1:RDRG:85; D1 DFWD 1234");
    older("command of its own for a register", "on D1:DQMON:1 =; holds D1:DQMON=1; set D1:DDQM:1",
          "D1:DQMON:1; D1 DDQM 0; D1:DQMON; D1 DDQM 1");
    older("list that follows a setting", "on D1:IFFL =; holds D1:IFFL=5; report D1:DDCF:80",
          "D1 DDCF 80; D1:IFFL; D1:VFFL; D1 VFFL 500000,5000000; D1:IFFL; D1 IFFL 5");
    const auto tmoip = on(LinkBench::kTmoip);
    tmoip("not read at start", "on TM1-0:TSRC:1 =; holds TM1-0:TSRC=1; set TM1-0:TSRC:1",
          "TM1-0:TSRC:1; TM1-0 TSRC Unknown; TM1-0:TSRC; TM1-0 TSRC 1");
    tmoip("an order", "on TM1-0:COMT:1 =; set TM1-0:COMT:1", "TM1-0:COMT:1");
}

void LostAnswersTest::readBack()
{
    QFETCH(const QByteArray, cards);
    QFETCH(const QString, lines);
    QFETCH(const QString, record);
    ScriptedBench bench({ cards });
    QCOMPARE(bench.play(lines), record);
}

/// While a value is in doubt, a set of the client goes to the card although it is the value held.
void LostAnswersTest::clientSetsWhatIsHeld()
{
    ScriptedBench bench({ LinkBench::kReceivers });
    (void)bench.play(u"on R1:AFC:0 =; on R1:AFC =; set R1:AFC:0"_s);
    const auto set = [&bench](const QString &mnemonic) {
        const QString value = mnemonic == "AFC"_L1 ? u"1"_s : u"2250.5"_s;
        bench.receiver(1)->ProcessCmd(RemoteCommand::fromClient(u"R1:"_s + mnemonic + u':' + value));
    };
    set(u"AFC"_s);
    set(u"FREQ"_s);
    QCOMPARE(bench.takeRecord(), (QStringList{ u"R1:AFC:1"_s, u"R1 AFC 1"_s }));
}

/// A late answer is taken for that of the next set behind a pulled cable as well.
void LostAnswersTest::whileSettingsAreRead()
{
    ScriptedBench bench({ LinkBench::kReceivers });
    (void)bench.play(u"on R1:SLPA:0 =; on R1:POLA:1 =ACK|NAK"_s);
    bench.far.unplug();
    bench.link.findChild<LinkGuard *>()->check();
    bench.far.plug();
    QVERIFY(bench.far.waitForFrame("R2:NAME", 10'000)); // the first receiver has been read
    bench.receiver(1)->setSLPA(u"0"_s);
    bench.receiver(1)->setPOLA(u"1"_s);
    QVERIFY(waitUntil([&bench] { return bench.receiver(1)->getPOLA() == "1"_L1; }));
    QCOMPARE(bench.link.status().state, LinkStatus::State::Reading);
    QVERIFY(waitUntil([&bench] { return bench.receiver(1)->getPOLA() == "0"_L1; }, 10'000));
}

QTEST_MAIN(LostAnswersTest)
#include "tst_lost_answers.moc"
