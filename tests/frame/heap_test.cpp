// How strings and errors use the heap: not for short texts; and what becomes of them when it is exhausted.
#include <cstring>
#include <string>

#include "frame/errors.h"
#include "frame/host_strings.h"
#include "tests/support/heap_watch.h"
#include "tests/support/linked_test.h"
#include "tests/support/texts.h"

using qzlhost::Host;
using namespace std::string_literals;

/// The library's calls of CFStringGetCString.
static int gConversions;

// The linker redirects the library's calls here.
extern "C" Boolean __real_CFStringGetCString(CFStringRef, char *, CFIndex, CFStringEncoding);
extern "C" Boolean __wrap_CFStringGetCString(CFStringRef string, char *buffer, CFIndex size,
                                             CFStringEncoding encoding)
{
    ++gConversions;
    return __real_CFStringGetCString(string, buffer, size, encoding);
}

namespace {

/// The bytes of the last string that the host was asked for.
char gBuilt[4096];
size_t gBuiltLength;

const auto kBuiltString = reinterpret_cast<REALstring>(uintptr_t{0x1000});
const auto kConvertedString = reinterpret_cast<REALstring>(uintptr_t{0x2000});

REALstring BuildString(const char *bytes, int32_t length)
{
    gBuiltLength = static_cast<size_t>(length);
    std::memcpy(gBuilt, bytes, gBuiltLength);
    return kBuiltString;
}

REALstring BuildStringWithEncoding(const char *bytes, int32_t length, uint32_t)
{
    return BuildString(bytes, length);
}

REALstring ConvertString(REALstring, uint32_t)
{
    return kConvertedString;
}

/// A host that makes strings without the heap.
void *Resolve(const char *name)
{
    if (std::strcmp(name, "REALBuildString") == 0)
        return reinterpret_cast<void *>(&BuildString);
    if (std::strcmp(name, "REALBuildStringWithEncoding") == 0)
        return reinterpret_cast<void *>(&BuildStringWithEncoding);
    if (std::strcmp(name, "REALConvertString") == 0)
        return reinterpret_cast<void *>(&ConvertString);
    return nullptr;
}

REALobject ThrowForAnInstance(const char *)
{
    throw 42;
}

/// A host that has only the function for instances, which throws.
void *ResolveThrowing(const char *name)
{
    return std::strcmp(name, "PluginNewInstance") == 0 ? reinterpret_cast<void *>(&ThrowForAnInstance)
                                                       : nullptr;
}

class Heap : public ::testing::Test {
protected:
    void SetUp() override { gResolver = Resolve; }
};

class HeapByVersion : public Heap, public ::testing::WithParamInterface<double> {
protected:
    void SetUp() override
    {
        Heap::SetUp();
        rbversion_rbversion = GetParam();
    }
};

using NoMemory = LinkedTest;

std::string Built()
{
    return std::string(gBuilt, gBuiltLength);
}

/// A Core Foundation string of one character, repeated.
class Text {
public:
    Text(char16_t unit, size_t length)
    {
        const std::u16string units(length, unit);
        string_ =
            CFStringCreateWithCharacters(kCFAllocatorDefault, reinterpret_cast<const UniChar *>(units.data()),
                                         static_cast<CFIndex>(units.size()));
    }
    ~Text() { CFRelease(string_); }
    Text(const Text &) = delete;
    Text &operator=(const Text &) = delete;

    CFStringRef Get() const { return string_; }

private:
    CFStringRef string_;
};

} // namespace

TEST_F(Heap, IsNotUsedForCocoaStringsOfUpTo99Units)
{
    for (size_t length = 1; length <= 99; ++length) {
        const Text text(u'\u4E2D', length);
        gBuiltLength = 0;

        const HeapWatch heap;
        const REALstring string = CFString2RBString(text.Get());
        const int allocations = heap.Allocations();

        ASSERT_EQ(allocations, 0) << length;
        EXPECT_EQ(string, kBuiltString);
        EXPECT_EQ(Built(), Repeated("\xE4\xB8\xAD"s, length));
    }
}

TEST_F(Heap, HoldsSixBytesForEachUnitOfLongerCocoaStringsUntilTheyAreBuilt)
{
    for (const size_t length : {size_t{100}, size_t{101}, size_t{1000}}) {
        const Text text(u'\u4E2D', length);

        const HeapWatch heap;
        const REALstring string = CFString2RBString(text.Get());
        const int allocations = heap.Allocations();

        EXPECT_EQ(allocations, 1);
        EXPECT_EQ(heap.LastSize(), length * 6);
        EXPECT_EQ(heap.Unfreed(), 0);
        EXPECT_EQ(string, kBuiltString);
        EXPECT_EQ(Built(), Repeated("\xE4\xB8\xAD"s, length));
    }
}

TEST_F(Heap, IsGivenBackWhenACocoaStringHasNoUTF8)
{
    const Text text(u'\xD800', 100);

    const HeapWatch heap;
    const REALstring string = CFString2RBString(text.Get());
    const int allocations = heap.Allocations();

    EXPECT_EQ(allocations, 1);
    EXPECT_EQ(heap.Unfreed(), 0);
    EXPECT_EQ(string, nullptr);
}

