#include "head/CardListWatch.h"
#include "head/Rereading.h"
#include "support/Script.h"
#include "support/StubLink.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using enum StandardCommand::CommandStatus;

/// Ends commands of a link as a script says, and records what is queried again, and when.
///
/// Verbs: "pass QUERY QUERY ..." is a pass over all settings, with "?" behind a query that gets no answer and "!"
/// behind one that is refused; the request for reports ends it, unanswered if "TRON?" stands last. "end" ends a query
/// of somebody else, marked alike. "set" and "lost" are a set of the channel that is acknowledged or times out;
/// "answer", "lose" and "refuse" end the query that was queued first; "always" says how queries end by themselves from
/// now on. "wait" lets seconds pass. "stray" is an acknowledgement that nobody waits for, "late" an unsolicited
/// message, "loss" a pulled cable, "drop" empties the queue. "doubt" asks whether a set's setting is in doubt. The
/// record has the second and the query, or "everything"; behind "hide" it names no query, for equal ones have no order.
class Conversation
{
public:
    Conversation()
    {
        QObject::connect(&m_rereading, &Rereading::everythingDue, [this] { note(u"everything"_s); });
        fillScript();
    }
    [[nodiscard]] QString record(const QString &lines)
    {
        m_script.play(lines);
        return m_record.join(u"; "_s);
    }

private:
    void fillScript()
    {
        m_script.on(u"pass"_s, [this](const QString &text) { pass(text.split(u' ', Qt::SkipEmptyParts)); });
        m_script.on(u"end"_s, [this](const QString &text) { endQuery(text); });
        m_script.on(u"set"_s, [this](const QString &text) { endSet(text, Completed); });
        m_script.on(u"lost"_s, [this](const QString &text) { endSet(text, TimedOut); });
        m_script.on(u"answer"_s, [this](const QString &) { endFirst(Completed); });
        m_script.on(u"lose"_s, [this](const QString &) { endFirst(TimedOut); });
        m_script.on(u"refuse"_s, [this](const QString &) { endFirst(Failed); });
        m_script.on(u"always"_s, [this](const QString &text) {
            m_always = statusOf(text);
            takeQueued();
        });
        m_script.on(u"hide"_s, [this](const QString &) { m_hidesNames = true; });
        m_script.on(u"wait"_s, [this](const QString &text) { wait(text.toInt()); });
        m_script.on(u"stray"_s, [this](const QString &) { check().noteStrayAnswer(); });
        m_script.on(u"late"_s, [this](const QString &text) {
            check().noteUnsolicited(StandardCommand::fromCard(text));
            takeQueued();
        });
        m_script.on(u"loss"_s, [this](const QString &) {
            m_rereading.noteLoss();
            m_rereading.giveUp();
        });
        m_script.on(u"drop"_s, [this](const QString &) {
            m_queries.clear();
            m_rereading.noteBackgroundDropped();
        });
        m_script.on(u"doubt"_s, [this](const QString &text) {
            note(check().isInDoubt(command(text, StandardCommand::Set)) ? u"in doubt"_s : u"certain"_s);
        });
    }
    static StandardCommand::CommandStatus statusOf(const QString &word)
    {
        return word == "lose"_L1 ? TimedOut : word == "refuse"_L1 ? Failed : Completed;
    }
    [[nodiscard]] SettingsCheck &check() { return m_rereading.check(); }
    [[nodiscard]] static StandardCommand command(const QString &text, StandardCommand::CommandType type)
    {
        const QString data = text.section(u':', 2);
        const QString mnemonic = text.section(u':', 1, 1);
        return type == StandardCommand::Set ? StandardCommand::set(nullptr, text.section(u':', 0, 0), mnemonic, data)
                                            : StandardCommand::query(nullptr, text.section(u':', 0, 0), mnemonic, data);
    }
    void note(const QString &what) { m_record += QString::number(m_now / 1000) + u' ' + what; }

