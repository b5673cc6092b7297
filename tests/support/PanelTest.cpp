#include "support/PanelTest.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QByteArray kPlain = "0101 K412X 1.2 QLN412 S1 X,0102 K412X 1.2 QLN412 S2 X,0109 K412X 1.2 QLN412 S3 X";
const QByteArray kTuners = QByteArray(LinkBench::kReceivers) + ',';
const QHash<QByteArray, QByteArray> kCards{
    { "receivers", kTuners + LinkBench::kTape },
    { "plain", kPlain },
    { "QLN424", "0101 K414V 1 QLN424V S1 X,0102 K414V 1 QLN424V S2 X,0109 K424V 1 QLN424V S3 X" },
    { "QLN412W", "0101 K412W 1.2 QLN412 S1 X,0102 K412W 1.2 QLN412 S2 X,0109 K412W 1.2 QLN412 S3 X" },
    { "K412W", "0101 K412X 1.2 K412W S1 X,0102 K412X 1.2 K412 S2 X,0109 K412X 1.2 K412 S3 X" },
    { "QLDX203", kTuners + kPlain + ",0105 MPU 1.4 QLDX203 A3 X" },
    { "QLDX204", kPlain + ",0105 MPU 1.4 QLDX204 A3 X" },
    { "QLDX206", kPlain + ",0105 MPU 1.4 QLDX206 A3 X" },
    { "QLDX208", kPlain + ",0105 MPU 1.4 QLDX208 A3 X" },
    { "K3050", kTuners + LinkBench::kOlderDemodulators + ',' + LinkBench::kCombiner },
    { "both", "DEMOD1 MPU 1 K3060 S1,DEMOD2 MPU 1 K3060 S2,DEMOD3 MPU 1 K3060 S3,0105 MPU 1 QLN424V A3 X" },
    { "D2 alone", "DEMOD2 MPU 1.2 K3050 S2" },
};

/// Values at start, reported again before each case, by addresses.
const QList<std::pair<QByteArray, QByteArray>> kStart{
    { "U0", "SLAVE=0;SDM1=2;SDM2=3;SDM3=A" },
    { "R1 R2",
      "NAME=Receiver;FLST=2395.5 2200.5,1485.5 1435.5;IFLS=1 MHz,5 MHz,10 MHz;FREQ=2250.5;IFBW=1;AGCF=0;AGCZ=0;"
      "SLPA=1;SLPB=2;POLA=0;POLB=1;AGCT=1;AFC=1;AFCM=40;CAMP=1;PLYB=0;ACFE=0;ANCF=-20" },
    { "C1",
      "NAME=Mixer;IFLS=1 MHz,5 MHz,10 MHz;CVMD=1;CMOD=2;IFBW=1;CHZC=1;CHZ1=1;CHZ2=1;SLPA=0;SLPB=1;POLA=1;POLB=1" },
    { "D1 D2 D3", "NAME=North;VFLS=0.5 MHz,5 MHz,10 "
                  "MHz;VFFL=500000,5000000;DMOD=6;VCFG=2;BSDR=1;DQMON=1;DEQE=1;RDRG:82=0031;RDRG:83=4000;ALBW=1;"
                  "ASRG=1;ASRT=1;TMID=0.00;VGN1=120;VGN2=60;DVBW=5000000;RATEA=5000000;RATEB=5000000;VFIR=1;VFBW=1;"
                  "VIDP=0" },
};
const QByteArrayList kStartStatus{ "R1:SYNL:1",   "R2:SYNL:1",   "R1:MAFL:1",     "R2:MAFL:1",
                                   "R1:RLST:3",   "R2:RLST:3",   "R1:SSLV:-85.6", "R2:SSLV:-85.6",
                                   "R1:AGCA:100", "R2:AGCA:100", "R1:AGCB:-100",  "R2:AGCB:-100",
                                   "C1:CLCS:0",   "C1:CLCK:1",   "C1:AGCA:100",   "C1:AGCB:-100" };
const QByteArray kModes = "0 PCM-FM,1 TRELLIS FM,2 PM,3 BPSK,4 QPSK,5 UQPSK,6 AQPSK,7 AUQPSK,8 SOQPSK,9 MULTI-H CPM,"
                          "10 OQPSK,13 FM,17 NTSC-Video";

/// Names of documented style sheets in rows
const QList<std::pair<QByteArray, QByteArray>> kStyles{
    { "<good>", "background-color: #24d620;" },
    { "<bad>", "background-color: #f11029;" },
    { "<one>", "background-color: #fcfd0f;" },
    { "<in lock>", "background-color: rgb(229, 227, 225); color: #28c125;" },
    { "<out of lock>", "background-color: rgb(229, 227, 225); color: #f11029;" },
    { "<manual>", "background-color: rgb(229, 227, 225); color: #000000;" },
};

