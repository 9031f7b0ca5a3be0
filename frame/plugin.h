// The entry point of the library.
#pragma once

/// Called by the host once, before any other call: asks for the host's version and registers the library's
/// classes.
extern "C" __attribute__((visibility("default"))) void REALPluginMain(void *(*resolver)(const char *name));
