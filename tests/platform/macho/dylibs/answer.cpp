// A function without imports, for processors whose stubs are missing here.
extern "C" __attribute__((visibility("default"))) int answer()
{
    return 43;
}
