#pragma once

#include "simulator/radio/RadioScene.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace sim {

/// The contents of one kind of chassis, read from a JSON file.
struct Family
{
    QString title;
    QJsonObject system;                  ///< start values of "U0", card list included
    QMap<int, QJsonObject> receivers;    ///< start values by receiver number, 1 or 2
    std::optional<QJsonObject> combiner; ///< start values of "C1", if there is one
    QMap<int, QJsonObject> demodulators; ///< start values by demodulator number, 1 to 3
    std::optional<QJsonObject> tape;     ///< start values of "T1", if the card list has a tape card
    QMap<int, QJsonObject> tmoipCards;   ///< start values by address, for each card number
    std::optional<QJsonObject> spectral; ///< start values by address on the spectral link, if a card answers there
    /// Whether the card list names demodulators of the older kind.
    bool hasOlderDemodulators = false;
    QList<RadioSignal> scene;

    /// Names of the families that come with the simulator.
    [[nodiscard]] static QStringList builtIn();
    /// A built-in family by name, or a file by path. Nothing, with `error` set, if there is none or it is malformed.
    [[nodiscard]] static std::optional<Family> load(const QString &nameOrPath, QString &error);
};

} // namespace sim
