// The element types of host arrays, with elements and their Cocoa objects.
#pragma once

#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

#include <ctime>

#include "host/host.h"

/// One element type of host arrays.
struct ArrayRow {
    const char *name;
    int64_t arrayCode;
    int64_t elementCode;
    /// The host function that returns the element reader.
    const char *reader;
    qzlhost::Value (*element)(qzlhost::Host &host, int64_t index);
    id (*expected)(int64_t index);
    /// The Cocoa object of an element that cannot be read; nil where Cocoa refuses it.
    id (*missing)();
};

inline constexpr int64_t kStep = -123456789012;

inline qzlhost::Value IntegerElement(qzlhost::Host &, int64_t index)
{
    return qzlhost::Value(index * kStep);
}

inline qzlhost::Value BooleanElement(qzlhost::Host &, int64_t index)
{
    return qzlhost::Value(index % 3 == 0);
}

inline qzlhost::Value SingleElement(qzlhost::Host &, int64_t index)
{
    return qzlhost::Value(static_cast<float>(index) + 0.1f);
}

inline qzlhost::Value DoubleElement(qzlhost::Host &, int64_t index)
{
    return qzlhost::Value(static_cast<double>(index) + 0.1);
}

inline qzlhost::Value DateElement(qzlhost::Host &host, int64_t index)
{
    return host.NewDate(2024, 2, 29, 14, 5, index % 60);
}

inline std::string TextOfIndex(int64_t index)
{
    return "\xC3\xA4 \xF0\x9D\x84\x9E " + std::to_string(index);
}

inline qzlhost::Value StringElement(qzlhost::Host &, int64_t index)
{
    return qzlhost::Value(TextOfIndex(index));
}

inline qzlhost::Value TextElement(qzlhost::Host &, int64_t index)
{
    return qzlhost::Value::TextOf(TextOfIndex(index));
}

inline id ExpectedText(int64_t index)
{
    return [NSString stringWithUTF8String:TextOfIndex(index).c_str()];
}

/// The instant is the C library's.
inline id ExpectedDate(int64_t index)
{
    std::tm local{};
    local.tm_year = 2024 - 1900;
    local.tm_mon = 1;
    local.tm_mday = 29;
    local.tm_hour = 14;
    local.tm_min = 5;
    local.tm_sec = static_cast<int>(index % 60);
    local.tm_isdst = -1;
    return [NSDate dateWithTimeIntervalSince1970:static_cast<NSTimeInterval>(std::mktime(&local))];
}

inline id NoObject()
{
    return nil;
}

inline id EmptyText()
{
    return @"";
}

inline const ArrayRow kIntegers = {
    "Integers",
    4098,
    qzlhost::code::Int32,
    "PluginIntegerArrayGetProc",
    IntegerElement,
    [](int64_t index) -> id { return [NSNumber numberWithLong:index * kStep]; },
    []() -> id { return [NSNumber numberWithLong:0]; },
};
inline const ArrayRow kInt64s = {
    "Int64s",
    4099,
    qzlhost::code::Int64,
    "PluginInt64ArrayGetProc",
    IntegerElement,
    [](int64_t index) -> id { return [NSNumber numberWithLongLong:index * kStep]; },
    []() -> id { return [NSNumber numberWithLongLong:0]; },
};
inline const ArrayRow kSingles = {
    "Singles",
    4100,
    qzlhost::code::Single,
    "PluginSingleArrayGetProc",
    SingleElement,
    [](int64_t index) -> id { return [NSNumber numberWithFloat:static_cast<float>(index) + 0.1f]; },
    []() -> id { return [NSNumber numberWithFloat:0]; },
};
inline const ArrayRow kDoubles = {
    "Doubles",
    4101,
    qzlhost::code::Double,
    "PluginDoubleArrayGetProc",
    DoubleElement,
    [](int64_t index) -> id { return [NSNumber numberWithDouble:static_cast<double>(index) + 0.1]; },
    []() -> id { return [NSNumber numberWithDouble:0]; },
};
inline const ArrayRow kBooleans = {
    "Booleans",
    4107,
    qzlhost::code::Boolean,
    "PluginBooleanArrayGetProc",
    BooleanElement,
    [](int64_t index) -> id { return [NSNumber numberWithBool:index % 3 == 0]; },
    []() -> id { return [NSNumber numberWithBool:NO]; },
};
inline const ArrayRow kStrings = {
    "Strings",    4104,      qzlhost::code::String, "PluginStringArrayGetProc", StringElement,
    ExpectedText, EmptyText,
};
inline const ArrayRow kTexts = {
    "Texts", 4133, qzlhost::code::Text, "PluginTextArrayGetProc", TextElement, ExpectedText, EmptyText,
};
inline const ArrayRow kDates = {
    "Dates", 4103, qzlhost::code::Date, "PluginObjectArrayGetProc", DateElement, ExpectedDate, NoObject,
};
inline const ArrayRow kObjects = {
    "Objects", 4105, qzlhost::code::Object, "PluginObjectArrayGetProc", StringElement, ExpectedText, NoObject,
};

inline const ArrayRow kNumberRows[] = {kIntegers, kInt64s, kSingles, kDoubles, kBooleans};
inline const ArrayRow kTextRows[] = {kStrings, kTexts};
inline const ArrayRow kNilRows[] = {kDates, kObjects};

/// Equal, and a number of the same type.
inline void ExpectSame(id actual, id expected)
{
    ASSERT_NE(actual, nil);
    EXPECT_TRUE([actual isEqual:expected])
        << [[actual description] UTF8String] << " instead of " << [[expected description] UTF8String];
    if ([expected isKindOfClass:[NSNumber class]]) {
        ASSERT_TRUE([actual isKindOfClass:[NSNumber class]]);
        EXPECT_STREQ([actual objCType], [expected objCType]);
    }
}
