// The functions that the library asks the host for.
#pragma once

/// The host's function of this name; null if it has none.
void *FindHostFunction(const char *name);
