#include "link/SerialDevices.h"

#include <QtGlobal>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int kStartupSeconds = 60;

struct Device
{
    LinkKind::PORT_TYPE type;
    int number;
    int legacyNumber; ///< with the older board
};

constexpr std::array kDevices{
    Device{ LinkKind::COMMAND_LINK, 0, 3 },
    Device{ LinkKind::EYE_CONST_LINK, 1, 7 },
    Device{ LinkKind::SPECTRAL_LINK, 2, 2 },
    Device{ LinkKind::REMOTE_LINK, 4, 8 },
    Device{ LinkKind::REMOTE_EYE_AND_STATUS_LINK, 5, 9 },
};

} // namespace

QString SerialDevices::path(LinkKind::PORT_TYPE type, bool legacyBoard)
{
    const auto *const device = std::ranges::find(kDevices, type, &Device::type);
    const QString folder = qEnvironmentVariable("ZIRVO_DEVICE_DIR", u"/dev"_s);
    return folder + u"/ttyUSB"_s + QString::number(legacyBoard ? device->legacyNumber : device->number);
}

int SerialDevices::commandLinkStartupSeconds()
{
    bool isNumber = false;
    const int seconds = qEnvironmentVariableIntValue("ZIRVO_STARTUP_SECONDS", &isNumber);
    return isNumber && seconds >= 0 ? seconds : kStartupSeconds;
}
