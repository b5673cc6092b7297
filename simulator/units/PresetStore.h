#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QJsonObject>
#include <QString>

#include <utility>

namespace sim {

/// The presets of a chassis by name, in memory and, if wanted, in a file that outlives the run.
class PresetStore
{
public:
    static constexpr qsizetype kMostPresets = 100;
    static constexpr qsizetype kLongestName = 64;

    /// Reads `path` if it exists and keeps it up to date from then on. False with `error` set if it is not a preset
    /// file.
    [[nodiscard]] bool useFile(const QString &path, QString &error);

    /// In alphabetical order.
    [[nodiscard]] QByteArrayList names() const;
    [[nodiscard]] bool contains(const QByteArray &name) const;
    [[nodiscard]] QJsonObject state(const QByteArray &name) const;
    /// False if the name is not allowed (blanks, length), the store is full or the file cannot be written.
    [[nodiscard]] bool store(const QByteArray &name, const QJsonObject &state);
    /// False if there is none of that name or the file cannot be written.
    [[nodiscard]] bool remove(const QByteArray &name);
    /// Why the file could not be written; reported once.
    [[nodiscard]] QString takeProblem() { return std::exchange(m_problem, {}); }

private:
    [[nodiscard]] bool replace(const QJsonObject &presets);

    QString m_path;
    QJsonObject m_presets;
    QString m_problem;
};

} // namespace sim
