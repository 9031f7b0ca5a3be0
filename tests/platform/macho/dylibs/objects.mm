// Classes, categories, messages and constant strings.
#import <Foundation/Foundation.h>

#include "tests/platform/macho/dylibs/objects.h"

@interface NSString (OfTheTest)
+ (NSString *)stringWithFormat:(NSString *)format, ...;
- (NSUInteger)length;
@end

@interface NSException (OfTheTest)
- (id)initWithName:(NSString *)name reason:(NSString *)reason userInfo:(NSDictionary *)userInfo;
@end

@interface NSObject (OfTheTest)
- (long)addedToEveryObject;
+ (long)addedToEveryClass;
@end

/// What the tests' objects answer.
@interface NSObject (Asked)
- (double)numberOfNil;
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
    asm volatile(""); // else the compiler runs the initialisers itself
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

/// Right under NSObject: the compiler writes its offsets into the code.
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
    return [NSString stringWithFormat:@"square %@ %d %.1f", [super kind], 4, 0.25];
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

/// Under a class whose size differs between platforms: its offsets are read from memory.
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

#pragma GCC visibility push(default)
extern "C" {

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