    void pass(QStringList queries)
    {
        const bool isAcknowledged = !queries.removeOne(u"TRON?"_s);
        m_rereading.begin();
        for (const QString &text : queries)
            endQuery(text);
        StandardCommand reports = command(u"U0:TRON:ON"_s, StandardCommand::Set);
        end(reports, isAcknowledged ? Completed : TimedOut);
    }
    void endQuery(const QString &text)
    {
        const bool isAnswered = !text.endsWith(u'?') && !text.endsWith(u'!');
        StandardCommand query = command(isAnswered ? text : text.chopped(1), StandardCommand::Query);
        end(query, isAnswered ? Completed : text.endsWith(u'?') ? TimedOut : Failed);
    }
    void endSet(const QString &text, StandardCommand::CommandStatus status)
    {
        StandardCommand set = command(text, StandardCommand::Set);
        set.setStatus(status);
        (void)m_rereading.noteEnd(set, true);
        check().noteSet(set);
        takeQueued();
    }
    void end(StandardCommand &query, StandardCommand::CommandStatus status)
    {
        query.setStatus(status);
        (void)m_rereading.noteEnd(query, true);
        takeQueued();
    }
    void endFirst(StandardCommand::CommandStatus status)
    {
        if (m_queries.empty())
            return note(u"nothing queried"_s);
        const auto query = std::move(m_queries.front());
        m_queries.pop_front();
        end(*query, status);
    }
    void takeQueued()
    {
        for (auto &query : std::exchange(m_link.queued, {})) {
            note(m_hidesNames ? u"query"_s : query->commandText().sliced(1).chopped(1));
            m_queries.push_back(std::move(query));
        }
        while (m_always && !m_queries.empty())
            endFirst(*m_always);
    }
    void wait(int seconds)
    {
        for (const qint64 until = m_now + seconds * qint64(1000); m_now < until;) {
            m_now += 1000;
            m_rereading.watchReports();
            check().askNext();
            takeQueued();
        }
    }

    qint64 m_now = 0;
    StubLink m_link;
    Rereading m_rereading{ m_link, [this] { return m_now; }, [] { return true; } };
    std::deque<std::unique_ptr<StandardCommand>> m_queries;
    std::optional<StandardCommand::CommandStatus> m_always;
    bool m_hidesNames = false;
    QStringList m_record;
    Script m_script;
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

/// What is read again, and when: no port, and a clock that the test sets.
class RereadingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conversation_data();
    void conversation();
    void strayAnswersAreBounded();
    void silence();
    void changedCardLists_data();
    void changedCardLists();
};

void RereadingTest::conversation_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("record");
    const auto row = [](const char *name, const char *lines, const char *record) {
        QTest::newRow(name) << QString::fromLatin1(lines) << QString::fromLatin1(record);
    };
    // Passes over all settings
    row("all answered", "pass R1:A R1:B R1:C; wait 100", "");
    row("one answer lost", "pass R1:A R1:B? R1:C; answer; wait 100", "0 R1:B");
    row("one refused", "pass R1:A R1:B! R1:C; answer; wait 100", "0 R1:B");
    row("unanswered in a row, known nowhere", "pass R1:A R1:B? R1:C? R1:D? R1:E; lose; wait 300", "0 R1:C");
    row("away for a while", "pass R1:A R1:B? R1:C? R1:D? R1:E; answer; wait 300", "0 R1:C; 0 everything");
    row("away twice in one pass", "pass R1:A? R1:B? R1:C R1:D? R1:E?; lose; answer", "0 R1:B; 0 R1:E; 0 everything");
    row("a known setting is probed twice", "pass R1:A R1:B; pass R1:A? R1:B?; lose; answer",
        "0 R1:B; 0 R1:B; 0 everything");
    row("but not three times", "pass R1:A R1:B; pass R1:A? R1:B?; lose; lose; wait 300", "0 R1:B; 0 R1:B");
    row("lossy line: the lost queries at once, everything later",
        "pass R1:A R1:B; pass R1:A? R1:B?; answer; pass R1:A? R1:B?; answer; answer; answer; wait 41",
        "0 R1:B; 0 everything; 0 R1:B; 0 R1:A; 0 R1:B; 40 everything; 41 everything");
    row("link lost behind the pass", "pass R1:A? R1:B?; loss; answer", "0 R1:B");
    row("no report requested", "pass TRON?; wait 9; pass; wait 100", "");
    row("requests for reports that get no answer", "pass TRON?; wait 10; pass TRON?; wait 20",
        "10 everything; 30 everything");

    // Single settings
    row("acknowledged", "pass R1:A; set R1:A:1; doubt R1:A:2; wait 100", "0 certain");
    row("unanswered set", "pass R1:A; lost R1:A:1; doubt R1:A:2; answer; doubt R1:A:2; wait 100",
        "0 R1:A; 0 in doubt; 0 certain");
    row("a register", "pass; lost D1:CDRG:851234; answer", "0 D1:RDRG:85");
    row("its check is lost, and answered late", "pass R1:A; lost R1:A:1; lose; wait 4; answer; wait 100",
        "0 R1:A; 4 R1:A");
    row("its check is answered too soon behind a lost one",
        "pass R1:A; lost R1:A:1; lose; wait 2; lost R1:A:1; wait 2; "
        "answer; wait 100",
        "0 R1:A; 4 R1:A");
    row("set soon behind a time-out", "pass R1:A R1:B; lost R1:A:1; answer; wait 7; set R1:B:1; answer; wait 100",
        "0 R1:A; 7 R1:B");
    row("set long behind a time-out", "pass R1:A R1:B; lost R1:A:1; answer; wait 8; set R1:B:1; wait 100", "0 R1:A");
    row("stray acknowledgement soon behind a set", "pass R1:A; set R1:A:1; wait 4; stray; wait 0; wait 1; answer",
        "5 R1:A");
    row("stray acknowledgement long behind a set", "pass R1:A; set R1:A:1; wait 5; stray; wait 100", "");
    row("stray acknowledgement before the first pass", "set R1:A:1; stray; pass R1:A; wait 100", "");
    row("refused query: the refusal may be that of a set", "pass R1:A R1:B; set R1:A:1; end R1:B!; answer; wait 100",
        "0 R1:A");
    row("late answer from before the last set",
        "pass R1:A R1:B; lost R1:A:1; answer; set R1:B:2; answer; wait 3; late R1:B:1; answer; wait 100",
        "0 R1:A; 0 R1:B; 3 R1:B");
    row("unsolicited value on a healthy line", "pass R1:A; set R1:A:1; late R1:A:2; wait 100", "");
    row("card that answers nothing", "pass R1:A; always lose; lost R1:A:1; wait 170",
        "0 R1:A; 4 R1:A; 8 R1:A; 12 R1:A; 16 R1:A; 20 R1:A; 24 R1:A; 28 R1:A; 32 R1:A; 36 R1:A; 40 R1:A; 44 R1:A; "
        "104 R1:A; 164 R1:A");
    row("setting that was never answered", "pass; always lose; lost R1:A:1; wait 170",
        "0 R1:A; 4 R1:A; 8 R1:A; 12 R1:A; 16 R1:A");
    row("settings that the card does not know", "hide; pass R1:A? R1:B R1:C? R1:D R1:E?; always lose; wait 100",
        "0 query; 10 query; 20 query");
    row("one answer shows that the others were lost", "hide; pass R1:A? R1:B R1:C? R1:D R1:E?; always answer; wait 100",
        "0 query; 0 query; 0 query");
    row("a card that answers goes first",
        "pass R1:A R1:B R2:A; lost R1:A:1; lose; lost R1:B:1; wait 3; lost R2:A:1; answer; wait 1",
        "0 R1:A; 3 R2:A; 4 R1:B");
    row("the background was dropped", "pass R1:A R1:B; lost R1:A:1; drop; lost R1:B:1; wait 100", "0 R1:A; 0 R1:B");
    row("while the link is lost", "pass R1:A R1:B; loss; lost R1:A:1; wait 10; pass R1:B; answer; wait 100", "10 R1:A");
}

