// Objects of Foundation's class clusters become host values whatever their private class.
#import <Foundation/Foundation.h>

#include "tests/support/conversion_doubles.h"
#include "tests/support/row_names.h"

using qzlhost::Host;
using qzlhost::Value;

namespace code = qzlhost::code;

namespace {

/// An object of a class cluster, and the type code of its host value.
struct Form {
    const char *name;
    id (*make)();
    int64_t code;
    /// The host class; empty for a boxed value.
    const char *hostClass;
};

constexpr int64_t kObjectArray = 4105;

const Form kForms[] = {
    {"ConstantString", [] { return id(@"abc"); }, code::String, ""},
    {"StringOfUTF8", [] { return id([NSString stringWithUTF8String:"abc"]); }, code::String, ""},
    {"StringBeyondLatin1", [] { return id([NSString stringWithUTF8String:"a\xE2\x82\xAC"]); }, code::String,
     ""},
    {"Substring", [] { return id([@"abcdef" substringFromIndex:3]); }, code::String, ""},
    {"MutableString", [] { return id([NSMutableString stringWithString:@"abc"]); }, code::String, ""},
    {"EmptyMutableString", [] { return id([NSMutableString string]); }, code::String, ""},
    {"PathOfAURL", [] { return id([[NSURL fileURLWithPath:@"/tmp"] path]); }, code::String, ""},
    {"Data", [] { return id([NSData dataWithBytes:"abc" length:3]); }, code::Object, "MemoryBlock"},
    {"DataWithoutACopy",
     [] {
         static char bytes[] = "abc";
         return id([NSData dataWithBytesNoCopy:bytes length:3 freeWhenDone:NO]);
     },
     code::Object, "MemoryBlock"},
    {"MutableData", [] { return id([NSMutableData dataWithLength:3]); }, code::Object, "MemoryBlock"},
    {"Array", [] { return id([NSArray arrayWithObjects:@"a", @"b", nil]); }, kObjectArray, ""},
    {"EmptyArray", [] { return id([NSArray array]); }, kObjectArray, ""},
    {"MutableArray", [] { return id([NSMutableArray arrayWithObject:@"a"]); }, kObjectArray, ""},
    {"ArrayOfAllKeys", [] { return id([[NSDictionary dictionaryWithObject:@"v" forKey:@"k"] allKeys]); },
     kObjectArray, ""},
    {"Set", [] { return id([NSSet setWithObjects:@"a", @"b", nil]); }, kObjectArray, ""},
    {"MutableSet", [] { return id([NSMutableSet setWithObject:@"a"]); }, kObjectArray, ""},
    {"CountedSet", [] { return id([NSCountedSet setWithObject:@"a"]); }, kObjectArray, ""},
    {"False", [] { return id([NSNumber numberWithBool:NO]); }, code::Boolean, ""},
    {"True", [] { return id([NSNumber numberWithBool:YES]); }, code::Boolean, ""},
    {"SmallInteger", [] { return id([NSNumber numberWithInt:1]); }, code::Int64, ""},
    {"Integer", [] { return id([NSNumber numberWithLongLong:int64_t{1} << 40]); }, code::Int64, ""},
    {"Single", [] { return id([NSNumber numberWithFloat:1.5f]); }, code::Single, ""},
    {"Double", [] { return id([NSNumber numberWithDouble:1.5]); }, code::Double, ""},
    {"DecimalNumber", [] { return id([NSDecimalNumber decimalNumberWithString:@"1.5"]); }, code::Double, ""},
    {"Date", [] { return id([NSDate dateWithTimeIntervalSinceReferenceDate:1e9]); }, code::Date, "Date"},
    {"DistantPast", [] { return id([NSDate distantPast]); }, code::Date, "Date"},
    {"CalendarDate", [] { return id([NSCalendarDate calendarDate]); }, code::Date, "Date"},
    {"Dictionary", [] { return id([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]); }, code::Object,
     "Dictionary"},
    {"EmptyDictionary", [] { return id([NSDictionary dictionary]); }, code::Object, "Dictionary"},
    {"MutableDictionary", [] { return id([NSMutableDictionary dictionaryWithObject:@"v" forKey:@"k"]); },
     code::Object, "Dictionary"},
    {"Environment", [] { return id([[NSProcessInfo processInfo] environment]); }, code::Object, "Dictionary"},
};

class ClassCluster : public LinkedTest, public testing::WithParamInterface<Form> {};

} // namespace

TEST_P(ClassCluster, BecomesItsHostValue)
{
    Host &host = Start();
    const Registry registry;
    const id object = GetParam().make();
    const NSUInteger retains = [object retainCount];
    {
        const qzlhost::AutoreleasePool pool;
        const Value variant = Convert(object);
        EXPECT_EQ(variant.Code(), GetParam().code);
        EXPECT_EQ(host.References(variant), 1);
        if (GetParam().hostClass[0] != '\0')
            EXPECT_EQ(host.ClassOf(variant), GetParam().hostClass);
        EXPECT_EQ(registry.At(object), nullptr) << "values are not registered";
    }
    EXPECT_EQ([object retainCount], retains);
}

TEST_P(ClassCluster, TwiceConvertedIsTwoValues)
{
    Start();
    const Registry registry;
    const id object = GetParam().make();
    const Value first = Convert(object);
    const Value second = Convert(object);
    EXPECT_NE(first.ObjectPointer(), second.ObjectPointer());
}

INSTANTIATE_TEST_SUITE_P(Cocoa, ClassCluster, testing::ValuesIn(kForms), kNameOfRow);
