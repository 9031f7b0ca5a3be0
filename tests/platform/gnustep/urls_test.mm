// URLs: making, shortening, lengthening.
#include "tests/platform/gnustep/port_testing.h"

using namespace port_testing;

namespace {

OwnedURL URLOf(const char *text)
{
    return OwnedURL((CFURLRef)[[NSURL alloc] initWithString:[NSString stringWithUTF8String:text]]);
}

OwnedURL URLOfPath(std::u16string_view path, bool isDirectory = false)
{
    return OwnedURL(
        CFURLCreateWithFileSystemPath(nullptr, StringOf(path).get(), kCFURLPOSIXPathStyle, isDirectory));
}

/// The URL's text; "(none)" for null.
std::string TextOf(const OwnedURL &url)
{
    return url == nullptr ? "(none)" : [[(NSURL *)url.get() absoluteString] UTF8String];
}

std::string WithoutLast(const char *url)
{
    return TextOf(OwnedURL(CFURLCreateCopyDeletingLastPathComponent(nullptr, URLOf(url).get())));
}

std::string With(const char *url, std::u16string_view component, bool isDirectory = false)
{
    return TextOf(OwnedURL(CFURLCreateCopyAppendingPathComponent(nullptr, URLOf(url).get(),
                                                                 StringOf(component).get(), isDirectory)));
}

std::optional<std::u16string> Last(const char *url)
{
    const OwnedString last(CFURLCopyLastPathComponent(URLOf(url).get()));
    return last ? std::optional(UnitsOf(last.get())) : std::nullopt;
}

} // namespace

TEST(FilePathURL, EscapesWhatAPathNeeds)
{
    EXPECT_EQ(TextOf(URLOfPath(u"/tmp/a")), "file:///tmp/a");
    EXPECT_EQ(TextOf(URLOfPath(u"/tmp/a", true)), "file:///tmp/a/");
    EXPECT_EQ(TextOf(URLOfPath(u"/tmp/a/", true)), "file:///tmp/a/");
    EXPECT_EQ(TextOf(URLOfPath(u"/", true)), "file:///");
    EXPECT_EQ(TextOf(URLOfPath(u"/a b%;?#[]\"\\^`{|}<>")),
              "file:///a%20b%25%3B%3F%23%5B%5D%22%5C%5E%60%7B%7C%7D%3C%3E");
    EXPECT_EQ(TextOf(URLOfPath(u"/e\u0301")), "file:///e%CC%81");
    EXPECT_EQ(TextOf(URLOfPath(u"/~x/-._!$&'()*+,=:@")), "file:///~x/-._!$&'()*+,=:@");
}

TEST(FilePathURL, OfARelativePathStartsAtTheWorkingFolder)
{
    NSString *const folder = [[NSFileManager defaultManager] currentDirectoryPath];
    EXPECT_TRUE(
        [[(NSURL *)URLOfPath(u"a/b").get() path] isEqual:[folder stringByAppendingPathComponent:@"a/b"]]);
}

TEST(FilePathURL, OfNoPathIsNull)
{
    EXPECT_EQ(URLOfPath(u""), nullptr);
    EXPECT_EQ(URLOfPath(std::u16string{'/', 0xD800}), nullptr);
    EXPECT_EQ(CFURLCreateWithFileSystemPath(nullptr, nullptr, kCFURLPOSIXPathStyle, false), nullptr);
    EXPECT_EQ(CFURLCreateWithFileSystemPath(nullptr, CFSTR("a:b"), kCFURLHFSPathStyle, false), nullptr);
}

TEST(DeletingTheLastComponent, LeavesTheFolder)
{
    EXPECT_EQ(WithoutLast("file:///tmp/a"), "file:///tmp/");
    EXPECT_EQ(WithoutLast("file:///tmp/a/"), "file:///tmp/");
    EXPECT_EQ(WithoutLast("file:///tmp/a//"), "file:///tmp/");
    EXPECT_EQ(WithoutLast("file:///a"), "file:///");
    EXPECT_EQ(WithoutLast("file:///tmp/a%20b%3F/c%2Fd"), "file:///tmp/a%20b%3F/");
    EXPECT_EQ(WithoutLast("http://host/a/b?q=1#f"), "http://host/a/");
    EXPECT_EQ(WithoutLast("file://localhost/tmp/a"), "file://localhost/tmp/");
}

