// Imports a function of a library that does not exist.
extern "C" {
int missingFunction(int number);

__attribute__((visibility("default"))) int callMissing()
{
    return missingFunction(1);
}
}
