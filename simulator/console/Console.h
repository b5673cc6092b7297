#pragma once

#include "simulator/console/Order.h"

#include <QByteArray>

#include <string_view>

namespace sim {

class Chassis;

/// The commands that an operator or a test gives a running chassis: faults, changes, cables. Each is one line and is
/// answered with one line, "ok ..." or "error: ...".
class Console
{
public:
    /// `chassis` must outlive the console.
    explicit Console(Chassis &chassis) : m_chassis(chassis) {}

    /// Carries out one line.
    [[nodiscard]] QByteArray execute(const QByteArray &line);
    /// Whether a command ended the simulation.
    [[nodiscard]] bool wantsQuit() const { return m_wantsQuit; }
    /// All commands with their usage, for a help text.
    [[nodiscard]] static QByteArray overview();

private:
    struct Command
    {
        std::string_view name;
        std::string_view usage;
        std::string_view purpose;
        int fewest; ///< words after the name
        int most;
        QByteArray (Console::*run)(const Order &order);
    };
    static const Command kCommands[];

    QByteArray refuse(const Order &order);
    QByteArray silent(const Order &order);
    QByteArray lose(const Order &order);
    QByteArray delay(const Order &order);
    QByteArray garble(const Order &order);
    QByteArray flood(const Order &order);
    QByteArray send(const Order &order);
    QByteArray raw(const Order &order);
    QByteArray set(const Order &order);
    QByteArray values(const Order &order);
    QByteArray signal(const Order &order);
    QByteArray unplug(const Order &order);
    QByteArray plug(const Order &order);
    QByteArray powerCycle(const Order &order);
    QByteArray reconfigure(const Order &order);
    QByteArray show(const Order &order);
    QByteArray help(const Order &order);
    QByteArray quit(const Order &order);

    QByteArray addRule(FaultRules::Fault fault, const Order &order);
    QByteArray setPlugged(const Order &order, bool plugged);

    Chassis &m_chassis;
    bool m_wantsQuit = false;
};

} // namespace sim