TEST(DeletingTheLastComponent, GoesUpWhereThereIsNone)
{
    EXPECT_EQ(WithoutLast("file:///"), "file:///../");
    EXPECT_EQ(WithoutLast("file:///tmp/.."), "file:///tmp/../../");
    EXPECT_EQ(WithoutLast("file:///tmp/."), "file:///tmp/./../");
}

TEST(DeletingTheLastComponent, NeedsAPath)
{
    EXPECT_EQ(WithoutLast("mailto:somebody"), "(none)");
    EXPECT_EQ(WithoutLast("http://host"), "(none)");
    EXPECT_EQ(CFURLCreateCopyDeletingLastPathComponent(nullptr, nullptr), nullptr);
}

TEST(AppendingAComponent, EscapesAndAddsIt)
{
    EXPECT_EQ(With("file:///tmp/", u"a"), "file:///tmp/a");
    EXPECT_EQ(With("file:///tmp", u"a"), "file:///tmp/a");
    EXPECT_EQ(With("file:///", u"a", true), "file:///a/");
    EXPECT_EQ(With("file:///tmp/", u"a b?#%e\u0301"), "file:///tmp/a%20b%3F%23%25e%CC%81");
    EXPECT_EQ(With("file:///a%20b/", u"c"), "file:///a%20b/c");
    EXPECT_EQ(With("http://host/a?q=1", u"b"), "http://host/a/b");
}

TEST(AppendingAComponent, NeedsAPathAndAText)
{
    EXPECT_EQ(With("mailto:somebody", u"a"), "(none)");
    EXPECT_EQ(With("file:///tmp/", std::u16string{0xD800}), "(none)");
    EXPECT_EQ(CFURLCreateCopyAppendingPathComponent(nullptr, nullptr, CFSTR("a"), false), nullptr);
    EXPECT_EQ(CFURLCreateCopyAppendingPathComponent(nullptr, URLOf("file:///tmp/").get(), nullptr, false),
              nullptr);
}

TEST(TheLastComponent, IsReturnedWithoutEscapes)
{
    EXPECT_EQ(Last("file:///tmp/a"), u"a");
    EXPECT_EQ(Last("file:///tmp/a/"), u"a");
    EXPECT_EQ(Last("file:///tmp/a%20b%2Fc"), u"a b/c");
    EXPECT_EQ(Last("file:///tmp/e%CC%81"), u"e\u0301");
    EXPECT_EQ(Last("file:///tmp/.."), u"..");
    EXPECT_EQ(Last("file:///"), u"/");
    EXPECT_EQ(Last("http://host/a/b?q=1#f"), u"b");
}

TEST(TheLastComponent, OfALongNameIsWhole)
{
    const std::string name(300, 'n');
    EXPECT_EQ(Last(("file:///tmp/" + name).c_str()), std::u16string(300, u'n'));
}

TEST(TheLastComponent, NeedsAPathOfText)
{
    EXPECT_EQ(Last("mailto:somebody"), std::nullopt);
    EXPECT_EQ(Last("http://host"), std::nullopt);
    EXPECT_EQ(Last("file:///tmp/%E9"), std::nullopt);
    EXPECT_EQ(CFURLCopyLastPathComponent(nullptr), nullptr);
}

TEST(URLs, AreCocoasAndOwnedByTheCaller)
{
    const OwnedURL url = URLOfPath(u"/tmp/a b");
    EXPECT_TRUE([(NSURL *)url.get() isFileURL]);
    EXPECT_TRUE([[(NSURL *)url.get() path] isEqual:@"/tmp/a b"]);
    EXPECT_EQ([(NSURL *)url.get() retainCount], 1U);
}

TEST(URLs, RelativeToAnotherAreResolved)
{
    NSURL *const base = [NSURL URLWithString:@"file:///tmp/folder/"];
    NSURL *const relative = [NSURL URLWithString:@"a/b" relativeToURL:base];
    EXPECT_EQ(TextOf(OwnedURL(CFURLCreateCopyDeletingLastPathComponent(nullptr, (CFURLRef)relative))),
              "file:///tmp/folder/a/");
}
