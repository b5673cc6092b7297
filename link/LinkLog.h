#pragma once

#include <QLoggingCategory>

/// Log categories of the links, all off by default; switch one on with QT_LOGGING_RULES.
Q_DECLARE_LOGGING_CATEGORY(lcLink)    ///< zirvo.link: ports opened, not opened, lost and found, command time-outs
Q_DECLARE_LOGGING_CATEGORY(lcTraffic) ///< zirvo.link.traffic: every frame in either direction
