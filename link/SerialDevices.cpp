#include "link/SerialDevices.h"

#include <QtGlobal>

using namespace Qt::StringLiterals;

namespace {

constexpr int kStartupSeconds = 60;

struct DeviceNumbers
{
    int standard;
    int legacyBoard;
};

constexpr DeviceNumbers deviceNumbers(SerialPortController::PORT_TYPE type)
{
    switch (type) {
    case SerialPortController::REMOTE_LINK:
        return { 4, 8 };
    case SerialPortController::REMOTE_EYE_AND_STATUS_LINK:
        return { 5, 9 };
    case SerialPortController::COMMAND_LINK:
        return { 0, 3 };
    case SerialPortController::EYE_CONST_LINK:
        return { 1, 7 };
    case SerialPortController::SPECTRAL_LINK:
        return { 2, 2 };
    }
    Q_UNREACHABLE();
}

} // namespace

QString SerialDevices::path(SerialPortController::PORT_TYPE type, bool legacyBoard)
{
    const auto [standard, legacy] = deviceNumbers(type);
    const QString folder = qEnvironmentVariable("ZIRVO_DEVICE_DIR", u"/dev"_s);
    return folder + u"/ttyUSB"_s + QString::number(legacyBoard ? legacy : standard);
}

int SerialDevices::commandLinkStartupSeconds()
{
    bool isNumber = false;
    const int seconds = qEnvironmentVariableIntValue("ZIRVO_STARTUP_SECONDS", &isNumber);
    return isNumber && seconds >= 0 ? seconds : kStartupSeconds;
}
