#include "support/ClientView.h"

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// What is served beside the settings, and is no reading.
const QByteArrayList kLists{ "FLST", "IFLS", "DMLS", "IFFL", "VFFL", "VFLS", "DDCF",  "FGA1",
                             "FGA2", "MPUV", "IREV", "CHAN", "TLST", "VER",  "SYSOPT" };

bool isList(const QByteArray &key) { return kLists.contains(key.split(':').constLast()); }

const QByteArrayList kInPercent{ "LBWB", "LBWC", "CSLB", "CSLC" };

/// The setting that a register of a demodulator holds, and the text that a client gets for it.
std::pair<QByteArray, QByteArray> ofRegister(const QByteArray &number, const QByteArray &word)
{
    static const QMap<QByteArray, QByteArray> names{ { "82", "DDQM" }, { "83", "ADEQ" }, { "84", "DFSZ" },
                                                     { "85", "DFWD" }, { "86", "MEAN" }, { "87", "BEPO" },
                                                     { "39", "FGA1" }, { "3A", "FGA2" }, { "3B", "MPUV" } };
    const uint bits = word.toUInt(nullptr, 16);
    if (number == "82")
        return { names[number], (bits & 0x30) == 0x30 ? "1" : "0" };
    if (number == "83")
        return { names[number], bits != 0 ? "1" : "0" };
    return { names[number], number.startsWith('3') ? QByteArray::number(bits) : word };
}

/// By the client's key, in the client's form.
ClientView::Values asTold(const QByteArrayList &texts)
{
    ClientView::Values values;
    const auto hasDemodulator = [&texts](const QByteArray &number) {
        return std::any_of(texts.begin(), texts.end(),
                           [&](const QByteArray &text) { return text.startsWith('D' + number + ':'); });
    };
    for (const QByteArray &text : texts) {
        const QByteArrayList parts = text.split(':');
        const QByteArray &address = parts[0];
        const QByteArray &mnemonic = parts[1];
        const QByteArray value = parts.sliced(2).join(':');
        if (mnemonic.startsWith("SDM")) {
            if (hasDemodulator(mnemonic.last(1)))
                values['D' + mnemonic.last(1) + ":DSRC"] = value;
        } else if (mnemonic == "RDRG") {
            const auto [name, held] = ofRegister(value.first(2), value.sliced(2));
            values[address + ':' + name] = held;
        } else if (kInPercent.contains(mnemonic)) {
            values[address + ':' + mnemonic] = QByteArray::number(value.toDouble() * 100, 'g', 6);
        } else if (mnemonic == "TMID") {
            values[address + ':' + mnemonic] = QByteArray::number(value.toDouble(), 'f', 2);
        } else {
            values[address + ':' + mnemonic] = value;
        }
    }
    return values;
}

QString textOf(const ClientView::Values &values, const QByteArray &key)
{
    return values.contains(key) ? u'"' + QString::fromUtf8(values[key]) + u'"' : u"nothing"_s;
}

void add(ClientView::Values &values, const QString &address, const QJsonObject &members)
{
    for (auto member = members.begin(); member != members.end(); ++member)
        values[(address + u':' + member.key()).toUtf8()] = member->toString().toUtf8();
}

} // namespace

ClientView ClientView::read(const SimulatedChassis &chassis)
{
    ClientView view;
    const QJsonObject told = QJsonDocument::fromJson(chassis.client({ u"dump"_s }).output).object();
    const QJsonObject channels = told[u"channels"].toObject();
    for (auto channel = channels.begin(); channel != channels.end(); ++channel) {
        add(view.m_settings, channel.key(), channel.value()[u"settings"].toObject());
        add(view.m_lists, channel.key(), channel.value()[u"info"].toObject());
    }
    add(view.m_lists, u"U0"_s, told[u"system"].toObject());
    if (!view.m_settings.isEmpty())
        view.m_lists["U0:VER"] = view.m_lists.take("U0:VERTSMAIN");
    view.m_readings = view.m_lists;
    view.m_lists.removeIf([](const auto &entry) { return !isList(entry.key()); });
    view.m_readings.removeIf([](const auto &entry) { return isList(entry.key()); });
    return view;
}

QStringList ClientView::differences(SimulatedChassis &chassis, const ClientView &earlier) const
{
    if (isEmpty())
        return { u"the head does not answer its client"_s };
    QStringList lines;
    const Values held = asTold(chassis.values());
    Values told = m_settings;
    told.insert(m_lists);
    Values known = earlier.m_settings;
    known.insert(earlier.m_lists);
    for (const QByteArray &key : known.keys() + told.keys()) {
        if (textOf(told, key) != textOf(held, key))
            lines += u"%1: the chassis holds %2, the client is told %3"_s.arg(QString::fromLatin1(key),
                                                                              textOf(held, key), textOf(told, key));
    }
    for (const QByteArray &key : held.keys()) {
        const QByteArray address = key.left(key.indexOf(':') + 1);
        const auto next = told.lowerBound(address);
        if (next == told.end() || !next.key().startsWith(address))
            lines += QString::fromLatin1(address) + u" the client is told nothing of this channel"_s;
    }
    for (const QByteArray &key : earlier.m_readings.keys()) {
        if (!m_readings.contains(key))
            lines += QString::fromLatin1(key) + u": the client is told no reading"_s;
    }
    lines.removeDuplicates();
    return lines;
}

QStringList ClientView::differencesAfter(int ms, SimulatedChassis &chassis, const ClientView &earlier)
{
    const QDeadlineTimer deadline(ms);
    QStringList differing = read(chassis).differences(chassis, earlier);
    while (!differing.isEmpty() && !deadline.hasExpired())
        differing = read(chassis).differences(chassis, earlier);
    return differing;
}