void RereadingTest::conversation()
{
    QFETCH(const QString, lines);
    QFETCH(const QString, record);
    QCOMPARE(Conversation().record(lines), record);
}

/// A far end that acknowledges endlessly does not cause endless queries.
void RereadingTest::strayAnswersAreBounded()
{
    const QString strays = u"stray; "_s.repeated(300);
    QCOMPARE(Conversation().record(u"pass R1:A; set R1:A:1; always answer; "_s + strays + u"wait 20"_s), u"1 R1:A"_s);
}

/// Who is read again for silence, and when.
void RereadingTest::silence()
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
    off.run(3000, never);
    QCOMPARE(off.readings(), (QList<int>{ 70, 91, 132, 213, 374, 695, 1336, 1977, 2618 }));
    Silence offTwice(true); // reports again as soon as it is requested to
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

void RereadingTest::changedCardLists_data()
{
    QTest::addColumn<QString>("lists"); // "|" stands for a restart
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<bool>("hasChanged");
    QTest::newRow("the same") << u"A A"_s << u"++"_s << false;
    QTest::newRow("damaged once") << u"B A"_s << u"-+"_s << false;
    QTest::newRow("changed") << u"B B"_s << u"-+"_s << true;
    QTest::newRow("damaged differently") << u"B C B"_s << u"---"_s << false;
    QTest::newRow("changed with a break") << u"B A B"_s << u"-+-"_s << false;
    QTest::newRow("changed before and behind a restart") << u"B | B B"_s << u"--+"_s << true;
    QTest::newRow("changed and damaged") << u"B B C"_s << u"-+-"_s << true;
    QTest::newRow("changed back") << u"B B A"_s << u"-++"_s << false;
}

void RereadingTest::changedCardLists()
{
    QFETCH(const QString, lists);
    QFETCH(const QString, accepted);
    QFETCH(const bool, hasChanged);
    CardListWatch watch;
    watch.setKnown(u"A"_s);
    QString verdicts;
    for (const QString &list : lists.split(u' ')) {
        if (list == "|"_L1)
            watch.restart();
        else
            verdicts += watch.note(list) ? u'+' : u'-';
    }
    QCOMPARE(verdicts, accepted);
    QCOMPARE(watch.hasChanged(), hasChanged);
}

QTEST_GUILESS_MAIN(RereadingTest)
#include "tst_rereading.moc"
