// A test of what the library makes of host variants.
#pragma once

#import <Foundation/Foundation.h>

#include "bridge/to_cocoa/variant_to_object.h"
#include "tests/support/linked_test.h"

class VariantTest : public LinkedTest {
protected:
    /// What the library makes of a variant with this content.
    id Convert(const qzlhost::Value &content)
    {
        const qzlhost::Value variant = content.Boxed();
        const int64_t references = host().References(variant);
        const id object = GetVariantAsNSObject(ObjectOf(variant));
        EXPECT_EQ(host().References(variant), references);
        return object;
    }

    id Convert(int64_t code, const qzlhost::Value &content)
    {
        return Convert(qzlhost::Value::OfCode(code, content));
    }
};

/// The name of a test of a type code.
inline std::string CodeName(const ::testing::TestParamInfo<int64_t> &info)
{
    const std::string digits = std::to_string(info.param);
    return info.param < 0 ? "Minus" + digits.substr(1) : digits;
}
