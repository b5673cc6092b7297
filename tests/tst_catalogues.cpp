#include "channels/BistChan.h"
#include "channels/CmbrChan.h"
#include "channels/DmdChan.h"
#include "channels/RcvrChan.h"
#include "channels/SpectralChan.h"
#include "channels/TapeChan.h"
#include "channels/TmoipCard.h"
#include "channels/TmoipChan.h"
#include "channels/UniversalChan.h"
#include "remote/wire/Catalogue.h"
#include "support/SimulatedChassis.h"
#include "support/StubLink.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

QByteArray content(const QString &path)
{
    QFile file(QStringLiteral(ZIRVO_SOURCE_DIR "/") + path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    return file.readAll();
}

/// The mnemonics in the tables below the heading that begins with @p title; "`CPT0` to `CPT7`" stands for eight.
QSet<QByteArray> documented(const QString &title)
{
    static const QRegularExpression mnemonic(u"`([A-Z][A-Z0-9_]*)`"_s);
    static const QRegularExpression range(u"`([A-Z]+)(\\d)` to `[A-Z]+(\\d)`"_s);
    QSet<QByteArray> names;
    bool isInside = false;
    for (const QString &line : QString::fromUtf8(content(u"docs/remote-protocol.md"_s)).split(u'\n')) {
        if (line.startsWith(u"## ") || line.startsWith(u"### "))
            isInside = line.startsWith(u"### "_s + title);
        if (!isInside || !line.startsWith(u'|'))
            continue;
        for (const auto &match : mnemonic.globalMatch(line))
            names.insert(match.captured(1).toLatin1());
        for (const auto &match : range.globalMatch(line)) {
            for (int digit = match.captured(2).toInt(); digit <= match.captured(3).toInt(); ++digit)
                names.insert(match.captured(1).toLatin1() + QByteArray::number(digit));
        }
    }
    return names;
}

QSet<QByteArray> clientNames(const QByteArray &address)
{
    QSet<QByteArray> names;
    const auto add = [&names](std::span<const std::string_view> rows) {
        for (const std::string_view row : rows)
            names.insert(QByteArray(row.data(), qsizetype(row.size())));
    };
    const remote::Catalogue::Rows rows = remote::Catalogue::of(address);
    add(rows.settings);
    add(rows.info);
    if (address == "U0")
        add(remote::Catalogue::identity());
    return names;
}

QByteArray sorted(const QSet<QByteArray> &names)
{
    QByteArrayList list = names.values();
    std::ranges::sort(list);
    return list.join(' ');
}

} // namespace

/// A setting has a row in the head, the client and the simulator, a line in the protocol document and in the fuzz
/// dictionary. Each names it on its own; here they are compared by name.
class CataloguesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agree_data();
    void agree();
    void simulatorAnswersEveryQuery();

private:
    void addRow(Channel *channel, const QString &title, const QByteArray &headOnly = {},
                const QByteArray &clientOnly = {});

    StubLink m_link;
    UniversalChan m_system{ nullptr, u"0"_s, &m_link };
    RcvrChan m_receiver{ nullptr, u"1"_s, &m_link };
    CmbrChan m_combiner{ nullptr, u"1"_s, &m_link };
    DmdChan m_demodulator{ nullptr, u"1"_s, &m_link, true };
    TapeChan m_tape{ nullptr, u"1"_s, &m_link };
    TmoipCard m_card{ nullptr, u"1"_s, &m_link };
    SpectralChan m_spectrum{ nullptr, u"1"_s, &m_link };
    BistChan m_selfTest{ nullptr, u"1"_s, &m_link };
};

void CataloguesTest::addRow(Channel *channel, const QString &title, const QByteArray &headOnly,
                            const QByteArray &clientOnly)
{
    QTest::addRow("%s", qPrintable(channel->address())) << channel << title << headOnly << clientOnly;
}

void CataloguesTest::agree_data()
{
    QTest::addColumn<Channel *>("channel");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QByteArray>("headOnly");
    QTest::addColumn<QByteArray>("clientOnly");
    addRow(&m_system, u"U0"_s, {}, "STYPE SYSID VERS VERTSMAIN"); // not rows: the head knows them itself
    addRow(&m_receiver, u"R1"_s);
    addRow(&m_combiner, u"C1"_s);
    addRow(&m_demodulator, u"D1"_s);
    addRow(&m_tape, u"T1"_s);
    addRow(&m_card, u"TM1-0"_s, "COMT"); // an order, which no client saves
    addRow(m_card.tmoipChanSlots().value(u"1"_s), u"TM1-1"_s);
    addRow(&m_spectrum, u"SP1"_s);
    addRow(&m_selfTest, u"S1"_s);
}

void CataloguesTest::agree()
{
    QFETCH(Channel *, channel);
    QFETCH(QString, title);
    QFETCH(QByteArray, headOnly);
    QFETCH(QByteArray, clientOnly);
    const bool isSelfTest = channel == &m_selfTest;
    QSet<QByteArray> served;
    QSet<QByteArray> all;
    for (const Catalogue::Row &row : channel->catalogue()) {
        const QByteArray name(row.name.data(), row.name.size());
        all.insert(name);
        const bool isServed = isSelfTest ? name != "SLAVE" : row.flags.testFlag(Catalogue::Served);
        if (isServed)
            served.insert(name);
    }
    const QSet<QByteArray> client = clientNames(channel->address().toLatin1());
    const QSet<QByteArray> document = documented(title);
    QCOMPARE(sorted(served - client), headOnly);
    QCOMPARE(sorted(client - served), clientOnly);
    QCOMPARE(sorted(served - document), QByteArray());
    QCOMPARE(sorted(client - document), QByteArray());

    const QByteArray dictionary = content(u"fuzzing/zirvo.dict"_s);
    all.removeIf([&dictionary](const QByteArray &name) { return dictionary.contains('"' + name + '"'); });
    QCOMPARE(sorted(all), QByteArray());
}

void CataloguesTest::simulatorAnswersEveryQuery()
{
    SimulatedChassis chassis({ u"--family"_s, u"demod-k3050"_s });
    QSet<QByteArray> answered;
    for (const QByteArray &value : chassis.values()) {
        const QByteArrayList parts = value.split(':');
        const QByteArray query = parts[0] + ':' + parts[1];
        answered.insert(parts[1] == "RDRG" ? query + parts[2].left(2) : query);
    }
    for (Channel *channel : QList<Channel *>{ &m_system, &m_receiver, &m_combiner, &m_demodulator, &m_tape, &m_card,
                                              m_card.tmoipChanSlots().value(u"1"_s), &m_spectrum, &m_selfTest })
        channel->RequestSettings();
    QSet<QByteArray> queries;
    for (const auto &command : m_link.queued) {
        if (command->type() == StandardCommand::Query)
            queries.insert((command->address() + u':' + command->mnemonic() + command->data()).toLatin1());
    }
    QVERIFY(queries.size() > 200);
    QCOMPARE(sorted(queries - answered), QByteArray());
}

QTEST_GUILESS_MAIN(CataloguesTest)
#include "tst_catalogues.moc"
