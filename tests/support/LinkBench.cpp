#include "support/LinkBench.h"

namespace {

/// A receiver's settings in the order in which they are asked for at start-up.
const QList<std::pair<QByteArray, QByteArray>> kReceiver {
    { "NAME", "Receiver" },  { "ACFE", "0" },  { "ANCF", "-20" },
    { "CAMP", "1" },         { "CAMF", "0" },  { "AMIP", "0" },
    { "FLST", "2395.5 2200.5,1485.5 1435.5" }, { "CIFS", "0" },
    { "FREQ", "2250.5" },    { "IFLS", "1 MHz,5 MHz,10 MHz" },
    { "IFBW", "1" },         { "AGCF", "0" },  { "AGCZ", "0" },
    { "SLPA", "1" },         { "SLPB", "2" },  { "POLA", "0" },
    { "POLB", "1" },         { "IMPA", "0" },  { "IMPB", "0" },
    { "AGCT", "1" },         { "AFC", "1" },   { "AFCM", "0" },
    { "PLYB", "0" },         { "AIFB", "0" },  { "CINP", "0" },
    { "CIF1", "0" },         { "CATN", "0" },  { "MANG", "0" },
};

const QList<std::pair<QByteArray, QByteArray>> kSystem {
    { "NAME", "Range 4" }, { "SLAVE", "0" }, { "TMRF", "1" }, { "TLST", "" }, { "SYSOPT", "0" }, { "ABSSI", "0" },
};

QByteArrayList queries(const QByteArray &address, const QList<std::pair<QByteArray, QByteArray>> &settings)
{
    QByteArrayList frames;
    for (const auto &[mnemonic, value] : settings)
        frames += address + ':' + mnemonic;
    return frames;
}

} // namespace

LinkBench::LinkBench(int startupSeconds)
    : m_command(path(QStringLiteral("ttyUSB0")))
    , m_eye(path(QStringLiteral("ttyUSB1")))
    , m_spectral(path(QStringLiteral("ttyUSB2")))
    , m_remote(path(QStringLiteral("ttyUSB4")))
    , m_remoteEyeAndStatus(path(QStringLiteral("ttyUSB5")))
{
    qputenv("ZIRVO_DEVICE_DIR", m_folder.path().toLocal8Bit());
    if (startupSeconds < 0)
        qunsetenv("ZIRVO_STARTUP_SECONDS");
    else
        qputenv("ZIRVO_STARTUP_SECONDS", QByteArray::number(startupSeconds));
    fillChassis();
}

void LinkBench::fillChassis()
{
    for (const auto &[mnemonic, value] : kSystem)
        m_command.setValue("U0:" + mnemonic, value);
    for (const QByteArray address : { "R1", "R2" }) {
        for (const auto &[mnemonic, value] : kReceiver)
            m_command.setValue(address + ':' + mnemonic, value);
    }
    m_command.setValue("U0:VER", "3.4");
    m_command.setValue("U0:VERTSKB", "1.7");
    m_command.setValue("U0:CLST", "0103 MPU 2.3 TUNER A1 X,0121 FPGA1 1.9 TUNER A1 X,"
                                  "0104 MPU 2.3 TUNER A2 X,0122 FPGA1 1.9 TUNER A2 X");
}

QByteArrayList LinkBench::systemQueries()
{
    return queries("U0", kSystem);
}

QByteArrayList LinkBench::receiverQueries(const QByteArray &address)
{
    return queries(address, kReceiver);
}