/// "_" stands for a blank within a report.
QByteArrayList reportsOf(const QByteArray &field)
{
    QByteArrayList reports = field.split(' ');
    for (QByteArray &report : reports)
        report.replace('_', ' ');
    return reports;
}

} // namespace

void PanelTest::addRows(const QByteArray &cards, const QByteArray &rows, const QByteArray &numbers)
{
    for (const QString &row : QString::fromLatin1(rows).split(u", "_s)) {
        for (const char number : row.contains(u'@') ? numbers : "1"_ba) {
            QByteArray text = cards + '|' + row.toLatin1().replace('@', number);
            for (const auto &[name, style] : kStyles)
                text.replace(name, style);
            QTest::newRow(text.constData()) << text.split('|');
        }
    }
}

void PanelTest::addChoices(const QByteArray &cards, const QByteArray &box, const QByteArray &setting,
                           const QByteArray &items, const QByteArray &numbers)
{
    const QByteArrayList values = items.split(' ');
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QByteArray item = QByteArray::number(i), other = values[(i + 1) % values.size()];
        addRows(cards,
                setting + other + '|' + box + '|' + item + '|' + setting + values[i] + '|' + box +
                    ".currentIndex=" + item,
                numbers);
    }
}

QByteArray sorted(QByteArrayList names)
{
    std::sort(names.begin(), names.end());
    return names.join(' ');
}

void PanelTest::cleanup()
{
    if (QTest::currentTestFailed())
        m_bench.reset();
}

void PanelTest::setUp(const QByteArray &cards)
{
    if (m_bench && m_cards == cards) {
        QVERIFY(m_bench->startCase(m_start + kStartStatus));
        return;
    }
    m_bench.reset();
    m_bench = std::make_unique<PanelBench>();
    m_cards = cards;
    m_start.clear();
    m_bench->links().fit({ kCards[cards.split('/')[0]] });
    if (cards.endsWith("/silent")) {
        keepSilent();
        QVERIFY(m_bench->goLive());
        m_bench->stopReadingBack();
        return;
    }
    for (const auto &[addresses, settings] : kStart) {
        for (const QByteArray &address : addresses.split(' ')) {
            m_bench->chassis().setValue(address + ":DMLS", kModes);
            m_start += address + ":DMLS:" + kModes;
            for (const QByteArray &setting : settings.split(';')) {
                const QByteArray key = address + ':' + setting.split('=')[0], value = setting.split('=')[1];
                m_bench->chassis().setValue(key, value);
                m_start += key + (key.contains("RDRG") ? "" : ":") + value;
            }
        }
    }
    QVERIFY(m_bench->goLive());
    m_bench->stopReadingBack();
    QVERIFY(m_bench->startCase(kStartStatus));
    const QByteArrayList filled = m_bench->everythingShown();
    QVERIFY(m_bench->startCase(m_start)); // the panels were filled with the same
    QCOMPARE(m_bench->everythingShown(), filled);
}

/// Refuses the queries of everything but lists and names.
void PanelTest::keepSilent()
{
    QByteArrayList queries = LinkBench::receiverQueries("R1") + LinkBench::combinerQueries();
    for (const QByteArray address : { "D1", "D2", "D3" }) {
        m_bench->chassis().setValue(address + ":DMLS", kModes);
        queries += LinkBench::demodulatorQueries(address, true);
    }
    for (const QByteArray &query : std::as_const(queries)) {
        if (!QByteArrayList{ "NAME", "FLST", "IFLS", "DMLS", "IFFL", "VFFL", "VFLS" }.contains(query.split(':')[1]))
            m_bench->chassis().refuse(query.split(':').first(2).join(':'));
    }
}

void PanelTest::operatorChanges()
{
    QFETCH(QByteArrayList, row);
    setUp(row[0]);
    m_bench->verify({ reportsOf(row[1]), row[2], row[3], row[4], row.mid(5) });
}

void PanelTest::reports()
{
    QFETCH(QByteArrayList, row);
    setUp(row[0]);
    const QByteArrayList before = m_bench->everythingShown();
    QCOMPARE(m_bench->sentBy([&] { m_bench->report(reportsOf(row[1])); }), QByteArrayList());
    QByteArrayList moved = m_bench->everythingShown();
    moved.removeIf([&before](const QByteArray &item) { return before.contains(item); });
    if (row.endsWith("..."))
        QCOMPARE(m_bench->actual(row.sliced(2, row.size() - 3)), row.sliced(2, row.size() - 3));
    else
        QCOMPARE(sorted(moved), sorted(row.mid(2)));
}
