#include "support/ClientView.h"
#include "support/LiveHead.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int kSample = 12; // of some hundred answers; ZIRVO_EVERY_LOSS in the environment stands for all of them
constexpr int kFirst = 4;   // those that the rest depends on
constexpr int kAgreeMs = 20'000;
const QString kFamily = u"gaps"_s;

/// The cards of a chassis whose first places are empty.
QByteArray family(const QByteArray &cards, const QByteArray &rest)
{
    return R"({ "title": "one card", "cards": [ )" + cards +
           R"( ], "system": { "VER": "ZIRVO-1", "SYSOPT": "1", )"
           R"("SDM2": "2", "TLST": ")" +
           (rest.contains("tmoip") ? "TM2 2.1" : "") + R"(" }, )" + rest + " }";
}

} // namespace

/// A head that loses an answer while it starts, and a chassis whose channels are not the first of their kind: in the
/// end everything is known, shown and pushed under the right address, without a restart.
class StartLossesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void atStart_data();
    void atStart();
    void loneChannel_data();
    void loneChannel();

private:
    static void verifyTmoipWindow(const LiveHead &head);

    ClientView m_whole; ///< what is known when nothing is lost
    int m_answers = 0;  ///< to the requests of a start
};

void StartLossesTest::initTestCase()
{
    SimulatedChassis chassis({ u"--family"_s, kFamily });
    LiveHead head;
    QVERIFY(head.start(false));
    m_whole = ClientView::read(chassis);
    QCOMPARE(m_whole.differences(chassis, m_whole).join(u'\n'), QString());
    m_answers = int(chassis.requests().size());
    QVERIFY(m_answers > 150);
}

void StartLossesTest::atStart_data()
{
    QTest::addColumn<int>("answer");
    QRandomGenerator random(1);
    QList<int> answers;
    for (int answer = 1; answer <= m_answers; ++answer)
        answers += answer;
    if (!qEnvironmentVariableIsSet("ZIRVO_EVERY_LOSS")) {
        std::shuffle(answers.begin() + kFirst, answers.end(), random);
        answers.resize(kSample);
    }
    for (const int answer : std::as_const(answers))
        QTest::addRow("%d", answer) << answer;
}

void StartLossesTest::atStart()
{
    QFETCH(int, answer);
    SimulatedChassis chassis({ u"--family"_s, kFamily });
    QVERIFY(chassis.order("lose #" + QByteArray::number(answer)).startsWith("ok"));
    LiveHead head;
    QVERIFY(head.start(false));
    QCOMPARE(ClientView::differencesAfter(kAgreeMs, chassis, m_whole).join(u'\n'), QString());
}

void StartLossesTest::loneChannel_data()
{
    QTest::addColumn<QByteArray>("family");
    QTest::addColumn<QByteArray>("readings"); // that the client gets
    QTest::addColumn<QByteArray>("list");     // of a box, and how many items it has
    QTest::addColumn<QByteArray>("change");   // what the next item of that box sends
    QTest::addColumn<QString>("shown");       // a widget with a reading, its property, and what it may be
    const auto row = [](const char *tag, const QByteArray &text, const char *readings, const char *list,
                        const char *change, const char *shown) {
        QTest::newRow(tag) << text << QByteArray(readings) << QByteArray(list) << QByteArray(change)
                           << QString::fromLatin1(shown);
    };
    row("receiver",
        family(R"("0104 MPU 1 QLN424W F1 A", "0122 FPGA1 1 QLN424W F1 A")",
               R"("receivers": { "R2": { "IFBW": "4" } })"),
        "R2:SSLV R2:AGCA", "cboIFBWch1 7", "R2:IFBW:5", "progBarSSLVch1 format -[0-9]+ dBm");
    const QByteArray demodulator = R"("demodulators": { "D2": { "DMOD": "0" } })";
    row("demodulator", family(R"("0102 K414V 5 QLN424V F2 A")", demodulator), "D2:FOFF D2:DLCK D2:EYEP",
        "cboDemodModedmd1 13", "D2:DMOD:1", "lblFreqOffsetValdmd1 text -?[0-9]+[.][0-9] KHz");
    row("older demodulator", family(R"("DEMOD2 DEMOD 4.2.0 K3060 F3")", demodulator), "D2:FOFF D2:DLCK D2:EYEP",
        "cboInputSourcedmd1 6", "U0:SDM2:3", "lblFreqOffsetValdmd1 text -?[0-9]+[.][0-9] KHz");
    row("TMoIP card", family("", R"("tmoip": { "TM2-0": { "ADDR": "10.9.2.20" } })"),
        "TM2-0:TIME TM2-1:STAT TM2-3:STAT", "", "", "");
}

/// The second of its kind, without the first.
void StartLossesTest::loneChannel()
{
    QFETCH(QByteArray, family);
    QFETCH(QByteArray, readings);
    QFETCH(QByteArray, list);
    QFETCH(QByteArray, change);
    QFETCH(QString, shown);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"family"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(family), family.size());
    file.close();
    SimulatedChassis chassis({ u"--family"_s, file.fileName() });
    LiveHead head;
    QVERIFY(head.start(false));
    const ClientView view = ClientView::read(chassis);
    QCOMPARE(view.differences(chassis, view).join(u'\n'), QString());
    if (readings.startsWith('D'))
        QCOMPARE(chassis.order("set D2 DSDM 2"), "ok"_ba); // sample blocks
    const QByteArray watched = chassis.client({ u"watch"_s, u"--for"_s, u"2"_s }).output;
    for (const QByteArray &key : readings.split(' '))
        QVERIFY2(watched.count(' ' + key + ' ') >= 3, key);
    if (list.isEmpty())
        return verifyTmoipWindow(head);

    auto *const box = head.window().findChild<QComboBox *>(QString::fromLatin1(list.split(' ')[0]));
    QVERIFY(box);
    QVERIFY(box->isVisible());
    QCOMPARE(box->count(), list.split(' ')[1].toInt());
    QTest::keyClick(box, Qt::Key_Down);
    QVERIFY(waitUntil([&] { return chassis.values().contains(change); }));
    QCOMPARE(ClientView::differencesAfter(kAgreeMs, chassis, view).join(u'\n'), QString());
    const QWidget *const widget = head.window().findChild<QWidget *>(shown.section(u' ', 0, 0));
    const QRegularExpression wanted(QRegularExpression::anchoredPattern(shown.section(u' ', 2)));
    QVERIFY(widget && waitUntil([&] {
                const QVariant value = widget->property(shown.section(u' ', 1, 1).toLatin1());
                return wanted.match(value.toString()).hasMatch();
            }));
}

void StartLossesTest::verifyTmoipWindow(const LiveHead &head)
{
    head.window().on_actionTMoIP_triggered();
    const QList<QLineEdit *> lines = head.window().findChildren<QLineEdit *>();
    QVERIFY(std::any_of(lines.begin(), lines.end(),
                        [](const QLineEdit *line) { return line->isVisible() && line->text() == u"10.9.2.20"; }));
}

QTEST_MAIN(StartLossesTest)
#include "tst_start_losses.moc"
