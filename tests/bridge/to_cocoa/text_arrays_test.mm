// Host arrays of texts become Cocoa strings directly or through variants.
#include "tests/bridge/to_cocoa/array_test.h"
#include "tests/support/trace.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

using TextArrays = ArrayTest;

/// The copy of every text.
NSMutableString *gCopy;

CFStringRef CopyText(qzlhost::Text *)
{
    return (CFStringRef)[gCopy retain];
}

/// Returns a reader that returns the null text for every element.
void *GiveReaderOfNulls(qzlhost::Instance *)
{
    using Reader = qzlhost::Text *(qzlhost::Instance * array, int64_t index);
    static constexpr Reader *kReader = [](qzlhost::Instance *, int64_t) -> qzlhost::Text * {
        return nullptr;
    };
    return reinterpret_cast<void *>(kReader);
}

/// The texts that the host was asked to copy or to make variants of.
std::vector<qzlhost::Text *> gAskedFor;

CFStringRef CopyEmptyText(qzlhost::Text *text)
{
    gAskedFor.push_back(text);
    return (CFStringRef)[@"copied" retain];
}

/// Returns no variant, so the library has none to give back.
qzlhost::Instance *NoteTextWithoutVariant(qzlhost::Text *text)
{
    gAskedFor.push_back(text);
    return nullptr;
}

/// The option of each request for a string.
std::vector<int64_t> gOptions;

CFStringRef NoteOption(qzlhost::String *, int64_t option)
{
    gOptions.push_back(option);
    return (CFStringRef)[@"of the string" retain];
}

} // namespace

TEST_F(TextArrays, ComeDirectlyFromTheHost)
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

TEST_F(TextArrays, ComeThroughVariantsWithoutAnyOption)
{
    Start(2024.01, [](Host &unloaded) {
        unloaded.Lack("PluginCopyTextCFString");
        unloaded.Replace("REALGetStringCFString", reinterpret_cast<void *>(&NoteOption));
    });
    EXPECT_TRUE([Convert(NewArray(kTexts, 1)) isEqual:(@[ @"of the string" ])]);
    EXPECT_EQ(gOptions, std::vector<int64_t>{0});
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
    const std::vector<std::string> unlocks = {"REALUnlockString", "REALUnlockObject", "PluginUnlockText"};
    EXPECT_EQ(FunctionsCalled(host, unlocks), unlocks);
}

TEST_F(TextArrays, AreEmptyIfBothWaysFail)
{
    Host &host = Start(2024.01, [](Host &unloaded) { unloaded.Lack("PluginCopyTextCFString"); });
    for (const char *function : {"PluginNewVariantText", "VariantToString", "REALGetStringCFString"}) {
        host.Fail(function);
        EXPECT_TRUE([Convert(NewArray(kTexts, 2)) isEqual:(@[ @"", @"" ])]) << function;
        host.Fail(function, false);
    }
}

TEST_F(TextArrays, NullIsATextThatTheHostCopies)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginTextArrayGetProc", reinterpret_cast<void *>(&GiveReaderOfNulls));
        unloaded.Replace("PluginCopyTextCFString", reinterpret_cast<void *>(&CopyEmptyText));
    });
    EXPECT_TRUE([Convert(NewArray(kTexts, 2)) isEqual:(@[ @"copied", @"copied" ])]);
    EXPECT_EQ(gAskedFor, (std::vector<qzlhost::Text *>{nullptr, nullptr}));
    EXPECT_EQ(host.CallsOf("PluginUnlockText"), 0);
}

TEST_F(TextArrays, NullIsATextThatTheHostMakesAVariantOf)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Replace("PluginTextArrayGetProc", reinterpret_cast<void *>(&GiveReaderOfNulls));
        unloaded.Lack("PluginCopyTextCFString");
        unloaded.Replace("PluginNewVariantText", reinterpret_cast<void *>(&NoteTextWithoutVariant));
    });
    EXPECT_TRUE([Convert(NewArray(kTexts, 1)) isEqual:(@[ @"" ])]);
    EXPECT_EQ(gAskedFor, (std::vector<qzlhost::Text *>{nullptr}));
    EXPECT_EQ(host.CallsOf("VariantToString"), 0) << "there is no variant";
    EXPECT_EQ(host.CallsOf("PluginUnlockText"), 0);
}

TEST_F(TextArrays, NullIsTheTextOfAnElementThatCannotBeRead)
{
    Host &host = Start(2024.01, [](Host &unloaded) {
        unloaded.Lack("PluginTextArrayGetProc");
        unloaded.Replace("PluginCopyTextCFString", reinterpret_cast<void *>(&CopyEmptyText));
    });
    EXPECT_TRUE([Convert(NewArray(kTexts, 1)) isEqual:(@[ @"copied" ])]);
    EXPECT_EQ(gAskedFor, (std::vector<qzlhost::Text *>{nullptr}));
    EXPECT_EQ(host.CallsOf("PluginUnlockText"), 0);
}
