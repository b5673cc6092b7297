#include "link/LinkLog.h"

Q_LOGGING_CATEGORY(lcLink, "zirvo.link", QtCriticalMsg)
Q_LOGGING_CATEGORY(lcTraffic, "zirvo.link.traffic", QtCriticalMsg)
