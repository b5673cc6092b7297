#include "simulator/units/PresetStore.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>

namespace sim {

bool PresetStore::useFile(const QString &path, QString &error)
{
    m_path = path;
    QFile file(path);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    m_presets = document.object();
    const bool valid = document.isObject() && std::all_of(m_presets.constBegin(), m_presets.constEnd(),
                                                          [](const QJsonValue &v) { return v.isObject(); });
    if (!valid)
        error = QStringLiteral("%1 holds no presets").arg(path);
    return valid;
}

QByteArrayList PresetStore::names() const
{
    QByteArrayList list;
    for (const QString &name : m_presets.keys())
        list.append(name.toUtf8());
    return list;
}

bool PresetStore::contains(const QByteArray &name) const { return m_presets.contains(QString::fromUtf8(name)); }

QJsonObject PresetStore::state(const QByteArray &name) const
{
    return m_presets.value(QString::fromUtf8(name)).toObject();
}

bool PresetStore::store(const QByteArray &name, const QJsonObject &state)
{
    // Blanks separate the names in the listing, so a name with a blank could never be restored.
    const bool listable = std::none_of(name.begin(), name.end(), [](char c) { return c >= 0 && c <= ' '; });
    const bool room = contains(name) || m_presets.size() < kMostPresets;
    if (!listable || !room || name.isEmpty() || name.size() > kLongestName)
        return false;
    QJsonObject presets = m_presets;
    presets.insert(QString::fromUtf8(name), state);
    return replace(presets);
}

bool PresetStore::remove(const QByteArray &name)
{
    QJsonObject presets = m_presets;
    if (!contains(name))
        return false;
    presets.remove(QString::fromUtf8(name));
    return replace(presets);
}

bool PresetStore::replace(const QJsonObject &presets)
{
    if (!m_path.isEmpty()) {
        QSaveFile file(m_path);
        const QByteArray text = QJsonDocument(presets).toJson();
        // commit() does not report an error of the flush it does itself.
        const bool written =
            file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() && file.commit();
        if (!written) {
            m_problem = QStringLiteral("%1 cannot be written, the presets stay as they were").arg(m_path);
            return false;
        }
    }
    m_presets = presets;
    return true;
}

} // namespace sim
