#include "support/CommandLinkBench.h"

#include <QMap>
#include <QTest>

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Setter = std::function<void(Channel *, const QString &)>;
using Getter = std::function<QString(const Channel *)>;

template <typename C>
Setter of(void (C::*set)(const QString &))
{
    return [set](Channel *channel, const QString &value) { (qobject_cast<C *>(channel)->*set)(value); };
}

template <typename C>
Getter of(QString (C::*get)() const)
{
    return [get](const Channel *channel) { return (qobject_cast<const C *>(channel)->*get)(); };
}

struct Setting
{
    Setter set;
    bool toSlaves = false; ///< a change goes to the slaved receivers too
};

/// By the letter of the channel's class and the mnemonic.
const QMap<QString, Setting> kSettings{
    { u"R:NAME"_s, { of(&RcvrChan::setNAME) } },       { u"R:ACFE"_s, { of(&RcvrChan::setACFE) } },
    { u"R:ANCF"_s, { of(&RcvrChan::setANCF) } },       { u"R:CINP"_s, { of(&RcvrChan::setCINP) } },
    { u"R:CIF1"_s, { of(&RcvrChan::setCIF1) } },       { u"R:CATN"_s, { of(&RcvrChan::setCATN) } },
    { u"R:MANG"_s, { of(&RcvrChan::setMANG) } },       { u"R:FREQ"_s, { of(&RcvrChan::setFREQ), true } },
    { u"R:IFBW"_s, { of(&RcvrChan::setIFBW), true } }, { u"R:AIFB"_s, { of(&RcvrChan::setAIFB), true } },
    { u"R:CIFS"_s, { of(&RcvrChan::setCIFS), true } }, { u"R:AGCF"_s, { of(&RcvrChan::setAGCF), true } },
    { u"R:AGCZ"_s, { of(&RcvrChan::setAGCZ), true } }, { u"R:AGCT"_s, { of(&RcvrChan::setAGCT), true } },
    { u"R:AFC"_s, { of(&RcvrChan::setAFC), true } },   { u"R:AFCM"_s, { of(&RcvrChan::setAFCM), true } },
    { u"R:SLPA"_s, { of(&RcvrChan::setSLPA), true } }, { u"R:SLPB"_s, { of(&RcvrChan::setSLPB), true } },
    { u"R:POLA"_s, { of(&RcvrChan::setPOLA), true } }, { u"R:POLB"_s, { of(&RcvrChan::setPOLB), true } },
    { u"R:IMPA"_s, { of(&RcvrChan::setIMPA), true } }, { u"R:IMPB"_s, { of(&RcvrChan::setIMPB), true } },
    { u"R:CAMP"_s, { of(&RcvrChan::setCAMP), true } }, { u"R:CAMF"_s, { of(&RcvrChan::setCAMF), true } },
    { u"R:AMIP"_s, { of(&RcvrChan::setAMIP), true } }, { u"R:PLYB"_s, { of(&RcvrChan::setPLYB), true } },
    { u"U:NAME"_s, { of(&UniversalChan::setNAME) } },  { u"U:SLAVE"_s, { of(&UniversalChan::setSLAVE) } },
    { u"U:TMRF"_s, { of(&UniversalChan::setTMRF) } },  { u"U:TIME"_s, { of(&UniversalChan::setTIME) } },
    { u"U:LOGC"_s, { of(&UniversalChan::setLOGC) } },  { u"U:ABSSI"_s, { of(&UniversalChan::setABSSI) } },
};

/// A chassis that has told every setting, and the record of what passes from then on: "R1:FREQ:1" for a request that
/// has reached it, "R1 FREQ 1" for a change that its channel reports; another channel's report names that channel.
struct Chassis : CommandLinkBench
{
    Chassis()
    {
        if (!start())
            qFatal("the chassis does not start");
        far.clear();
        for (const Channel *channel : link.channels())
            QObject::connect(channel, &Channel::SettingChanged, &link,
                             [this, channel](const QString &module, const QString &mnemonic, const QString &data) {
                                 QStringList words{ channel->address(), module, mnemonic, data };
                                 words.removeDuplicates();
                                 noteRequests();
                                 m_record += words.join(u' ');
                             });
    }

