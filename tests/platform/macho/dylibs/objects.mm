// Classes, categories, messages and constant strings.
#import <Foundation/Foundation.h>

#include <cstdarg>

#include "tests/platform/macho/dylibs/objects.h"

@interface NSString (OfTheTest)
- (NSString *)stringByAppendingString:(NSString *)text;
- (NSUInteger)length;
@end

@interface NSException (OfTheTest)
- (id)initWithName:(NSString *)name reason:(NSString *)reason userInfo:(NSDictionary *)userInfo;
@end

@interface NSObject (OfTheTest)
- (long)addedToEveryObject;
+ (long)addedToEveryClass;
@end

/// Messages to the tests' objects.
@interface NSObject (Asked)
- (double)numberOfNil;
- (FourFloats)fourFloats;
- (TwoIntegers)twoIntegers;
- (FiveIntegers)fiveIntegers;
- (double)sum:(long)a
          and:(long)b
          and:(long)c
          and:(long)d
          and:(long)e
          and:(double)f
          and:(double)g
          and:(double)h
          and:(double)i
          and:(double)j
          and:(double)k
          and:(double)l
          and:(double)m
          and:(double)n;
@end

namespace {

const char *gLoaded[8];
int gLoadedCount;

void NoteLoaded(const char *what)
{
    asm volatile(""); // Keeps the compiler from running the initialisers itself.
    gLoaded[gLoadedCount++] = what;
}

struct StaticObject {
    StaticObject() { NoteLoaded("static object"); }
} gStaticObject;

} // namespace

@implementation NSObject (OfTheTest)
- (long)addedToEveryObject
{
    return 42;
}
+ (long)addedToEveryClass
{
    return 43;
}
+ (void)load
{
    NoteLoaded("+[NSObject(OfTheTest) load]");
}
@end

/// Derived from NSObject itself: the compiler writes the variables' offsets into the code.
@interface MachOShape : NSObject {
@public
    long sides;
    double area;
}
- (id)initWithSides:(long)count;
- (long)sides;
@end

@implementation MachOShape
+ (void)load
{
    NoteLoaded("+[MachOShape load]");
}
+ (NSString *)kind
{
    return @"shape";
}
- (id)initWithSides:(long)count
{
    self = [super init];
    if (self != nil) {
        sides = count;
        area = 0.5;
    }
    return self;
}
- (long)sides
{
    return sides;
}
- (TwoIntegers)twoIntegers
{
    return {sides, -1};
}
- (TwoNumbers)twoNumbers
{
    return {area, 2 * area};
}
- (IntegerAndNumber)integerAndNumber
{
    return {sides, area};
}
- (FourFloats)fourFloats
{
    return {{1, 2, 3, 4}};
}
- (FiveIntegers)fiveIntegers
{
    return {{sides, 1, 2, 3, 4}};
}
- (double)sum:(long)a
          and:(long)b
          and:(long)c
          and:(long)d
          and:(long)e
          and:(double)f
          and:(double)g
          and:(double)h
          and:(double)i
          and:(double)j
          and:(double)k
          and:(double)l
          and:(double)m
          and:(double)n
{
    return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h + 9 * i + 10 * j + 11 * k + 12 * l +
           13 * m + 14 * n;
}
- (long)overridden
{
    return 1;
}
- (long)replacedByCategory
{
    return 1;
}
@end

@interface MachOSquare : MachOShape {
    char label;
    TwoNumbers corner;
}
@end

@implementation MachOSquare
+ (NSString *)kind
{
    return [[super kind] stringByAppendingString:@" and square"];
}
- (id)initWithSides:(long)count
{
    self = [super initWithSides:count];
    if (self != nil) {
        label = 'q';
        corner = {3, 4};
    }
    return self;
}
- (FiveIntegers)fiveIntegers
{
    return {{sides, 1, 2, 3, label}};
}
- (TwoNumbers)twoNumbers
{
    const TwoNumbers numbers = [super twoNumbers];
    return {numbers.first + corner.first, numbers.second + corner.second};
}
@end

@implementation MachOSquare (OfTheTest)
- (long)overridden
{
    return 10 + [super overridden];
}
@end

@implementation MachOShape (OfTheTest)
- (long)replacedByCategory
{
    return 2;
}
@end

/// Derived from a class whose size differs between platforms: the code reads the variables' offsets from
/// memory.
@interface MachOException : NSException {
    long code;
}
- (void)setCode:(long)newCode;
- (long)code;
@end

@implementation MachOException
- (void)setCode:(long)newCode
{
    code = newCode;
}
- (long)code
{
    return code;
}
@end

namespace {

/// Clears the registers of arguments.
void ClobberArguments()
{
#if defined(__x86_64__)
    asm volatile(
        "xorps %%xmm0, %%xmm0; xorps %%xmm1, %%xmm1; xorps %%xmm2, %%xmm2; xorps %%xmm3, %%xmm3;"
        "xorps %%xmm4, %%xmm4; xorps %%xmm5, %%xmm5; xorps %%xmm6, %%xmm6; xorps %%xmm7, %%xmm7;"
        "xorl %%eax, %%eax; xorl %%ecx, %%ecx; xorl %%edx, %%edx; xorl %%r8d, %%r8d; xorl %%r9d, %%r9d"
        :
        :
        : "xmm0", "xmm1", "xmm2", "xmm3", "xmm4", "xmm5", "xmm6", "xmm7", "rax", "rcx", "rdx", "r8", "r9");
#else
    asm volatile("movi v0.2d, #0\nmovi v1.2d, #0\nmovi v2.2d, #0\nmovi v3.2d, #0\n"
                 "movi v4.2d, #0\nmovi v5.2d, #0\nmovi v6.2d, #0\nmovi v7.2d, #0\n"
                 "mov x0, #0\nmov x1, #0\nmov x2, #0\nmov x3, #0\nmov x4, #0\nmov x5, #0\nmov x6, #0\n"
                 "mov x7, #0\nmov x8, #0"
                 :
                 :
                 : "v0", "v1", "v2", "v3", "v4", "v5", "v6", "v7", "x0", "x1", "x2", "x3", "x4", "x5", "x6",
                   "x7", "x8");
#endif
}

} // namespace

