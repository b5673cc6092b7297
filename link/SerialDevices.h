#pragma once

#include "link/LinkKind.h"

#include <QString>

/// Where the serial links are found: the one place that knows device names.
///
/// Two environment variables stand in for the head's hardware on a developer's bench; on the head they are absent:
/// ZIRVO_DEVICE_DIR names a folder instead of "/dev", ZIRVO_STARTUP_SECONDS the start-up countdown of the command
/// link instead of 60.
namespace SerialDevices {

/// Full path of the device of a link kind.
/// @param legacyBoard whether the head has the older board, which numbers its devices otherwise
[[nodiscard]] QString path(LinkKind::PORT_TYPE type, bool legacyBoard);

/// Seconds for which the command link waits for the chassis to boot; a bench value that is not a whole number from 0
/// up counts as absent.
[[nodiscard]] int commandLinkStartupSeconds();

} // namespace SerialDevices
