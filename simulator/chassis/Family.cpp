#include "simulator/chassis/Family.h"

#include "simulator/radio/DemodulationMode.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace sim {

namespace {

constexpr int kMostDemodulators = 3;
const QString kFolder = QStringLiteral(":/families");

QString builtInPath(const QString &name) { return kFolder + u'/' + name + QStringLiteral(".json"); }

/// The file lists the entries of the card list one by one; on the wire commas join them.
QString cardList(const QJsonArray &entries)
{
    QStringList texts;
    for (const QJsonValue &entry : entries)
        texts.append(entry.toString());
    return texts.join(u',');
}

/// -1 for a signal that no demodulator knows.
int modeCode(const QString &name)
{
    const DemodulationMode *const mode = DemodulationMode::named(name);
    return mode ? mode->code : -1;
}

/// The values of the system unit, with the card list added.
QJsonObject readSystem(const QJsonObject &object)
{
    QJsonObject system = object[u"system"].toObject();
    system.insert(QStringLiteral("CLST"), cardList(object[u"cards"].toArray()));
    return system;
}

/// Start values by unit address.
QJsonObject readSpectral(const QJsonObject &object)
{
    QJsonObject units = object;
    units.insert(QStringLiteral("U0"), readSystem(object));
    return units;
}

QMap<int, QJsonObject> readNumbered(const QJsonObject &object)
{
    QMap<int, QJsonObject> units;
    for (const QString &address : object.keys())
        units.insert(address.mid(1).toInt(), object.value(address).toObject());
    return units;
}

/// Cards by number: an address such as "TM2-1" implies card 2.
QMap<int, QJsonObject> readTmoipCards(const QJsonObject &units)
{
    QMap<int, QJsonObject> cards;
    for (const QString &address : units.keys())
        cards.insert(address.section(u'-', 0, 0).mid(2).toInt(), units);
    return cards;
}

bool areNumberedUpTo(int last, const QMap<int, QJsonObject> &units)
{
    return units.isEmpty() || (units.firstKey() >= 1 && units.lastKey() <= last);
}

QList<RadioSignal> readScene(const QJsonArray &entries)
{
    QList<RadioSignal> scene;
    for (const QJsonValue &entry : entries) {
        const RadioSignal signal{ .frequency = entry[u"frequency"].toDouble(),
                                  .level = entry[u"level"].toDouble(),
                                  .bandwidth = entry[u"bandwidth"].toDouble(1.0),
                                  .fading = entry[u"fading"].toDouble(),
                                  .drift = entry[u"drift"].toDouble(),
                                  .mode = modeCode(entry[u"mode"].toString()),
                                  .rate = entry[u"rate"].toDouble() };
        scene.append(signal);
    }
    return scene;
}

QString faultIn(const QJsonObject &object, const Family &family)
{
    if (family.title.isEmpty() || !object[u"cards"].isArray())
        return QStringLiteral("a family needs a title and a list of cards");
    if (!areNumberedUpTo(RadioScene::kPolarisations, family.receivers))
        return QStringLiteral("receivers are numbered 1 and 2");
    if (!areNumberedUpTo(kMostDemodulators, family.demodulators))
        return QStringLiteral("demodulators are numbered 1 to 3");
    if (!family.tmoipCards.isEmpty() && family.tmoipCards.firstKey() < 1)
        return QStringLiteral("telemetry-over-IP cards are numbered from 1");
    for (const QJsonValue &entry : object[u"scene"].toArray()) {
        if (!entry[u"mode"].isUndefined() && modeCode(entry[u"mode"].toString()) < 0)
            return QStringLiteral("no modulation \"%1\"").arg(entry[u"mode"].toString());
    }
    for (const RadioSignal &signal : family.scene) {
        if (signal.frequency <= 0 || signal.bandwidth <= 0 || signal.fading < 0)
            return QStringLiteral("a signal needs a frequency, a bandwidth above 0 and no negative fading");
    }
    return {};
}

} // namespace

QStringList Family::builtIn()
{
    QStringList names = QDir(kFolder).entryList(QDir::Files, QDir::Name);
    for (QString &name : names)
        name.chop(int(sizeof(".json")) - 1);
    return names;
}

std::optional<Family> Family::load(const QString &nameOrPath, QString &error)
{
    QFile file(builtIn().contains(nameOrPath) ? builtInPath(nameOrPath) : nameOrPath);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("no family \"%1\": %2").arg(nameOrPath, file.errorString());
        return std::nullopt;
    }
    QJsonParseError parseError{};
    const QJsonObject object = QJsonDocument::fromJson(file.readAll(), &parseError).object();
    Family family;
    family.title = object[u"title"].toString();
    family.system = readSystem(object);
    const QString cards = family.system[u"CLST"].toString();
    family.hasOlderDemodulators = cards.contains(u"K3050") || cards.contains(u"K3060");
    family.receivers = readNumbered(object[u"receivers"].toObject());
    family.demodulators = readNumbered(object[u"demodulators"].toObject());
    if (object.contains(u"combiner"))
        family.combiner = object[u"combiner"].toObject();
    if (cards.contains(u"0110"))
        family.tape = object[u"tape"].toObject();
    family.tmoipCards = readTmoipCards(object[u"tmoip"].toObject());
    if (object.contains(u"spectral"))
        family.spectral = readSpectral(object[u"spectral"].toObject());
    family.scene = readScene(object[u"scene"].toArray());
    error = parseError.error != QJsonParseError::NoError ? parseError.errorString() : faultIn(object, family);
    if (error.isEmpty())
        return family;
    error = QStringLiteral("family %1: %2").arg(nameOrPath, error);
    return std::nullopt;
}

} // namespace sim
