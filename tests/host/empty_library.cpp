// A library that is no plugin, for the host's own tests.
extern "C" __attribute__((visibility("default"))) int NothingOfInterest()
{
    return 0;
}
