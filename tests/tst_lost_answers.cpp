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
    explicit ScriptedBench(const QByteArrayList &cards) : ChannelBench(cards)
    {
        far.setHandler([this](const QByteArray &frame) { react(frame); });
    }

    /// Plays one line: "set ADDRESS:MNEMONIC:VALUE", several with " & " between them; "holds KEY=VALUE"; "send FRAME";
    /// "on REQUEST = FRAME | FRAME", once, nothing for a request that goes unanswered; "await REQUEST".
    [[nodiscard]] QStringList play(const QString &line)
    {
        const QString verb = line.section(u' ', 0, 0);
        const QString rest = line.section(u' ', 1);
        if (verb == u"on") {
            m_reactions[rest.section(u" ="_s, 0, 0).toLatin1()].append(rest.section(u" ="_s, 1).trimmed().toLatin1());
            return {};
        }
        if (verb == u"holds")
            far.setValue(rest.section(u'=', 0, 0).toLatin1(), rest.section(u'=', 1).toLatin1());
        if (verb == u"send")
            far.sendFrame(spelt(rest.toLatin1()));
        if (verb == u"await" && !far.waitForFrame(rest.toLatin1(), 6000))
            return { u"not asked"_s };
        if (verb == u"set") {
            for (const QString &set : rest.split(u" & "_s))
                submit(set);
        }
        return takeRecord();
    }

private:
    static QByteArray spelt(QByteArray text) { return text.replace("ACK", "\x06").replace("NAK", "\x15"); }

    void submit(const QString &set)
    {
        const QString address = set.section(u':', 0, 0);
        const Setting setting = channelSettings()[kindOf(address) + u':' + set.section(u':', 1, 1)];
        setting.set(channel(address), set.section(u':', 2));
    }

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

/// What the channels hold is what the cards hold, in the end, though answers are lost or late. No set is repeated.
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
    receivers("ACK that nobody waits for", "set R1:AFC:0; holds R1:AFC=1; send ACK",
              "R1:AFC:0; R1 AFC 0; R1:AFC; R1 AFC 1");
    receivers("NAK that nobody waits for", "set R1:AFC:0; holds R1:AFC=1; send NAK",
              "R1:AFC:0; R1 AFC 0; R1:AFC; R1 AFC 1");
    receivers("slave copy", "send U0:SLAVE:1; on R2:AFC:0 =; holds R2:AFC=0; set R1:AFC:0",
              "U0 SLAVE 1; R1 U0 SLAVE 1; R2 U0 SLAVE 1; R1:AFC:0; R1 AFC 0; R2:AFC:0; R2 AFC 1; R2:AFC; R2 AFC 0");
    const auto older = on(LinkBench::kOlderDemodulators);
    older("data source", "on U0:SDM2:3 =; holds U0:SDM2=3; set D2:DSRC:3",
          "U0:SDM2:3; D2 U0 SDM2 1; U0:SDM2; D2 U0 SDM2 3");
    older("register", "on D1:CDRG:851234 =; holds D1:RDRG:85=1234; set D1:DFWD:1234",
          "D1:CDRG:851234; D1 DFWD eb90; D1:RDRG:85; D1 DFWD 1234");
    older("command of its own for a register", "on D1:DQMON:1 =; holds D1:DQMON=1; set D1:DDQM:1",
          "D1:DQMON:1; D1 DDQM 0; D1:DQMON; D1 DDQM 1");
    older("list that follows a setting", "on D1:IFFL =; holds D1:IFFL=5; send D1:DDCF:80",
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
    QStringList played;
    for (const QString &line : lines.split(u"; "_s))
        played += bench.play(line);
    QCOMPARE(played.join(u"; "_s), record);
}

/// While a value is in doubt, a set of the client goes to the card although it is the value held.
void LostAnswersTest::clientSetsWhatIsHeld()
{
    ScriptedBench bench({ LinkBench::kReceivers });
    for (const auto *line : { "on R1:AFC:0 =", "on R1:AFC =" })
        (void)bench.play(QString::fromLatin1(line));
    (void)bench.play(u"set R1:AFC:0"_s);
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
    for (const auto *line : { "on R1:SLPA:0 =", "on R1:POLA:1 =ACK|NAK" })
        (void)bench.play(QString::fromLatin1(line));
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
