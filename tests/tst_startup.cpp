#include "support/LinkBench.h"

#include "link/SerialPortController.h"

#include <QSignalSpy>
#include <QTest>

/// The conversation from the first byte on the command link to the end of start-up.
class StartupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRequestInOrder();
};

void StartupTest::everyRequestInOrder()
{
    LinkBench bench;
    bench.command().setAnswering(true);
    SerialPortController link(nullptr, SerialPortController::COMMAND_LINK, QStringLiteral("RACK-7"));
    QSignalSpy allSettings(&link, &SerialPortController::AllSettingsObtained);
    link.StartEstablishCommTmr(20, nullptr);
    QVERIFY(bench.command().waitForFrame("U0:TRON:ON"));

    const QByteArrayList expected = QByteArrayList { "U0:TRON:OFF", "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7", "U0:CLST" }
        + LinkBench::systemQueries() + LinkBench::receiverQueries("R1") + LinkBench::receiverQueries("R2")
        + QByteArrayList { "U0:TRON:ON" };
    QCOMPARE(bench.command().frames(), expected);
    QCOMPARE(allSettings.count(), 1);
    QVERIFY(bench.command().bytes().startsWith("\x02U0:TRON:OFF\x0D\x02U0:VER\x0D"));
}

QTEST_MAIN(StartupTest)
#include "tst_startup.moc"
