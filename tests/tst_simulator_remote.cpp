#include "support/SimHarness.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// What arrives before the pause that ends it.
QByteArray readAll(const Terminal &end)
{
    QByteArray all;
    for (QByteArray bytes; !(bytes = end.readBytes(200)).isEmpty();)
        all += bytes;
    return all;
}

} // namespace

/// The null modems between the head's two remote links and a client, in the shipped simulator.
class SimulatorRemoteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comeAndGo_data();
    void comeAndGo();
    void reachesNobodyLate();
    void holdsTheWriterBack();
};

void SimulatorRemoteTest::comeAndGo_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::newRow("remote") << "ttyUSB4"_ba;
    QTest::newRow("status") << "ttyUSB9"_ba;
}

void SimulatorRemoteTest::comeAndGo()
{
    QFETCH(QByteArray, device);
    const QByteArray role = QTest::currentDataTag();
    const QTemporaryDir folder;
    QFile trace(folder.filePath(u"trace"_s));
    SimHarness sim({ u"--trace"_s, trace.fileName() });
    const QString headPath = sim.path(QString::fromLatin1(device));
    const QString clientPath = sim.path(u"client-"_s + QString::fromLatin1(role));
    Terminal client;
    const auto come = [&] { return client.open(clientPath) && sim.shows("client-" + role + "=open"); };
    const auto traced = [&](const QByteArray &text) { return trace.seek(0) ? trace.readAll().count(text) : -1; };
    const QByteArray words = "\x02R1:FR\x02R1:FREQ?\r\xff";
    QVERIFY(sim.reopen(device.constData(), role));
    QVERIFY(trace.open(QIODevice::ReadOnly));
    for (int visit = 0; visit < 2; ++visit) {
        sim.write("R1:NAME:Nobody");
        QTRY_COMPARE(traced(" < " + role + " R1:NAME:Nobody\n"), visit + 1);
        QVERIFY(come());
        QCOMPARE(client.writeBytes(words), words.size());
        QCOMPARE(readAll(sim.terminal()), words);
        sim.write("R1:FREQ:2260.5");
        QCOMPARE(readAll(client), "\x02R1:FREQ:2260.5\r"_ba);
        sim.write("R1:NAME:Unread");
        QVERIFY(client.sees(POLLIN));
        client.close();
        QVERIFY(sim.shows("client-" + role + "=plugged"));
        QCOMPARE(traced(" > " + role + " R1:FREQ?\n"), visit + 1);
        QCOMPARE(traced("\n"), 4 * (visit + 1));
    }
    QVERIFY(come());
    QCOMPARE(sim.order("unplug client-" + role), "ok"_ba);
    QVERIFY(client.sees(POLLHUP));
    QVERIFY2(sim.shows(role + "=open"), "the other end stays");
    client.close();
    QVERIFY(!QFileInfo::exists(clientPath));
    QCOMPARE(sim.order("plug " + role), "ok"_ba);
    QVERIFY(come());
    QCOMPARE(sim.order("unplug " + role), "ok"_ba);
    QVERIFY(client.sees(POLLHUP));
    QVERIFY(sim.sees(POLLHUP));
    client.close();
    QVERIFY(!QFileInfo::exists(clientPath));
    QVERIFY(!QFileInfo::exists(headPath));
    QCOMPARE(sim.order("plug " + role), "ok"_ba);
    QVERIFY(sim.reopen(device.constData(), role));
    QVERIFY(come());
    QCOMPARE(client.writeBytes("again"), 5);
    QCOMPARE(readAll(sim.terminal()), "again"_ba);
}

/// Bytes that nobody read in time are not kept for the next client.
void SimulatorRemoteTest::reachesNobodyLate()
{
    SimHarness sim;
    Terminal client;
    const auto come = [&] { return client.open(sim.path(u"client-remote"_s)); };
    // Gone before the chassis looks.
    const auto visit = [&](const QByteArray &words) {
        const bool taken = come() && client.writeBytes(words) == words.size();
        client.close();
        return taken;
    };
    QVERIFY(sim.close());
    QVERIFY(visit("stale"));
    QVERIFY(sim.open("ttyUSB4", "remote"));
    QVERIFY(visit("brief"));
    QCOMPARE(readAll(sim.terminal()), "brief"_ba);
    QVERIFY(come());
    QVERIFY(sim.shows("client-remote=open"));
    while (sim.sees(POLLOUT, 200))
        QVERIFY(sim.terminal().writeBytes("stale") > 0);
    client.close();
    QVERIFY(sim.shows("client-remote=plugged"));
    QVERIFY(come());
    QVERIFY(sim.shows("client-remote=open"));
    QVERIFY(sim.sees(POLLOUT));
    QCOMPARE(sim.terminal().writeBytes("fresh"), 5);
    QCOMPARE(readAll(client), "fresh"_ba);
}

void SimulatorRemoteTest::holdsTheWriterBack()
{
    SimHarness sim;
    Terminal client;
    QVERIFY(sim.reopen("ttyUSB4", "remote"));
    QVERIFY(client.open(sim.path(u"client-remote"_s)));
    QVERIFY(sim.shows("client-remote=open"));
    QByteArray sent;
    for (int number = 0; sent.size() <= qsizetype(256) * 1024; ++number)
        sent += QByteArray::number(number) + ' ';
    qsizetype written = 0;
    const auto write = [&] { written += sim.terminal().writeBytes(QByteArrayView(sent).sliced(written)); };
    while (written < sent.size() && sim.sees(POLLOUT, 500))
        write();
    QVERIFY2(written < qsizetype(64) * 1024, "too much under way");
    QCOMPARE(client.writeBytes("other way"), 9); // only one way is blocked
    QCOMPARE(readAll(sim.terminal()), "other way"_ba);
    const auto secondsOnTheLine = double(sent.size() - written) / 92160;
    QElapsedTimer clock;
    clock.start();
    QByteArray arrived;
    for (QByteArray bytes; arrived.size() < sent.size() && !(bytes = client.readBytes()).isEmpty();) {
        arrived += bytes;
        if (written < sent.size()) {
            write();
            QVERIFY2(written < sent.size() || sim.close(), "the writer leaves over a full line");
        }
    }
    QVERIFY2(arrived == sent, "lost or out of order");
    QVERIFY2(double(clock.elapsed()) / 1000 >= secondsOnTheLine, "faster than the line");
}

QTEST_GUILESS_MAIN(SimulatorRemoteTest)
#include "tst_simulator_remote.moc"
