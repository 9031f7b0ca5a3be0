// Cocoa exceptions out of the host while it makes the wrapper of a Core Foundation object: the program sees
// none, and gets the wrapper of the object's class.
#import <Foundation/Foundation.h>

#include <cstring>

#include "tests/bridge/to_host/program_reading_test.h"

using qzlhost::Host;
using qzlhost::Value;

/// Claims to be a Core Foundation object of a type without a row.
@interface QZLTestOfSomeType : NSObject
@end

@implementation QZLTestOfSomeType
- (unsigned long)_cfTypeID
{
    return 0x4242;
}
@end

namespace {

using NewInstance = void *(const char *name);

NewInstance *gNewInstance;
/// The refused requests for an instance.
int gRefusals;

/// The host's own function, except that it raises for the class of Core Foundation objects.
void *MakeNoCoreFoundationWrapper(const char *name)
{
    if (std::strcmp(name, "CFObjectQZL") != 0)
        return gNewInstance(name);
    ++gRefusals;
    [NSException raise:@"Refused" format:@"no instance of %s", name];
    return nullptr;
}

class CoreFoundationExceptions : public ProgramReadingTest {
protected:
    Host &StartRefusing()
    {
        Host &host = Start({}, [](Host &unloaded) {
            gNewInstance = reinterpret_cast<NewInstance *>(unloaded.Resolver()("PluginNewInstance"));
            unloaded.Replace("PluginNewInstance", reinterpret_cast<void *>(&MakeNoCoreFoundationWrapper));
        });
        DefineWrapperClass(host, "QZLTestOfSomeTypeQZL");
        return host;
    }
};

} // namespace

TEST_F(CoreFoundationExceptions, ExceptionInsteadOfAnInstanceGoesOnWithTheClassChain)
{
    Host &host = StartRefusing();
    QZLTestOfSomeType *const object = [[[QZLTestOfSomeType alloc] init] autorelease];
    {
        const qzlhost::AutoreleasePool pool;
        const Value variant = Read(object);
        EXPECT_EQ(gRefusals, 1);
        ASSERT_FALSE(variant.IsNil());
        EXPECT_EQ(host.ClassOf(variant), "QZLTestOfSomeTypeQZL");
        EXPECT_EQ(host.References(variant), 1);
        EXPECT_EQ(HandleOf<id>(host, variant), object);
        EXPECT_EQ([object retainCount], 2u + 1u) << "the test's, the notification's and the wrapper's";
    }
    EXPECT_TRUE(host.TakeException().IsNil());
}
