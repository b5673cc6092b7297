#pragma once

#include "simulator/chassis/Chassis.h"

#include <QString>
#include <QStringList>

namespace sim {

/// The command line of the simulator.
struct Options
{
    Chassis::Setup setup;
    QString family = QStringLiteral("demod-k3050");
    QString scriptFile;

    /// Reads `arguments`, the program's name first. -1 to go on, otherwise the exit code: help or a listing was
    /// printed, or what is wrong went to standard error.
    [[nodiscard]] int read(const QStringList &arguments);
};

} // namespace sim