    [[nodiscard]] Channel *channel(QChar number) const { return link.channels().value(number.digitValue()); }
    /// Plays one line and gives the record. The verb is "set" (by the channel's setter), "lose" (a set of the first
    /// receiver that gets no answer), "ask" (its query that gets this answer), "report" or "refuse" (from now on).
    [[nodiscard]] QStringList play(const QString &line)
    {
        const QString verb = line.section(u' ', 0, 0);
        const QString message = line.section(u' ', 1);
        const QString address = message.section(u':', 0, 0);
        const QString mnemonic = message.section(u':', 1, 1);
        const QString data = message.section(u':', 2);
        const QByteArray key = message.section(u':', 0, 1).toLatin1();
        if (verb == u"refuse"_s) {
            far.refuse(key);
        } else if (verb == u"report"_s) {
            far.sendFrame(message.toLatin1());
        } else if (verb == u"set"_s) {
            kSettings[address.first(1) + u':' + mnemonic].set(channel(address.back()), data);
        } else if (verb == u"ask"_s) {
            far.setValue(key, data.toLatin1());
            queue(receiver(1), address, mnemonic, {}, StandardCommand::Query);
        } else {
            far.ignore(key);
            queue(receiver(1), address, mnemonic, data, StandardCommand::Set);
            if (far.waitForFrame(message.toLatin1()))
                link.StartTimeOutTmr(1);
        }
        return takeRecord();
    }
    [[nodiscard]] QStringList takeRecord()
    {
        if (!idle())
            return { u"no answer"_s };
        noteRequests();
        return std::exchange(m_record, {});
    }

private:
    void noteRequests()
    {
        for (const QByteArray &frame : far.frames())
            m_record += QString::fromLatin1(frame);
        m_record.removeAll(u"U0:VERTSKB"_s);
        far.clear();
    }

    QStringList m_record;
};

} // namespace

/// A receiver's and the system's model: what is cached, what is signalled and what goes to the card.
class ReceiverChannelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySetter();
    void conversation_data();
    void conversation();
};

void ReceiverChannelTest::everySetter()
{
    Chassis chassis;
    for (const QString &role : { u"0"_s, u"1"_s }) {
        QCOMPARE(chassis.play(u"report R1:SLAVE:"_s + role), QStringList{ u"R1 SLAVE "_s + role });
        QStringList expected;
        for (auto setting = kSettings.lowerBound(u"R:"_s); setting.key().startsWith(u'R'); ++setting) {
            const QString mnemonic = setting.key().sliced(2);
            setting->set(chassis.receiver(1), u"1"_s + role);
            expected << u"R1:%1:1%2"_s.arg(mnemonic, role) << u"R1 %1 1%2"_s.arg(mnemonic, role);
            if (setting->toSlaves && role == u"1"_s)
                expected << u"R2:%1:1%2"_s.arg(mnemonic, role) << u"R2 %1 1%2"_s.arg(mnemonic, role);
        }
        QCOMPARE(chassis.takeRecord(), expected);
    }
}

