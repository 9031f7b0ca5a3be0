// The class of the plugin family for Cocoa exceptions, which the command brings itself: without it a program
// never learns of them.
#pragma once

#include "host/host.h"

namespace qzlhost {

/// Defines NSExceptionQZL in the host, and adds to NSException the class method that makes its instances.
/// Once per process, main thread.
void OfferExceptionClass(Host &host);

} // namespace qzlhost
