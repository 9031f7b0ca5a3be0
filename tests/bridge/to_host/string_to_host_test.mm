// Strings, and URLs other than files', become variants of host strings.
#import <Foundation/Foundation.h>

#include "tests/support/conversion_doubles.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;
namespace code = qzlhost::code;

namespace {

using StringToHost = LinkedTest;

id AnswerNil(id, SEL)
{
    return nil;
}

/// Expects that the variant was made from the null string, and that no string was given back.
void ExpectVariantOfTheNullString(Host &host, const Value &variant)
{
    EXPECT_EQ(variant.Code(), code::String);
    EXPECT_EQ(variant.AsString(), "");
    EXPECT_EQ(ArgumentsOf(host, "StringToVariant"), (std::vector<std::string>{"the empty string"}));
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 0);
}

} // namespace

TEST_F(StringToHost, BecomesAVariantWithOneReference)
{
    Host &host = Start();
    const Value variant = Convert(@"text");
    EXPECT_EQ(variant.Code(), code::String);
    EXPECT_EQ(variant.AsString(), "text");
    EXPECT_EQ(host.References(variant), 1);
    EXPECT_EQ(host.CallsOf("StringToVariant"), 1);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
}

TEST_F(StringToHost, EmptyOneIsAVariantOfTheNullString)
{
    Host &host = Start();
    ExpectVariantOfTheNullString(host, Convert(@""));
}

TEST_F(StringToHost, OneThatTheHostCannotMakeIsAVariantOfTheNullString)
{
    Host &host = StartLacking({"REALBuildString"});
    ExpectVariantOfTheNullString(host, Convert(@"text"));
}

TEST_F(StringToHost, HostWithoutVariantsOfStringsGetsItsStringBack)
{
    Host &host = StartLacking({"StringToVariant"});
    EXPECT_EQ(NewVariantFromNSObject(@"text"), nullptr);
    EXPECT_EQ(host.CallsOf("REALUnlockString"), 1);
}

TEST_F(StringToHost, URLWithoutATextIsAVariantOfTheNullString)
{
    Host &host = Start();
    NSURL *const url = [NSURL URLWithString:@"http://www.example.com/"];
    AddMethods(url, "QZLTestURLWithoutText",
               {{"absoluteString", reinterpret_cast<IMP>(AnswerNil), "@16@0:8"}});
    ExpectVariantOfTheNullString(host, Convert(url));
}

TEST_F(StringToHost, RelativeURLIsItsWholeText)
{
    Start();
    NSURL *const base = [NSURL URLWithString:@"http://www.example.com/folder/"];
    EXPECT_EQ(Convert([NSURL URLWithString:@"file.txt" relativeToURL:base]).AsString(),
              "http://www.example.com/folder/file.txt");
}
