// A plugin library that registers nothing: what loading any library takes.

extern "C" __attribute__((visibility("default"))) void REALPluginMain(void *(*)(const char *)) {}