TEST_F(Heap, HoldsTheTextOfAnOutOfBoundsExceptionUntilItIsRaised)
{
    const HeapWatch heap;
    RaiseOutOfBoundsException(3, 3);
    const int allocations = heap.Allocations();

    EXPECT_EQ(allocations, 1);
    EXPECT_EQ(heap.LastSize(), 205u);
    EXPECT_EQ(heap.Unfreed(), 0);
}

TEST_F(Heap, IsGivenBackWhenTheHostThrowsDuringAnOutOfBoundsException)
{
    gResolver = ResolveThrowing;
    const HeapWatch heap;
    bool thrown = false;
    try {
        RaiseOutOfBoundsException(3, 3);
    } catch (int) {
        thrown = true;
    }
    const int unfreed = heap.Unfreed();

    EXPECT_TRUE(thrown);
    EXPECT_EQ(unfreed, 0);
}

TEST_P(HeapByVersion, IsNotUsedForUpTo799BytesOfUTF32)
{
    // Each becomes two units of UTF-16, the most there are.
    const std::u32string points(200, U'\U0001F600');
    const std::string bytes(BytesOfUnits(points));
    for (int64_t length = 4; length <= 799; ++length) {
        gBuiltLength = 0;

        const HeapWatch heap;
        const REALstring string = REALBuildUnicodeString(bytes.data(), length, kCFStringEncodingUTF32);
        const int allocations = heap.Allocations();

        ASSERT_EQ(allocations, 0) << length;
        EXPECT_EQ(string, kConvertedString);
        EXPECT_EQ(Built(), Repeated("\x3D\xD8\x00\xDE"s, static_cast<size_t>(length / 4)));
    }
}

TEST_P(HeapByVersion, IsUsedOnceForLongerUTF32AndGivenBack)
{
    const std::u32string points(200, U'\U0001F600');
    const std::string bytes(BytesOfUnits(points));
    ASSERT_EQ(bytes.size(), 800u);

    const HeapWatch heap;
    const REALstring string = REALBuildUnicodeString(bytes.data(), 800, kCFStringEncodingUTF32);
    const int allocations = heap.Allocations();

    EXPECT_EQ(allocations, 1);
    EXPECT_EQ(heap.Unfreed(), 0);
    EXPECT_EQ(string, kConvertedString);
    EXPECT_EQ(Built(), Repeated("\x3D\xD8\x00\xDE"s, 200));
}

// Later hosts read UTF-32 themselves.
INSTANTIATE_TEST_SUITE_P(Versions, HeapByVersion, ::testing::Values(0.0, 2011.99, 2012.0, 2012.99));

TEST_F(NoMemory, GivesTheNullStringForALongCocoaStringAndRaisesNothing)
{
    Host &host = Start();
    const Text text(u'a', 100);
    {
        HeapWatch heap;
        heap.FailNext();
        EXPECT_EQ(CFString2RBString(text.Get()), nullptr);
        EXPECT_TRUE(heap.HasFailed());
    }
    EXPECT_EQ(gConversions, 0) << "there is no buffer";
    EXPECT_TRUE(host.Trace().empty());
    ExpectNothingRaised();

    EXPECT_EQ(Owned(CFString2RBString(text.Get())).StringBytes(), std::string(100, 'a')) << "now there is";
    EXPECT_EQ(gConversions, 1);
}

TEST_F(NoMemory, GivesTheNullStringForLongUTF32)
{
    Host &host = Start(2012.0);
    const std::u32string points(200, U'a');
    {
        HeapWatch heap;
        heap.FailNext();
        EXPECT_EQ(REALBuildUnicodeString(points.data(), 800, kCFStringEncodingUTF32), nullptr);
        EXPECT_TRUE(heap.HasFailed());
    }
    EXPECT_EQ(host.CallsOf("REALBuildStringWithEncoding"), 0);
    // An exception may be raised, but no other than this.
    if (host.CallsOf("RuntimeRaiseException") != 0)
        ExpectRaised("OutOfMemoryException", "Failed to allocate memory.");

    const REALstring string = REALBuildUnicodeString(points.data(), 800, kCFStringEncodingUTF32);
    EXPECT_EQ(Owned(string).StringBytes(), std::string(200, 'a')) << "now there is";
}

TEST_F(NoMemory, GivesAnOutOfBoundsExceptionItsShortText)
{
    Host &host = Start();
    for (const int64_t value : {int64_t{-1}, int64_t{3}}) {
        {
            HeapWatch heap;
            heap.FailNext();
            RaiseOutOfBoundsException(value, 3);
            EXPECT_TRUE(heap.HasFailed());
        }
        ExpectRaised("OutOfBoundsException", "Out of Bounds");
    }
    EXPECT_EQ(host.CallsOf("RuntimeRaiseException"), 2);
}
