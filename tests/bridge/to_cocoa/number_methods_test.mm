// The Cocoa method that makes the number of a variant or of an array's element.
#include "tests/bridge/to_cocoa/member_conversion.h"
#include "tests/support/replaced_method.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

namespace code = qzlhost::code;

/// While it lives, a class method of NSNumber returns its own name.
template <typename Number>
class Named {
public:
    explicit Named(SEL selector) : replaced_(class_getClassMethod([NSNumber class], selector), &AnswerName) {}

private:
    static id AnswerName(id, SEL selector, Number) { return NSStringFromSelector(selector); }

    ReplacedMethod<id(id, SEL, Number)> replaced_;
};

/// All such methods.
struct NamedMethods {
    Named<long> numberWithLong { @selector(numberWithLong:) };
    Named<long long> numberWithLongLong { @selector(numberWithLongLong:) };
    Named<float> numberWithFloat { @selector(numberWithFloat:) };
    Named<double> numberWithDouble { @selector(numberWithDouble:) };
    Named<BOOL> numberWithBool { @selector(numberWithBool:) };
};

struct NumberKind {
    int64_t code;
    const char *method;
    bool inArrays;
};

constexpr NumberKind kKinds[] = {
    {code::Int32, "numberWithLong:", true},   {code::Int64, "numberWithLongLong:", true},
    {code::Single, "numberWithFloat:", true}, {code::Double, "numberWithDouble:", true},
    {code::Boolean, "numberWithBool:", true}, {code::Currency, "numberWithDouble:", false},
    {code::Color, "numberWithLong:", false},
};

using NumberMethods = MemberConversion;

} // namespace

TEST_F(NumberMethods, OfVariantsAreThoseOfTheirCodes)
{
    Start();
    for (const NumberKind &kind : kKinds) {
        const Value variant = Value::OfCode(kind.code, 1);
        const NamedMethods named;
        EXPECT_STREQ([[Convert(variant) description] UTF8String], kind.method) << kind.code;
    }
}

TEST_F(NumberMethods, OfElementsAreThoseOfTheirCodes)
{
    Host &host = Start();
    for (const NumberKind &kind : kKinds) {
        if (!kind.inArrays)
            continue;
        const Value array = host.NewArray(kind.code, {Value::OfCode(kind.code, 1)});
        const NamedMethods named;
        EXPECT_STREQ([[[Convert(array) lastObject] description] UTF8String], kind.method) << kind.code;
    }
}
