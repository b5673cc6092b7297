#include "remote/files/SettingsFile.h"

#include "remote/files/InputFile.h"
#include "remote/files/Json.h"
#include "remote/wire/Catalogue.h"
#include "remote/wire/Escaping.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

const QString kFormat = u"zirvo-settings"_s;
constexpr int kVersion = 1;
constexpr qint64 kPieceBytes = 65'536;
constexpr qint64 kMostBytes = 16 * InputFile::kMebibyte; // a full chassis takes some 30 KiB
const QByteArray kSystemAddress = "U0";

QString brief(const QString &name) { return QString::fromLocal8Bit(Escaping::brief(name.toLocal8Bit())); }

QList<Json::Member> known(const QByteArray &address, std::span<const std::string_view> mnemonics,
                          const SettingsReader::Values &values)
{
    QList<Json::Member> members;
    for (const std::string_view mnemonic : mnemonics) {
        const QByteArray value = values.value(Catalogue::key(address, mnemonic));
        if (Message::isKnown(value))
            members.append({ QByteArray(mnemonic.data(), qsizetype(mnemonic.size())), Json::quoted(value) });
    }
    return members;
}

} // namespace

QByteArrayList SettingsFile::keys(const QByteArrayList &channels)
{
    QByteArrayList keys{ kSystemAddress + ":CARDS" };
    const auto add = [&keys](const QByteArray &address, std::span<const std::string_view> mnemonics) {
        for (const std::string_view mnemonic : mnemonics)
            keys.append(Catalogue::key(address, mnemonic));
    };
    add(kSystemAddress, Catalogue::identity());
    for (const QByteArray &address : channels) {
        add(address, Catalogue::of(address).settings);
        add(address, Catalogue::of(address).info);
    }
    return keys;
}

QByteArray SettingsFile::text(const QByteArrayList &channels, const SettingsReader::Values &values,
                              const QDateTime &taken)
{
    QList<Json::Member> system = known(kSystemAddress, Catalogue::identity(), values);
    const QByteArray cards = values.value(kSystemAddress + ":CARDS");
    system.append({ "cards", Json::list(Message::isKnown(cards) ? cards.split(',') : QByteArrayList()) });
    QList<Json::Member> members;
    for (const QByteArray &address : channels) {
        const Catalogue::Rows rows = Catalogue::of(address);
        members.append({ address, Json::object({ { "settings", Json::object(known(address, rows.settings, values), 3) },
                                                 { "info", Json::object(known(address, rows.info, values), 3) } },
                                               2) });
    }
    return Json::object({ { "format", Json::quoted(kFormat) },
                          { "version", Json::number(kVersion) },
                          { "taken", Json::quoted(taken.toString(Qt::ISODateWithMs)) },
                          { "system", Json::object(system, 1) },
                          { "channels", Json::object(members, 1) } });
}

QString SettingsFile::read(const QString &path)
{
    InputFile file;
    if (QString wrong = file.open(path, kMostBytes); !wrong.isEmpty())
        return wrong;
    QByteArray text;
    for (QByteArray piece; text.size() <= kMostBytes && !(piece = file.content().read(kPieceBytes)).isEmpty();)
        text += piece;
    if (text.size() > kMostBytes)
        return u"%1: larger than %2 MiB, not a file of settings"_s.arg(path).arg(kMostBytes / InputFile::kMebibyte);
    QJsonParseError error;
    const QJsonObject root = QJsonDocument::fromJson(text, &error).object();
    if (error.error != QJsonParseError::NoError)
        return u"%1: no JSON: %2 at byte %3"_s.arg(path, error.errorString()).arg(error.offset);
    if (root[u"format"].toString() != kFormat)
        return u"%1: not a file of settings"_s.arg(path);
    if (root[u"version"].toDouble() != kVersion)
        return u"%1: its version is not %2"_s.arg(path).arg(kVersion);
    if (!root[u"channels"].isObject())
        return u"%1: it holds no \"channels\""_s.arg(path);
    const QJsonObject channels = root[u"channels"].toObject();
    for (auto channel = channels.begin(); channel != channels.end(); ++channel) {
        if (const QString wrong = readChannel(channel.key(), channel.value()); !wrong.isEmpty()) {
            m_settings.clear(); // of the channels before it
            return u"%1: %2"_s.arg(path, wrong);
        }
    }
    return {};
}

QString SettingsFile::readChannel(const QString &address, const QJsonValue &channel)
{
    const QJsonValue settings = channel.toObject()[u"settings"];
    if (!settings.isObject())
        return u"%1 holds no \"settings\""_s.arg(brief(address));
    const QJsonObject object = settings.toObject();
    for (auto setting = object.begin(); setting != object.end(); ++setting) {
        const QString name = address + u':' + setting.key();
        const QByteArray key = name.toLocal8Bit();
        const QByteArray value = setting->toString().toLocal8Bit();
        if (const QString wrong = Message::keyProblem(key); !wrong.isEmpty())
            return u"\"%1\": %2"_s.arg(brief(name), wrong);
        if (!setting->isString())
            return u"%1: the value is not a text"_s.arg(brief(name));
        if (value.isEmpty() || Message::hasControlCharacter(value))
            return u"%1: the value is empty or holds control characters"_s.arg(brief(name));
        m_settings.insert(key, value);
    }
    return {};
}

} // namespace remote