void ReceiverChannelTest::conversation_data()
{
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("record");
    QTest::addColumn<Getter>("get");   // asked of the last line's channel, which then holds:
    QTest::addColumn<QString>("held"); // the value < the one before
    const auto row = [](const QByteArray &lines, const QByteArray &record, const Getter &get = {},
                        const QByteArray &held = {}) {
        QTest::newRow(lines.constData()) << QString::fromLatin1(lines) << QString::fromLatin1(record) << get
                                         << QString::fromLatin1(held);
    };
    const Getter freq = of(&RcvrChan::getFREQ);
    const Getter afc = of(&RcvrChan::getAFC);
    const Getter bounds = [](const Channel *channel) {
        QStringList texts;
        for (const double bound : qobject_cast<const RcvrChan *>(channel)->frequencyBounds())
            texts += QString::number(bound);
        return texts.join(u' ');
    };
    const Getter bandwidths = [](const Channel *channel) {
        return qobject_cast<const RcvrChan *>(channel)->ifBandwidths().join(u'/');
    };

    row("set R1:FREQ:2250.5", "", freq, "2250.5 < Unknown");
    row("set R1:FREQ:3; set R1:FREQ:3", "R1:FREQ:3; R1 FREQ 3", freq, "3 < 2250.5");
    row("refuse R1:FREQ; set R1:FREQ:3", "R1:FREQ:3; R1 FREQ 2250.5", freq, "2250.5 < Unknown");
    row("lose R1:FREQ:3", "R1:FREQ:3; R1 FREQ 2250.5", freq, "2250.5 < Unknown");
    row("ask R1:FREQ:3", "R1:FREQ; R1 FREQ 3", freq, "3 < 2250.5");
    row("ask R1:AFC:1; report R1:AFC:1", "R1:AFC; R1 AFC 1; R1 AFC 1", afc, "1 < Unknown");
    row("refuse R1:FREQ; ask R1:FREQ:3", "R1:FREQ", freq, "2250.5 < Unknown");
    row("set R1:CINP:3; report R1:CINP:4", "R1:CINP:3; R1 CINP 3; R1 CINP 4", of(&RcvrChan::getCINP), "4 < Unknown");
    row("report R1:FLST:2300 2200,,5000 4400", "R1 FLST 2300 2200,,5000 4400", bounds,
        "2300 2200 5000 4400 < 2395.5 2200.5,1485.5 1435.5");
    row("report R1:IFLS:20 MHz,40 MHz", "R1 IFLS 20 MHz,40 MHz", bandwidths, "20 MHz/40 MHz < 1 MHz,5 MHz,10 MHz");

    // An owner goes before the address; other addresses and mnemonics are nobody's.
    row("ask R2:AFC:3", "R2:AFC; R1 R2 AFC 3", afc, "1 < Unknown");
    row("report R3:AFC:3; report R0:AFC:3; report R11:AFC:3; report r1:AFC:3; report :AFC:3; report R1:CARL:3; "
        "report U0:SDM1:3; report R1:AFC",
        "", afc, "1 < Unknown");
    row("ask U0:VER:9.9", "U0:VER");

    // Slaves answer for themselves.
    row("set U0:SLAVE:1; refuse R2:FREQ; set R1:FREQ:3; set R2:AFC:4",
        "U0:SLAVE:1; U0 SLAVE 1; R1 U0 SLAVE 1; R2 U0 SLAVE 1; R1:FREQ:3; R1 FREQ 3; R2:FREQ:3; R2 FREQ 2250.5; "
        "R2:AFC:4; R2 AFC 4; R1:AFC:4; R1 AFC 4",
        afc, "4 < 1");
    row("refuse U0:SLAVE; set U0:SLAVE:1", "U0:SLAVE:1; U0 SLAVE 0; R1 U0 SLAVE 0; R2 U0 SLAVE 0");
    row("report R1:SLAVE:2; set R1:AFC:4", "R1 SLAVE 2; R1:AFC:4; R1 AFC 4", afc, "4 < 1");

    const auto statusRow = [&row](const QByteArray &key, const Getter &get) {
        row("report " + key + ":3; report " + key + ":4; report " + key + ":4; lose " + key + ":7", key + ":7", get,
            "4 < 4");
    };
    statusRow("R1:SYNL", of(&RcvrChan::getSYNL));
    statusRow("R1:SSLV", of(&RcvrChan::getSSLV));
    statusRow("R1:MAFL", of(&RcvrChan::getMAFL));
    statusRow("R1:RLST", of(&RcvrChan::getRLST));
    statusRow("R1:AGCA", of(&RcvrChan::getAGCA));
    statusRow("R1:AGCB", of(&RcvrChan::getAGCB));
    statusRow("U0:LAGC", of(&UniversalChan::getLAGC));
    row("ask R1:MVAL:1; report R1:MVAL:1; lose R1:MVAL:4", "R1:MVAL; R1 MVAL 1; R1 MVAL 1; R1:MVAL:4");
    row("ask R1:LSCI:1; report R1:LSCI:1; lose R1:LSCI:4", "R1:LSCI; R1 LSCI 1; R1 LSCI 1; R1:LSCI:4");
    row("ask R1:LSCL:1; report R1:LSCL:1; lose R1:LSCL:4", "R1:LSCL; R1 LSCL 1; R1 LSCL 1; R1:LSCL:4");

    // The system's answers are handled once, whoever asked.
    row("set U0:NAME:Van; ask U0:NAME:Truck", "U0:NAME:Van; U0 NAME Van; U0:NAME; U0 NAME Truck");
    row("set U0:TMRF:1; set U0:TMRF:2; lose U0:TMRF:0", "U0:TMRF:2; U0 TMRF 2; U0:TMRF:0; U0 TMRF 2",
        of(&UniversalChan::getTMRF), "2 < 1");
    row("set U0:TIME:3; set U0:TIME:3; lose U0:TIME:4; report U0:TIME:5", "U0:TIME:3; U0:TIME:4",
        of(&UniversalChan::getTIME), "5 < 3");
    row("set U0:LOGC:3; set U0:LOGC:3; lose U0:LOGC:4; report U0:LOGC:5", "U0:LOGC:3; U0:LOGC:4",
        of(&UniversalChan::getLOGC), "5 < 3");
    row("set U0:ABSSI:3; set U0:ABSSI:3; lose U0:ABSSI:4", "U0:ABSSI:3; U0:ABSSI:4", of(&UniversalChan::getABSSI),
        "3 < Unknown");
    row("report U0:SYSOPT:3", "", of(&UniversalChan::getSYSOPT), "3 < Unknown");
    row("report U0:TLST:,; report U0:TLST:TM1; report U0:TLST:TM2", "", of(&UniversalChan::getTLST), "TM1 < Unknown");
    row("ask U0:PLIST:a b; report U0:PDONE:1; report U0:PDONE:1; report U0:UPDT:0",
        "U0:PLIST; U0 PLIST a b; U0 PDONE 1; U0 PDONE 1; U0 UPDT 0");
}

void ReceiverChannelTest::conversation()
{
    QFETCH(QString, lines);
    QFETCH(QString, record);
    QFETCH(Getter, get);
    QFETCH(QString, held);

    Chassis chassis;
    QStringList played;
    for (const QString &line : lines.split(u"; "_s))
        played += chassis.play(line);
    QCOMPARE(played.join(u"; "_s), record);
    if (get) {
        const QString last = lines.split(u"; "_s).last();
        const Channel *const channel = chassis.channel(last.section(u':', 0, 0).back());
        const QByteArray mnemonic = last.section(u':', 1, 1).toLatin1();
        QCOMPARE(get(channel) + u" < "_s + channel->previousValue(QLatin1StringView(mnemonic)), held);
    }
}

QTEST_MAIN(ReceiverChannelTest)
#include "tst_receiver_channel.moc"
