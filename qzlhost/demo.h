// The demonstration program: one observer, every way to post, from two threads.
#pragma once

#include <iosfwd>

#include "host/host.h"

/// Runs the program in a host that has loaded the library and writes what happens as it happens. Returns
/// whether every notification arrived on the main thread before its poster went on. Main thread only.
bool RunDemo(qzlhost::Host &host, std::ostream &out);
