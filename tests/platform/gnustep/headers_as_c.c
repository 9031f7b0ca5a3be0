// The headers, compiled and used as C.
#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>
#include <pthread.h>

CFTypeID TypeOfNothingAskedFromC(void);
CFTypeID TypeOfNothingAskedFromC(void)
{
    return CFGetTypeID(NULL);
}
