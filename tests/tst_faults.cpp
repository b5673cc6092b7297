#include "channels/UniversalChan.h"
#include "link/EyeConstData.h"
#include "link/LinkGuard.h"
#include "support/Keys.h"
#include "support/Script.h"
#include "support/WindowBench.h"

#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Link = SerialPortController;
using Step = WindowBench::Step;

struct LinkName
{
    QString name;
    Link::PORT_TYPE type;
    FarEnd &(LinkBench::*far)();
    QString words; ///< what the status line calls it
};
const QList<LinkName> kLinks{
    { u"command"_s, Link::COMMAND_LINK, &LinkBench::command, u"Chassis: "_s },
    { u"eye"_s, Link::EYE_CONST_LINK, &LinkBench::eye, u"Eye link: "_s },
    { u"remote"_s, Link::REMOTE_LINK, &LinkBench::remote, u"Remote: "_s },
    { u"status"_s, Link::REMOTE_EYE_AND_STATUS_LINK, &LinkBench::remoteEyeAndStatus, u"Remote status: "_s },
    { u"spectral"_s, Link::SPECTRAL_LINK, &LinkBench::spectral, u"Spectrum: "_s },
};

/// A block of serial data of the first demodulator.
constexpr auto kBlock = "\x02"
                        "ED1SD0000000002\x04";

const LinkName &linkNamed(const QString &name)
{
    return *std::ranges::find_if(kLinks, [&name](const LinkName &link) { return link.name == name; });
}

const QByteArrayList kAskedAgain{ "U0:VER", "U0:VERTSKB", "U0:SYSID:RACK-7", "U0:CLST", "U0:TRON:ON" };

/// What a start asks a channel of the bench's chassis.
QByteArrayList queries(const QString &address)
{
    if (address == "U0"_L1)
        return LinkBench::systemQueries();
    if (address.startsWith(u'R'))
        return LinkBench::receiverQueries(address.toLatin1());
    return address.startsWith(u'D') ? LinkBench::demodulatorQueries(address.toLatin1(), true) : QByteArrayList();
}

/// Puts in data that does not fit into a row.
QByteArray expanded(QByteArray text)
{
    QByteArray binary;
    for (int byte = 0; byte < 256; ++byte)
        binary +=
            byte == '\x02' || byte == '\x0D' || byte == '|' ? QByteArray() : QByteArray(1, static_cast<char>(byte));
    return text.replace("<100kB>", QByteArray(100'000, 'W')).replace("<binary>", binary);
}

} // namespace

/// Faults of the far ends as scripts, each with what then differs from a healthy head at rest.
///
/// Each line of a script waits for its condition, also while a box bars the window. See fillActs().
class FaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { fillActs(); }
    void init()
    {
        m_bench = std::make_unique<WindowBench>();
        m_requests.clear();
    }
    void cleanup() { m_bench.reset(); }

    void scenario_data();
    void scenario();

private:
    [[nodiscard]] FarEnd &chassis() { return m_bench->chassis(); }
    [[nodiscard]] FarEnd &far(const QString &link) { return (m_bench->links().*linkNamed(link).far)(); }
    [[nodiscard]] FarEnd &card() { return far(u"spectral"_s); }
    [[nodiscard]] Link *link(const QString &name);
    [[nodiscard]] QByteArrayList frames() { return chassis().framesSince(m_mark); }
    [[nodiscard]] QString outcome();
    void fillActs();
    void use(const QString &name);
    [[nodiscard]] bool isUsed(const QString &name);
    void expectReading();
    void pull(const QString &name);
    void putBack(const QString &name);
    void answer(const QByteArray &key);
    [[nodiscard]] bool isAskedOfCard(const QByteArray &frame);
    void doubleAnswers();
    void start(const QByteArray &seconds);
    [[nodiscard]] bool isRest();
    void timeOut();
    void play(const QString &script, const QString &wanted);

    std::unique_ptr<WindowBench> m_bench;
    QHash<QString, std::function<void(QByteArray)>> m_acts;
    QHash<QString, std::function<bool(const QByteArray &)>> m_waits;
    qsizetype m_mark = 0;
    QByteArrayList m_requests; ///< what a start since then has to ask once, beside every setting
    int m_fence = 0;
    int m_blocks = 0;
};

