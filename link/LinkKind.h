#pragma once

#include <QtGlobal>

/// Kinds of serial links.
namespace LinkKind {

enum PORT_TYPE : qint32 {
    REMOTE_LINK = 0,                ///< the remote client queries and sets, and gets changed settings
    REMOTE_EYE_AND_STATUS_LINK = 1, ///< the remote client is sent readings and eye blocks
    COMMAND_LINK = 3,               ///< the chassis
    EYE_CONST_LINK = 4,             ///< sample blocks of the demodulators
    SPECTRAL_LINK = 5,              ///< the card with the spectral and self-test functions
};

} // namespace LinkKind
