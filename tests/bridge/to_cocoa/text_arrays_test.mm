// Host arrays of texts: straight from the host, or through variants.
#include "tests/bridge/to_cocoa/array_rows.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using TextArrays = ArrayTest;

/// What every text is copied to.
NSMutableString *gCopy;

CFStringRef CopyText(REALtext)
{
    return (CFStringRef)[gCopy retain];
}

} // namespace

TEST_F(TextArrays, ComeStraightFromTheHost)
{
    Host &host = Start();
    const Value array = NewArray(kTexts, 2);
    host.ClearTrace();
    ASSERT_EQ([Convert(array) count], 2u);
    EXPECT_EQ(host.CallsOf("PluginCopyTextCFString"), 2);
    EXPECT_EQ(host.CallsOf("PluginNewVariantText"), 0);
    EXPECT_EQ(host.CallsOf("PluginUnlockText"), 2);
}

TEST_F(TextArrays, GiveTheCopiesOfTheHostBack)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginCopyTextCFString", reinterpret_cast<void *>(&CopyText));
    });
    gCopy = [NSMutableString stringWithString:@"copy"];
    const NSUInteger retains = [gCopy retainCount];
    {
        const qzlhost::AutoreleasePool pool;
        EXPECT_EQ([Convert(NewArray(kTexts, 2)) lastObject], gCopy);
    }
    EXPECT_EQ([gCopy retainCount], retains);
}

TEST_F(TextArrays, ComeThroughVariantsWhereTheHostCopiesNoTexts)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("PluginCopyTextCFString"); });
    const Value array = NewArray(kTexts, 2);
    host.ClearTrace();
    NSArray *const converted = Convert(array);
    EXPECT_TRUE([converted isEqual:(@[ ExpectedText(0), ExpectedText(1) ])]);
    for (const char *function : {"PluginNewVariantText", "VariantToString", "REALGetStringCFString",
                                 "REALUnlockString", "REALUnlockObject", "PluginUnlockText"})
        EXPECT_EQ(host.CallsOf(function), 2) << function;
}

TEST_F(TextArrays, ComeThroughVariantsWhereTheCopyIsNull)
{
    Host &host = Start();
    host.Fail("PluginCopyTextCFString");
    EXPECT_TRUE([Convert(NewArray(kTexts, 2)) isEqual:(@[ ExpectedText(0), ExpectedText(1) ])]);
    EXPECT_EQ(host.CallsOf("REALGetStringCFString"), 2);
}

TEST_F(TextArrays, ComeThroughThePropertyOfVariants)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Lack("PluginCopyTextCFString");
        unloaded.Lack("VariantToString");
    });
    EXPECT_TRUE([Convert(NewArray(kTexts, 1)) isEqual:(@[ ExpectedText(0) ])]);
    EXPECT_EQ(host.CallsOf("REALGetPropValueString"), 1);
}

TEST_F(TextArrays, GiveTheStringBackBeforeTheVariant)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("PluginCopyTextCFString"); });
    const Value array = NewArray(kTexts, 1);
    host.ClearTrace();
    Convert(array);
    std::vector<std::string> unlocks;
    for (const qzlhost::TraceEntry &entry : host.Trace())
        if (entry.function.find("Unlock") != std::string::npos)
            unlocks.push_back(entry.function);
    EXPECT_EQ(unlocks,
              (std::vector<std::string>{"REALUnlockString", "REALUnlockObject", "PluginUnlockText"}));
}

TEST_F(TextArrays, AreEmptyWhereNeitherWayIsOpen)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("PluginCopyTextCFString"); });
    for (const char *function : {"PluginNewVariantText", "VariantToString", "REALGetStringCFString"}) {
        host.Fail(function);
        EXPECT_TRUE([Convert(NewArray(kTexts, 2)) isEqual:(@[ @"", @"" ])]) << function;
        host.Fail(function, false);
    }
}