Link *FaultsTest::link(const QString &name)
{
    for (Link *candidate : m_bench->window().SerialPortControllers()) {
        if (candidate->portType() == linkNamed(name).type)
            return candidate;
    }
    return nullptr;
}

/// "" for a head at rest with everything as it was at start, else what differs.
QString FaultsTest::outcome()
{
    QStringList differences;
    const auto note = [&differences](const QString &what, const QVariant &is, const QVariant &healthy) {
        if (is != healthy)
            differences += what + u'=' + is.toString();
    };
    const bool isLive = m_bench->find<QWidget>(u"panelPage"_s).isVisible();
    note(u"live"_s, isLive, true);
    note(u"R1"_s, m_bench->find<QDoubleSpinBox>(u"doubleSpinBoxFREQch1"_s).text(), u"2250.5"_s);
    note(u"panels"_s,
         m_bench->find<QWidget>(u"groupBoxRcvr1"_s).isVisible() +
             m_bench->find<QWidget>(u"groupBoxRcvr2"_s).isVisible(),
         2);
    QStringList addresses;
    for (const Channel *channel : link(u"command"_s)->channels())
        addresses += channel->address();
    note(u"doubled channels"_s, addresses.removeDuplicates(), 0);
    note(u"channels"_s, addresses.size() - addresses.filter(u"SP"_s).size(), 3);
    note(u"boxes"_s, WindowBench::visible<QDialog>().size(), 0);
    QByteArrayList sent = frames();
    QByteArrayList missing = m_requests;
    for (const QString &address : m_requests.isEmpty() ? QStringList() : addresses)
        missing += queries(address);
    sent.removeAll("U0:TIME"); // the bench sets it, and it is read back behind what went wrong
    sent.removeIf([&missing](const QByteArray &frame) { return missing.removeOne(frame); });
    note(u"sent"_s, sent.join(','), QByteArray());
    note(u"not queried"_s, missing.join(','), QByteArray());
    const QByteArrayList &asked = card().frames();
    note(u"doubled on the spectral link"_s, asked.size() - QSet<QByteArray>(asked.begin(), asked.end()).size(), 0);
    for (const QString &text : m_bench->words()) {
        if (text.contains("no answer"_L1) || text.contains("refused"_L1) || text.contains("lost"_L1) ||
            text.contains("not present"_L1) || (text.startsWith("Chassis: "_L1) && text != "Chassis: live"_L1))
            differences += text;
    }
    for (const QWidget *window : WindowBench::visible<QWidget>())
        note(u"width"_s, qMax(1271, window->width()), 1271);
    return differences.join(u' ');
}

bool FaultsTest::isRest()
{
    const auto &queue = m_bench->commandLink()->txmtCmdQueue();
    return !queue.inFlight() && queue.waitingCount() == 0;
}

void FaultsTest::timeOut()
{
    m_bench->commandLink()->StopTimeOutTmr();
    m_bench->commandLink()->TimeOutTmr_Tick();
}

/// Uses the link once from its far end.
void FaultsTest::use(const QString &name)
{
    FarEnd &end = far(name);
    if (name == "eye"_L1) {
        connect(link(name), &Link::RcvdEyeConstData, this, [this] { ++m_blocks; });
        end.send(kBlock);
    } else if (name == "remote"_L1) {
        end.sendFrame("R1:IFBW?");
    } else if (name == "status"_L1) {
        chassis().sendFrame("R1:SSLV:-61");
    }
}

/// Whether what use() did has happened, and once.
bool FaultsTest::isUsed(const QString &name)
{
    const FarEnd &end = far(name);
    if (name == "eye"_L1)
        return std::exchange(m_blocks, 0) == 1;
    if (name == "remote"_L1)
        return end.frames().count("R1:IFBW:1\x06") == 1;
    if (name == "status"_L1)
        return end.frames().count("R1:SSLV:-61") == 1;
    return WindowBench::hasStarted(*link(name), end);
}

