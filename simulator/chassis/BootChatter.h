#pragma once

#include <QByteArray>
#include <QRandomGenerator>

namespace sim {

/// What a chassis prints on its command link while it boots: loader text, bytes at a wrong speed, and now and then
/// something that looks like a message.
class BootChatter
{
public:
    explicit BootChatter(quint32 seed) : m_random(seed) {}

    /// The next piece, without end.
    [[nodiscard]] QByteArray next();

private:
    QRandomGenerator m_random;
    qsizetype m_position = 0;
};

} // namespace sim
