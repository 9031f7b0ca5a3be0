// A test that converts a program's variants.
#pragma once

#include "tests/bridge/to_cocoa/member_conversion.h"

class VariantConversion : public MemberConversion {
protected:
    /// The Cocoa object of a variant with this content.
    id Convert(const qzlhost::Value &content)
    {
        const qzlhost::Value variant = content.Boxed();
        const int64_t references = host().References(variant);
        const id object = MemberConversion::Convert(variant);
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
