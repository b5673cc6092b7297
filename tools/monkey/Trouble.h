#pragma once

#include <QRandomGenerator>

class SimulatedChassis;

/// What goes wrong between head and cards: answers are lost, late and out of order, requests are refused and ignored,
/// and reports come in floods. Each mixture lasts for a second or two; some are calm.
class Trouble
{
public:
    Trouble(SimulatedChassis &chassis, quint32 seed) : m_chassis(chassis), m_random(seed) {}

    /// Goes on to the next mixture. Returns how long it is to last, in milliseconds.
    int next();
    void end();

private:
    void order(const QByteArray &line);

    SimulatedChassis &m_chassis;
    QRandomGenerator m_random;
};