/// From here on every setting is re-read.
void FaultsTest::expectReading()
{
    m_mark = chassis().frames().size();
    m_requests = kAskedAgain;
}

void FaultsTest::pull(const QString &name)
{
    far(name).unplug();
    far(name).clear();
    m_mark = chassis().frames().size();
    Link *const open = link(name);
    if (!open)
        return;
    if (name == "command"_L1)
        expectReading();
    open->findChild<LinkGuard *>()->check();
}

void FaultsTest::putBack(const QString &name)
{
    far(name).plug();
    if (Link *const lost = link(name))
        lost->findChild<LinkGuard *>()->reopen();
}

/// The answer that was held back, if it is still waited for, and every later one.
void FaultsTest::answer(const QByteArray &key)
{
    chassis().behave(key);
    const StandardCommand *const asked = m_bench->commandLink()->txmtCmdQueue().inFlight();
    if (asked && (asked->address() + u':' + asked->mnemonic()).toLatin1() == key)
        chassis().sendFrame(key + ':' + chassis().value(key));
}

/// The spectral link's start goes on by this: the seconds that it lets pass are over at once.
bool FaultsTest::isAskedOfCard(const QByteArray &frame)
{
    (void)WindowBench::hasStarted(*link(u"spectral"_s), card());
    return card().frames().contains(frame);
}

void FaultsTest::doubleAnswers()
{
    chassis().setHandler([this](const QByteArray &frame) {
        if (const QByteArray value = chassis().value(frame); !value.isEmpty())
            chassis().sendFrame(frame + ':' + value);
    });
}

void FaultsTest::start(const QByteArray &seconds)
{
    qputenv("ZIRVO_STARTUP_SECONDS", seconds);
    chassis().setAnswering(true);
    m_requests = kAskedAgain + QByteArrayList{ "U0:TRON:OFF" };
    m_bench->start();
}

