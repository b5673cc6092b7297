#include "remote/files/SettingsFile.h"

#include "remote/files/InputFile.h"
#include "remote/files/Json.h"
#include "remote/wire/Catalogue.h"
#include "remote/wire/Escaping.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <nlohmann/json.hpp>

using namespace Qt::StringLiterals;

namespace remote {

namespace {

const QString kFormat = u"zirvo-settings"_s;
constexpr int kVersion = 1;
constexpr qint64 kPieceBytes = 65'536;
constexpr qint64 kMaxBytes = 16 * InputFile::kMebibyte; // a full chassis takes some 30 KiB
const QByteArray kSystemAddress = "U0";

QString brief(const QString &name) { return QString::fromLocal8Bit(Escaping::brief(name.toLocal8Bit())); }

Json::Value known(const QByteArray &address, std::span<const std::string_view> mnemonics,
                  const SettingsReader::Values &values)
{
    Json::Value members = Json::Value::object();
    for (const std::string_view mnemonic : mnemonics) {
        const QByteArray value = values.value(Catalogue::key(address, mnemonic));
        if (Message::isKnown(value))
            members[std::string(mnemonic)] = Json::text(value);
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
    Json::Value file = { { "format", kFormat.toStdString() },
                         { "version", kVersion },
                         { "taken", taken.toString(Qt::ISODateWithMs).toStdString() },
                         { "system", known(kSystemAddress, Catalogue::identity(), values) },
                         { "channels", Json::Value::object() } };
    Json::Value &cards = file["system"]["cards"] = Json::Value::array();
    if (const QByteArray list = values.value(kSystemAddress + ":CARDS"); Message::isKnown(list)) {
        for (const QByteArray &card : list.split(','))
            cards.push_back(Json::text(card));
    }
    for (const QByteArray &address : channels) {
        const Catalogue::Rows rows = Catalogue::of(address);
        file["channels"][Json::text(address)] = { { "settings", known(address, rows.settings, values) },
                                                  { "info", known(address, rows.info, values) } };
    }
    return Json::lines(file);
}

QString SettingsFile::read(const QString &path)
{
    InputFile file;
    if (QString wrong = file.open(path, kMaxBytes); !wrong.isEmpty())
        return wrong;
    QByteArray text;
    for (QByteArray piece; text.size() <= kMaxBytes && !(piece = file.content().read(kPieceBytes)).isEmpty();)
        text += piece;
    if (text.size() > kMaxBytes)
        return u"%1: larger than %2 MiB, not a file of settings"_s.arg(path).arg(kMaxBytes / InputFile::kMebibyte);
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
            m_settings.clear(); // those of earlier channels
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
