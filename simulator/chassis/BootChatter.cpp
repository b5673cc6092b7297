#include "simulator/chassis/BootChatter.h"

#include <array>

namespace sim {

QByteArray BootChatter::next()
{
    static const std::array<QByteArray, 7> kPieces{
        "boot loader 1.4, 128 MiB\r\n",
        "loading image ....... ok\r\n",
        "card bus: scanning\r\n",
        "\x02"
        "U0:BOOT:1\r",
        "fpga load slot 3: ok\r\n",
        "\x02"
        "ready\r",
        "warning: clock not set\r\n",
    };
    constexpr int kMostNoise = 12;
    QByteArray piece = kPieces.at(size_t(m_position++) % kPieces.size());
    for (int left = m_random.bounded(kMostNoise); left > 0; --left)
        piece.append(char(m_random.bounded(0x80, 0x100)));
    return piece;
}

} // namespace sim