/// The first message runs +initialize, before the method gets the message's arguments; so with the two below.
@interface MachOFirst : NSObject
+ (double)sum:(long)a and:(long)b and:(long)c and:(long)d with:(const double *)e;
+ (double)sum:(double)a
          and:(double)b
          and:(double)c
          and:(double)d
          and:(double)e
          and:(double)f
          and:(double)g
          and:(double)h;
+ (FiveIntegers)backwards:(long)a and:(long)b and:(long)c and:(long)d and:(long)e;
@end

@implementation MachOFirst
+ (void)initialize
{
    ClobberArguments();
}
+ (double)sum:(long)a and:(long)b and:(long)c and:(long)d with:(const double *)e
{
    return a + 2 * b + 3 * c + 4 * d + *e;
}
+ (double)sum:(double)a
          and:(double)b
          and:(double)c
          and:(double)d
          and:(double)e
          and:(double)f
          and:(double)g
          and:(double)h
{
    return a + 2 * b + 3 * c + 4 * d + 5 * e + 6 * f + 7 * g + 8 * h;
}
+ (FiveIntegers)backwards:(long)a and:(long)b and:(long)c and:(long)d and:(long)e
{
    return {{e, d, c, b, a}};
}
@end

@interface MachOFirstOfNumbers : MachOFirst
@end
@implementation MachOFirstOfNumbers
+ (void)initialize
{
    ClobberArguments();
}
@end

@interface MachOFirstOfResults : MachOFirst
@end
@implementation MachOFirstOfResults
+ (void)initialize
{
    ClobberArguments();
}
@end

@interface MachOFirstOfMany : NSObject
+ (double)sumOf:(int)count, ...;
@end

@implementation MachOFirstOfMany
+ (void)initialize
{
    ClobberArguments();
}
+ (double)sumOf:(int)count, ...
{
    va_list numbers;
    va_start(numbers, count);
    double sum = 0;
    for (int i = 0; i < count; ++i)
        sum += va_arg(numbers, double);
    va_end(numbers);
    return sum;
}
@end

#pragma GCC visibility push(default)
extern "C" {

double firstSum()
{
    const double fifth = 5.5;
    return [MachOFirst sum:1 and:2 and:3 and:4 with:&fifth];
}
double firstSumOfNumbers()
{
    return [MachOFirstOfNumbers sum:1 and:2 and:3 and:4 and:5 and:6 and:7 and:8];
}
FiveIntegers firstBackwards()
{
    return [MachOFirstOfResults backwards:1 and:2 and:3 and:4 and:5];
}
double firstSumOfMany()
{
    return [MachOFirstOfMany sumOf:4, 1.0, 2.0, 3.0, 4.0];
}

id newShape(long sides)
{
    return [[MachOShape alloc] initWithSides:sides];
}

id newSquare()
{
    return [[MachOSquare alloc] initWithSides:4];
}

id newException(long code)
{
    MachOException *const exception = [[MachOException alloc] initWithName:@"MachOException"
                                                                    reason:@"a reason"
                                                                  userInfo:nil];
    [exception setCode:code];
    return exception;
}

long codeOfException(MachOException *exception)
{
    return [exception code];
}

NSString *kindOfSquare()
{
    return [MachOSquare kind];
}

TwoIntegers askTwoIntegers(id object)
{
    return [object twoIntegers];
}
FiveIntegers askFiveIntegers(id object)
{
    return [object fiveIntegers];
}
double askSum(id object)
{
    return [object sum:1
                   and:2
                   and:3
                   and:4
                   and:5
                   and:0.5
                   and:1.5
                   and:2.5
                   and:3.5
                   and:4.5
                   and:5.5
                   and:6.5
                   and:7.5
                   and:8.5];
}
FourFloats askFourFloats(id object)
{
    return [object fourFloats];
}
double askNumber(id object)
{
    return [object numberOfNil];
}

long askAdded(id object)
{
    return [object addedToEveryObject] + [[object class] addedToEveryClass];
}

NSString *asciiString()
{
    return @"plain text";
}
NSString *emptyString()
{
    return @"";
}
NSString *asciiStringWithNul()
{
    return @"a\0b";
}
NSString *wideString()
{
    return @"Gr\u00FC\u00DFe \U0001F600";
}
NSString *wideStringWithNul()
{
    return @"\u00FC\0b";
}

SEL selectorOfSides()
{
    return @selector(sides);
}

const char *const *loadedThings(int *count)
{
    *count = gLoadedCount;
    return gLoaded;
}

__attribute__((constructor)) void constructorFunction()
{
    NoteLoaded("constructor function");
}
}
#pragma GCC visibility pop
