#pragma once

#include <QByteArray>
#include <QRandomGenerator>

namespace sim {

/// Output of a booting chassis on its command link: loader text, bytes at a wrong baud rate, and sometimes what looks
/// like a message.
class BootChatter
{
public:
    explicit BootChatter(quint32 seed) : m_random(seed) {}

    /// The next piece; there is always one.
    [[nodiscard]] QByteArray next();

private:
    QRandomGenerator m_random;
    qsizetype m_position = 0;
};

} // namespace sim
