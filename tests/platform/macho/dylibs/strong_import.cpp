// Wants a function of a library that is not there.
extern "C" {
int missingFunction(int number);

__attribute__((visibility("default"))) int callMissing()
{
    return missingFunction(1);
}
}