void FaultsTest::fillActs()
{
    const auto act = [this](const QString &verb, auto does) { m_acts[verb] = does; };
    const auto wait = [this](const QString &verb, auto holds) { m_waits[verb] = holds; };
    const auto frequency = [this] { return &m_bench->find<QDoubleSpinBox>(u"doubleSpinBoxFREQch1"_s); };

    // The chassis: sends frames, "|" between them, or holds answers back
    act(u"send"_s, [this](QByteArray t) { chassis().send('\x02' + t.replace("|", "\r\x02") + '\r'); });
    act(u"ignore"_s, [this](const QByteArray &t) { chassis().ignore(t); });
    act(u"answer"_s, [this](const QByteArray &t) { answer(t); });
    act(u"value"_s, [this](const QByteArray &t) { chassis().setValue(t.split('=')[0], t.split('=')[1]); });
    act(u"twice"_s, [this](const QByteArray &) { doubleAnswers(); });
    act(u"power"_s, [this](const QByteArray &t) { chassis().setAnswering(t == "on"); });
    // The card at the far end of the spectral link
    act(u"lacks"_s, [this](const QByteArray &t) { card().ignore(t); });
    act(u"has"_s, [this](const QByteArray &t) { card().behave(t); });
    wait(u"asked"_s, [this](const QByteArray &t) { return isAskedOfCard(t); });
    // The operator
    act(u"tune"_s, [frequency](const QByteArray &t) { enter(frequency(), QString::fromLatin1(t)); });
    act(u"half"_s, [this](const QByteArray &) { m_bench->typeHalfAnEntry(); });
    act(u"menu"_s, [this](const QByteArray &t) { m_bench->action(QString::fromLatin1(t)).trigger(); });
    act(u"press"_s, [](const QByteArray &t) { // wherever the operator can
        (QApplication::activeModalWidget() ? QApplication::activeModalWidget() : QApplication::activeWindow())
            ->findChild<QPushButton *>(QString::fromLatin1(t))
            ->click();
    });
    act(u"reread"_s, [this](const QByteArray &) { expectReading(); }); // everything is about to be re-read
    // Cables
    act(u"unplug"_s, [this](const QByteArray &t) { pull(QString::fromLatin1(t)); });
    act(u"plug"_s, [this](const QByteArray &t) { putBack(QString::fromLatin1(t)); });
    act(u"use"_s, [this](const QByteArray &t) { use(QString::fromLatin1(t)); });
    wait(u"used"_s, [this](const QByteArray &t) { return isUsed(QString::fromLatin1(t)); });
    // Time
    act(u"start"_s, [this](const QByteArray &t) { start(t); });
    act(u"tick"_s, [this](const QByteArray &) { m_bench->commandLink()->EstablishCommTmr_Tick(); });
    act(u"timeout"_s, [this](const QByteArray &) { timeOut(); });
    act(u"limit"_s, [this](const QByteArray &) { m_bench->runningTimer(60'000)->start(1); });
    // What is waited for: a frame, a box, a text in the status line, that nothing is under way
    wait(u"await"_s, [this](const QByteArray &t) { return frames().contains(t); });
    wait(u"box"_s, [](const QByteArray &) { return QApplication::activeModalWidget() != nullptr; });
    wait(u"nobox"_s, [](const QByteArray &) { return !QApplication::activeModalWidget(); });
    wait(u"words"_s,
         [this](const QByteArray &t) { return m_bench->words().join(u'|').contains(QString::fromLatin1(t)); });
    wait(u"timeouts"_s, [this](const QByteArray &) { return timeOut(), isRest(); });
    act(u"fence"_s, [this](const QByteArray &) { chassis().sendFrame("U0:LAGC:" + QByteArray::number(++m_fence)); });
    wait(u"passed"_s,
         [this](const QByteArray &) { return m_bench->system()->getLAGC() == QString::number(m_fence) && isRest(); });
}

void FaultsTest::play(const QString &script, const QString &wanted)
{
    QString heard;
    QList<Step> steps;
    for (const auto &[verb, line] : Script::split(QString(script).replace(u"settle"_s, u"fence; passed"_s))) {
        const QByteArray text = expanded(line.toUtf8());
        if (!m_acts.contains(verb) && !m_waits.contains(verb))
            qFatal("no such act: %s", qPrintable(verb));
        const auto when = m_waits.value(verb, [](const QByteArray &) { return true; });
        const auto then = m_acts.value(verb, [](const QByteArray &) {});
        steps += { [when, text] { return when(text); }, [then, text] { then(text); } };
    }
    const auto end = [this, &heard] {
        heard = outcome();
        while (auto *const open = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
            open->done(QDialog::Rejected);
    };
    steps += { { [] { return true; }, [] {} }, { [] { return true; }, end } }; // behind what waits in queued calls
    m_mark = chassis().frames().size();
    QVERIFY2(WindowBench::takeSteps(steps), qPrintable(outcome().left(1000)));
    QCOMPARE(heard, wanted);
}

namespace {

void row(const char *name, const QString &script, const QString &outcome) { QTest::newRow(name) << script << outcome; }

/// A head that is live.
void addWireFaults()
{
    const QString unanswered = u"live; ignore R1:FREQ; tune 2260.5; await R1:FREQ:2260.5; timeout; settle"_s;
    const QString gaveUp = u"sent=R1:FREQ:2260.5,R1:FREQ R1 FREQ: no answer"_s;
    row("no answer", unanswered, gaveUp);
    row("ACK behind the time-out", unanswered + u"; send \x06; settle"_s, gaveUp);
    row("NAK behind the time-out", unanswered + u"; send \x15; settle"_s, gaveUp);
    row("value reported behind the time-out", unanswered + u"; send R1:FREQ:2260.5; settle"_s,
        u"R1=2260.5 "_s + gaveUp);
    row("ACK twice", u"live; tune 2260.5; await R1:FREQ:2260.5; send \x06; settle; tune 2261.5; settle"_s,
        u"R1=2261.5 sent=R1:FREQ:2260.5,R1:FREQ,R1:FREQ:2261.5"_s);

    // Afterwards the panel still takes an entry.
    const auto mnemonics =
        u"R1:FREQ R1:IFBW R1:IFLS R1:NAME R1:AGCF R1:AGCZ R1:SLPA R1:POLA R1:AFC R1:AFCM R1:CAMP "_s
        u"R1:ANCF R1:ACFE R1:SSLV R1:AGCA R1:SYNL R1:RLST R1:XXXX R9:FREQ U0:NAME U0:SLAVE U0:TMRF "_s
        u"U0:PDONE U0:UPDT U0:PLIST U0:CLST U0:VER U0:SDM1"_s;
    for (const auto &[name, data] :
         { std::pair("nothing", u""_s), std::pair("100 kB", u"<100kB>"_s), std::pair("all bytes", u"<binary>"_s),
           std::pair("letters beyond ASCII", u"Zähler µ"_s),
           std::pair("numbers out of range", u"-99999999999999999999"_s), std::pair("no number", u"nan"_s) }) {
        const QString frames = QString(mnemonics).replace(u' ', u':' + data + u'|') + u':' + data;
        QTest::addRow("data: %s", name) << u"live; send "_s + frames + u"; settle; tune 2260.5; settle"_s
                                        << u"R1=2260.5 sent=R1:FREQ:2260.5"_s;
    }
    row("no list of presets", u"live; ignore U0:PLIST; menu actionLoadPreset; await U0:PLIST; timeout; settle"_s,
        u"sent=U0:PLIST U0 PLIST: no answer"_s);
    row("preset name of 100 kB", u"live; value U0:PLIST=<100kB> ; menu actionLoadPreset; box; settle"_s,
        u"boxes=1 sent=U0:PLIST"_s);

    row("power cut while a preset is loaded",
        u"live; send U0:PDONE:0; box; power off; send loading|boot 1.2; power on; limit; nobox; settle"_s, {});
    row("power cut behind an open dialog",
        u"live; value U0:PLIST=a b ; menu actionLoadPreset; box; power off; send loading; "_s
        u"press btnLoad; nobox; await U0:RESTORE:a; timeout; settle; power on; tune 2260.5; settle"_s,
        u"R1=2260.5 sent=U0:PLIST,U0:RESTORE:a,R1:FREQ:2260.5,R1:FREQ U0 RESTORE: no answer"_s);
}

/// A head that starts.
void addStartFaults()
{
    const QString asks = u"start 0; tick; "_s;
    row("start: no setting answered",
        u"ignore U0:NAME; "_s + asks +
            u"await U0:NAME; power off; timeouts; "_s
            u"words waiting for the chassis; reread; answer U0:NAME; power on; words Chassis: live; settle"_s,
        {});
    row("start: answers before their questions",
        u"ignore R1:FREQ; "_s + asks +
            u"await R1:FREQ; send R2:FREQ:2299.5|R1:NAME:X|R1:FREQ:2251.5; used command; settle"_s,
        u"R1=2251.5"_s);
    row("start: every answer twice", u"twice; "_s + asks + u"used command; settle"_s, {});
    row("start: power cut while settings are read",
        u"ignore R1:FREQ; "_s + asks +
            u"await R1:FREQ; power off; timeout; await R1:IFLS; timeout; send loading; power on; answer R1:FREQ; "_s
            u"words waiting for the chassis; reread; words Chassis: live; settle"_s,
        {});
    const QString first = u"value U0:CLST=0103 MPU 2.3 TUNER A1 X,0121 FPGA1 1.9 TUNER A1 X,"_s;
    row("start: card list cut off", first + u"0104 MPU 2.3 TU; "_s + asks + u"used command; settle"_s,
        u"panels=1 channels=2"_s);
    row("start: card list of 100 kB", first + u"<100kB>; "_s + asks + u"used command; settle"_s,
        u"panels=1 channels=2"_s);
}

/// Every cable pulled and put back in every phase in which its link is open.
void addPulledCables()
{
    const auto rows = [](const char *phase, const QString &before, const QString &after, const QString &outcome) {
        for (const LinkName &link : kLinks) {
            QTest::addRow("%s, %s", phase, qPrintable(link.name))
                << before + u"; unplug %1; words %2lost; plug %1; use %1; used %1; "_s.arg(link.name, link.words) +
                       after + u"; settle"_s
                << outcome;
        }
    };
    row("countdown", u"start 3; tick; unplug command; plug command; used command; settle"_s, {});
    row("spectral link: countdown",
        u"live; unplug spectral; words Spectrum: lost; plug spectral; used spectral; settle"_s, {});
    for (const auto &[phase, request, cardRequest] :
         { std::tuple("version asked", u"U0:VER"_s, u"U0:VER"_s), std::tuple("cards asked", u"U0:CLST"_s, u"U0:CLST"_s),
           std::tuple("settings read", u"R2:AGCF"_s, u"SP2:SPAN"_s) }) {
        QTest::addRow("%s", phase) << u"ignore %1; start 0; tick; await %1; unplug command; plug command; answer %1; "
                                      "used command; settle"_s.arg(request)
                                   << QString();
        QTest::addRow("spectral link: %s", phase)
            << u"live; lacks %1; asked %1; unplug spectral; words Spectrum: lost; plug spectral; has %1; "
               "used spectral; settle"_s.arg(cardRequest)
            << QString();
    }
    for (const LinkName &link : kLinks) {
        const QString isLive = link.name == "command"_L1 ? QString() : u"used command; "_s;
        QTest::addRow("absent at start, %s", qPrintable(link.name))
            << u"unplug %1; start 0; "_s.arg(link.name) + isLive +
                   u"words %2not present; box; plug %1; nobox; use %1; used %1; used command; settle"_s.arg(link.name,
                                                                                                            link.words)
            << QString();
    }
    rows("live", u"live; used spectral"_s, u"tune 2260.5"_s, u"R1=2260.5 sent=R1:FREQ:2260.5"_s);
    row("cards changed meanwhile",
        u"live; unplug command; value U0:CLST=0103 MPU 2.3 TUNER A1 X; plug command; "_s
        u"words cards changed; tune 2260.5; settle"_s,
        u"R1=2260.5 sent=U0:CLST,R1:FREQ:2260.5 Chassis: live; cards changed, restart to apply"_s);
    rows("half an entry", u"live; half"_s, u"settle"_s, u"R1=2300"_s);
    rows("wait box", u"live; send U0:PDONE:0; box"_s, u"send U0:PDONE:1; nobox"_s, {});
    rows("preset dialog", u"live; value U0:PLIST=a b ; menu actionLoadPreset; box"_s, u"press btnLoad; nobox"_s,
         u"sent=U0:RESTORE:a"_s);
    rows("advanced window", u"live; press btnAdvanceddmd1"_s, u"settle"_s, u"channels=4 boxes=1"_s);
}

} // namespace

void FaultsTest::scenario_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("outcome");
    addWireFaults();
    addStartFaults();
    addPulledCables();
}

void FaultsTest::scenario()
{
    QFETCH(QString, script);
    QFETCH(QString, outcome);
    if (script.contains("Advanced"_L1))
        m_bench->links().fit({ LinkBench::kReceivers, "DEMOD1 MPU 1.2 K3050 S1" });
    card().setAnswering(true);
    card().setHandler([this](const QByteArray &frame) {
        if (frame == "U0:SYSID") // it gets no identifier
            card().ack();
    });
    if (script.startsWith("live; "_L1)) {
        QVERIFY(m_bench->goLive());
        script.remove(0, 6);
    }
    play(script, outcome);
}

QTEST_MAIN(FaultsTest)
#include "tst_faults.moc"
