#include "channels/RcvrChan.h"
#include "channels/SpectralChan.h"
#include "channels/UniversalChan.h"
#include "dialogs/system/CardConfigWindow.h"
#include "dialogs/system/SysChanNamingWindow.h"
#include "support/Wait.h"
#include "support/WindowBench.h"

#include <QtTest>
#include <QtWidgets>

using namespace Qt::StringLiterals;

/// The links behind the window: what they serve, and what the window shows of their state.
class WindowLinksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<WindowBench>(); }
    void cleanup() { m_bench.reset(); }

    void spectralLink();
    void linkStates();

private:
    [[nodiscard]] FarEnd &chassis() { return m_bench->chassis(); }
    [[nodiscard]] QString words();

    std::unique_ptr<WindowBench> m_bench;
};

/// The channels of the spectral link, and a late TMoIP card, are added to the links that serve them.
void WindowLinksTest::spectralLink()
{
    QVERIFY(m_bench->goLive());
    const auto &links = m_bench->window().SerialPortControllers();
    FarEnd &card = m_bench->links().spectral();
    card.setAnswering(true);
    for (int tick = 0; tick < 3; ++tick)
        links[4]->EstablishCommTmr_Tick();
    QVERIFY(card.waitForFrame("U0:TRON:ON"));
    m_bench->report({ "U0:TLST:TM1" });
    QVERIFY(chassis().waitForFrame("TM1-3:ENDN"));

    QStringList served;
    for (const SerialPortController *const link : links) {
        QStringList addresses;
        for (const Channel *const channel : link->channels())
            addresses += channel->address();
        served += addresses.join(u' ');
    }
    QCOMPARE(served, (QStringList{ u"U0 R1 R2 SP1 SP2 SP3 TM1-0"_s, u"U0 R1 R2"_s, u"U0 R1 R2 SP1 SP2 SP3 S1 TM1-0"_s,
                                   u"U0 R1 R2 SP1 SP2 SP3 S1 TM1-0"_s, u"U0 SP1 SP2 SP3 S1"_s }));
    card.sendFrame("SP2:RFFT:7f7e");
    QVERIFY(waitUntil([&] { return qobject_cast<SpectralChan *>(links[4]->channels()[2])->getRFFT() == u"7f7e"; }));
}

/// The texts of the status line and of the stale marks, each between two "|".
QString WindowLinksTest::words()
{
    QStringList texts = m_bench->words();
    for (const QLabel *label : m_bench->window().findChildren<QLabel *>()) {
        if (label->isVisible() && label->text().startsWith("STALE: "_L1))
            texts += label->text();
    }
    return u'|' + texts.join(u'|') + u'|';
}

void WindowLinksTest::linkStates()
{
    const auto has = [this](const QString &text) { return words().contains(text); };
    int marked = 2; // panels, and windows
    const auto isStale = [&](const QString &why) { return words().count(u"STALE: "_s + why + u'|') == marked; };
    m_bench->start();
    QVERIFY(has(u"|Chassis: opening|"_s));
    m_bench->commandLink()->EstablishCommTmr_Tick();
    QVERIFY(has(u"|Chassis: waiting for the chassis|"_s));
    chassis().ignore("R1:FREQ");
    chassis().ignore("R2:CATN"); // counted in every pass over the settings
    chassis().refuse("R2:CIF1");
    chassis().setAnswering(true);
    QVERIFY(chassis().waitForFrame("R1:FREQ"));
    auto *const progress = m_bench->window().statusBar()->findChild<QProgressBar *>();
    QVERIFY(has(u"|Chassis: reading settings|"_s));
    QVERIFY(progress->isVisible());
    QCOMPARE(progress->text(), u"15 of 62"_s);
    chassis().behave("R1:FREQ");
    chassis().sendFrame("R1:FREQ:2250.5");
    QVERIFY(m_bench->goLive());
    QVERIFY(has(u"|Last message 0 s ago, 1 time-out, 1 refusal|"_s));
    QVERIFY(!progress->isVisible());
    FarEnd &client = m_bench->links().remote();
    client.sendFrame("U0:REMOTE:1\x06"); // no query asked for it
    m_bench->report({ "R1:SSLV:-61" });
    QVERIFY(
        words().endsWith(u"|Chassis: live|Eye link: live|Remote: no client|Remote status: live|Spectrum: opening|"_s));
    client.setHandler([&client](const QByteArray &frame) {
        if (frame == "U0:REMOTE?")
            client.sendFrame("U0:REMOTE:1\x06");
    });
    m_bench->system()->RemoteStatusTimeOut();
    QVERIFY(waitUntil([&] { return has(u"|Remote: client present|"_s); }));
    QVERIFY(m_bench->open<CardConfigWindow>(u"actionSystemCardsConfiguration"_s));
    ++marked;
    QVERIFY(waitUntil([&] { return isStale(u"chassis silent"_s); }, 8000));

    QStringList times;
    for (int second = 0; second < 3; ++second)
        times += QTime::currentTime().addSecs(second).toString(u"hh:mm:ss"_s);
    m_bench->links().eye().unplug();
    chassis().unplug();
    const QRegularExpression lost(u"\\|Chassis: lost since (.{8})\\|Eye link: lost since (.{8})\\|"_s);
    QVERIFY(waitUntil([&] { return lost.match(words()).hasMatch(); }, 700));
    const QRegularExpressionMatch since = lost.match(words());
    QVERIFY2(times.contains(since.captured(1)) && times.contains(since.captured(2)), qPrintable(words()));
    auto *const naming = m_bench->open<SysChanNamingWindow>(u"actionSystemChannelNaming"_s);
    ++marked;
    QVERIFY(naming);
    QVERIFY(isStale(u"no link"_s));
    QVERIFY(m_bench->window().width() <= 1271);
    naming->close();
    --marked;
    m_bench->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&m_bench->window()));
    m_bench->typeHalfAnEntry();
    chassis().setValue("R2:FREQ", "2299.5");
    chassis().plug();
    m_bench->links().eye().plug();
    QVERIFY(waitUntil([&] { return has(u"|Chassis: waiting for the chassis|"_s) && isStale(u"no answer"_s); }));
    QVERIFY(waitUntil([&] { return has(u"|Chassis: reading settings|"_s) && isStale(u"re-reading settings"_s); }));
    QVERIFY(waitUntil([&] { return has(u"|Chassis: live|Eye link: live|"_s) && !has(u"STALE"_s); }));
    QVERIFY2(words().contains(QRegularExpression(u", [2-6] time-outs, [2-4] refusals\\|"_s)), qPrintable(words()));
    QCOMPARE(m_bench->find<QDoubleSpinBox>(u"doubleSpinBoxFREQch2"_s).value(), 2299.5);
    QCOMPARE(m_bench->find<QDoubleSpinBox>(u"doubleSpinBoxFREQch1"_s).text(), u"2300"_s);
    chassis().refuse("R1:AGCT");
    (void)m_bench->sentBy([this] { m_bench->receiver(0)->setAGCT(u"3"_s); });
    QVERIFY(has(u"|R1 AGCT: refused by the chassis|"_s));
}

QTEST_MAIN(WindowLinksTest)
#include "tst_window_links.moc"
