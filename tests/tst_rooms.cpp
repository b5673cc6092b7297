#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The rooms that each room may include, apart from itself; a room of rooms stands for all in it.
const QMap<QString, QStringList> &allowedRooms()
{
    static const QMap<QString, QStringList> rooms{
        { u"link"_s, {} },
        { u"channels"_s, { u"link"_s } },
        { u"inventory"_s, { u"channels"_s, u"link"_s } },
        { u"head"_s, { u"inventory"_s, u"channels"_s, u"link"_s } },
        { u"controls"_s, {} },
        { u"dialogs"_s, { u"controls"_s, u"inventory"_s, u"channels"_s, u"link"_s } },
        { u"frontpanel"_s, { u"dialogs"_s, u"controls"_s, u"head"_s, u"inventory"_s, u"channels"_s, u"link"_s } },
        { u"app"_s, { u"frontpanel"_s, u"controls"_s, u"head"_s, u"common"_s } },
        { u"common"_s, {} },
        { u"remote"_s, { u"common"_s } },
        { u"simulator"_s, { u"common"_s } },
    };
    return rooms;
}

QString roomOf(const QString &path) { return path.section(u'/', 0, 0); }

/// A source file together with its header.
QString moduleOf(const QString &path) { return path.section(u'.', 0, -2); }

struct Include
{
    QString from;
    QString what;
};

QList<Include> includesOf(const QString &room)
{
    static const QRegularExpression line(u"^#include \"([^\"]+)\""_s, QRegularExpression::MultilineOption);
    const QDir root(QStringLiteral(ZIRVO_SOURCE_DIR));
    QList<Include> includes;
    QDirIterator files(root.filePath(room), { u"*.h"_s, u"*.cpp"_s }, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        for (const auto &match : line.globalMatch(QString::fromUtf8(file.readAll())))
            includes.append({ root.relativeFilePath(file.fileName()), match.captured(1) });
    }
    return includes;
}

using Graph = QMap<QString, QSet<QString>>;

/// Removes what leads to no circle; the rest is circles and the ways between them.
QStringList circles(Graph graph)
{
    for (bool hasChanged = true; hasChanged;) {
        hasChanged = false;
        for (const QString &module : graph.keys()) {
            if (graph[module].removeIf([&graph](const QString &used) { return !graph.contains(used); }) >= 0 &&
                graph[module].isEmpty()) {
                graph.remove(module);
                hasChanged = true;
            }
        }
    }
    return graph.keys();
}

} // namespace

/// The structure of the source tree: every room stands above those that it uses.
class RoomsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noRoomLooksUpwards_data();
    void noRoomLooksUpwards();
    void noModuleIsInACircle();
};

void RoomsTest::noRoomLooksUpwards_data()
{
    QTest::addColumn<QStringList>("allowed");
    for (const auto &[room, allowed] : allowedRooms().asKeyValueRange())
        QTest::addRow("%s", qPrintable(room)) << allowed + QStringList{ room };
}

void RoomsTest::noRoomLooksUpwards()
{
    QFETCH(QStringList, allowed);
    const QList<Include> includes = includesOf(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(!includes.isEmpty());
    QStringList upwards;
    for (const auto &[from, what] : includes) {
        if (!what.startsWith(u"ui_") && !what.endsWith(u".moc") && !allowed.contains(roomOf(what)))
            upwards += from + u" includes "_s + what;
    }
    QCOMPARE(upwards.join(u'\n'), QString());
}

void RoomsTest::noModuleIsInACircle()
{
    Graph graph;
    for (const QString &room : allowedRooms().keys()) {
        for (const auto &[from, what] : includesOf(room)) {
            auto &used = graph[moduleOf(from)];
            if (moduleOf(what) != moduleOf(from))
                used.insert(moduleOf(what));
        }
    }
    QVERIFY(graph.size() > 100);
    QCOMPARE(circles(graph).join(u'\n'), QString());
}

QTEST_APPLESS_MAIN(RoomsTest)
#include "tst_rooms.moc"
