#include "tools/monkey/Trouble.h"

#include "support/SimulatedChassis.h"

namespace {

const QByteArrayList kMixtures{
    "lose 20%",
    "lose 60%",
    "delay 0-3000 30%",
    "delay 900-1200 50%",
    "refuse 30%",
    "silent 10%",
    "flood 2000 1",
    "lose 10%;delay 0-3000 10%;refuse 10%;flood 500 2",
    "delay 0-3000 20%;lose 20%",
    "lose R1;delay 1050 D1",
    "", // calm
};
constexpr int kLeastMs = 700;
constexpr int kMostMs = 2500;

} // namespace

int Trouble::next()
{
    end();
    for (const QByteArray &line : kMixtures[m_random.bounded(int(kMixtures.size()))].split(';')) {
        if (!line.isEmpty())
            order(line);
    }
    return m_random.bounded(kLeastMs, kMostMs);
}

void Trouble::end()
{
    for (const QByteArray line : { "lose off", "refuse off", "silent off", "delay 0" })
        order(line);
}

void Trouble::order(const QByteArray &line)
{
    if (const QByteArray answer = m_chassis.order(line); !answer.startsWith("ok"))
        qFatal("the simulator does not \"%s\": %s", line.constData(), answer.constData());
}
