// Notifications that Foundation and AppKit post by themselves, as a program observes them.
#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <thread>

#include "family/wrapper_classes.h"
#include "tests/support/family_fixture.h"

using qzlhost::Host;
using qzlhost::Value;

namespace {

/// A notification as the program read it during the event.
struct Seen {
    bool onMainThread = false;
    int64_t objectHandle = 0;
    Value object;
    Value userInfo;
};

/// A program that observes one notification.
class Listener {
public:
    /// At the process's centre.
    Listener(Host &host, NSString *name) : Listener(host, name, DefaultCenter(host)) {}

    Listener(Host &host, NSString *name, const Value &center,
             std::function<void(const Value &notification)> onEvent = nullptr)
        : program_(host, "ProgramObserver",
                   [this, &host, onEvent = std::move(onEvent)](const Value &notification) {
                       Seen seen;
                       seen.onMainThread = program_.received.back().onMainThread;
                       seen.objectHandle = host.Get(notification, "objectHandle").AsInteger();
                       seen.object = host.Get(notification, "objectVariant");
                       seen.userInfo = host.Get(notification, "userInfo");
                       seen_.push_back(seen);
                       if (onEvent)
                           onEvent(notification);
                   }),
          observer_(program_.NewObserver())
    {
        host.Call(center, "addObserver", {observer_, [name UTF8String]});
    }

    const std::vector<Seen> &All() const { return seen_; }

    /// The notification with this object; null until it arrives.
    const Seen *Of(id object) const
    {
        const auto found = std::find_if(seen_.begin(), seen_.end(), [object](const Seen &seen) {
            return seen.objectHandle == reinterpret_cast<int64_t>(object);
        });
        return found == seen_.end() ? nullptr : &*found;
    }

private:
    std::vector<Seen> seen_;
    ObserverProgram program_;
    Value observer_;
};

/// A new folder, which is removed with its contents.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        char path[] = "/tmp/qzl-real-XXXXXX";
        path_ = [[NSString alloc] initWithUTF8String:mkdtemp(path)];
    }
    ~TemporaryFolder()
    {
        [[NSFileManager defaultManager] removeFileAtPath:path_ handler:nil];
        [path_ release];
    }
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    /// Makes the file, and the folders that contain it.
    void Write(NSString *file, NSString *content, int permissions = 0600) const
    {
        NSString *const path = [path_ stringByAppendingPathComponent:file];
        [[NSFileManager defaultManager] createDirectoryAtPath:[path stringByDeletingLastPathComponent]
                                  withIntermediateDirectories:YES
                                                   attributes:nil
                                                        error:nullptr];
        ASSERT_TRUE([content writeToFile:path atomically:NO]);
        ASSERT_EQ(::chmod([path fileSystemRepresentation], static_cast<mode_t>(permissions)), 0);
    }

    NSString *Path(NSString *file) const { return [path_ stringByAppendingPathComponent:file]; }

private:
    NSString *path_;
};

class RealNotification : public PluginWithFamily {
protected:
    /// The notification's object must arrive as an instance of the host class, with the object as its handle.
    void ExpectObject(const Seen &seen, const char *hostClass, id object)
    {
        ASSERT_FALSE(seen.object.IsNil());
        EXPECT_EQ(host().ClassOf(seen.object), hostClass);
        EXPECT_EQ(HandleOf<id>(host(), seen.object), object);
        EXPECT_EQ(seen.objectHandle, reinterpret_cast<int64_t>(object));
    }
};

} // namespace

TEST_F(RealNotification, TaskReportsThatItsProcessEnded)
{
    Host &host = StartWithFamily();
    DefineWrapperClass(host, "NSTaskQZL");
    const Listener listener(host, NSTaskDidTerminateNotification);
    NSTask *const task = [NSTask launchedTaskWithLaunchPath:@"/bin/sh"
                                                  arguments:[NSArray arrayWithObjects:@"-c", @"exit 7", nil]];

    ASSERT_TRUE(host.RunUntil([&] { return listener.Of(task) != nullptr; }, 30));

    const Seen &seen = *listener.Of(task);
    ExpectObject(seen, "NSTaskQZL", task);
    EXPECT_TRUE(seen.onMainThread);
    EXPECT_EQ([reinterpret_cast<NSTask *>(seen.objectHandle) terminationStatus], 7);
}

TEST_F(RealNotification, FileHandleDeliversAllThatItReadAsAMemoryBlock)
{
    Host &host = StartWithFamily();
    DefineWrapperClass(host, "NSFileHandleQZL");
    std::string written(100'003, '\0');
    for (size_t i = 0; i < written.size(); ++i)
        written[i] = static_cast<char>(i * 31 + i / 256);
    const Listener listener(host, NSFileHandleReadToEndOfFileCompletionNotification);
    NSPipe *const pipe = [NSPipe pipe];
    NSFileHandle *const reader = [pipe fileHandleForReading];
    const int writeEnd = ::dup([[pipe fileHandleForWriting] fileDescriptor]);
    [[pipe fileHandleForWriting] closeFile];

    [reader readToEndOfFileInBackgroundAndNotify];
    std::thread writer([&] {
        for (size_t done = 0; done < written.size();)
            done += static_cast<size_t>(::write(writeEnd, written.data() + done, written.size() - done));
        ::close(writeEnd);
    });
    const bool came = host.RunUntil([&] { return listener.Of(reader) != nullptr; }, 30);
    writer.join();

    ASSERT_TRUE(came);
    const Seen &seen = *listener.Of(reader);
    ExpectObject(seen, "NSFileHandleQZL", reader);
    const Value block = host.DictionaryGet(seen.userInfo, [NSFileHandleNotificationDataItem UTF8String]);
    ASSERT_EQ(host.ClassOf(block), "MemoryBlock");
    EXPECT_EQ(host.MemoryBlockBytes(block), written);
}

TEST_F(RealNotification, UserDefaultsReportEachChange)
{
    Host &host = StartWithFamily();
    DefineWrapperClass(host, "NSUserDefaultsQZL");
    NSUserDefaults *const defaults = [NSUserDefaults standardUserDefaults];
    const Listener listener(host, NSUserDefaultsDidChangeNotification);

    [defaults setObject:@"value" forKey:@"QZLRealNotification"];
    ASSERT_EQ(listener.All().size(), 1u);
    [defaults removeObjectForKey:@"QZLRealNotification"];
    ASSERT_EQ(listener.All().size(), 2u);

    for (const Seen &seen : listener.All()) {
        ExpectObject(seen, "NSUserDefaultsQZL", defaults);
        EXPECT_TRUE(seen.userInfo.IsNil());
    }
}

TEST_F(RealNotification, WorkspaceReportsThatItLaunchesAnApplication)
{
    Host &host = StartWithFamily();
    const TemporaryFolder folder;
    folder.Write(@"Greeter.app/Greeter", @"#!/bin/sh\nexit 0\n", 0700);
    folder.Write(@"Greeter.app/Resources/Info-gnustep.plist",
                 @"{ NSExecutable = Greeter; ApplicationName = Greeter; }");
    NSString *const application = folder.Path(@"Greeter.app");
    NSNotificationCenter *const cocoa = [[NSWorkspace sharedWorkspace] notificationCenter];
    const Value center = host.NewWithoutConstructor("NSNotificationCenterQZL");
    // The instance gives the retain back at its end.
    host.Set(center, "Handle", reinterpret_cast<int64_t>([cocoa retain]));
    const Listener listener(host, NSWorkspaceWillLaunchApplicationNotification, center);

    ASSERT_TRUE([[NSWorkspace sharedWorkspace] launchApplication:application]);
    ASSERT_TRUE(host.RunUntil([&] { return !listener.All().empty(); }, 30));

    // GNUstep passes the workspace's centre as the object.
    const Seen &seen = listener.All().front();
    ExpectObject(seen, "NSNotificationCenterQZL", cocoa);
    EXPECT_EQ(host.DictionaryGet(seen.userInfo, "NSApplicationName").AsString(), "Greeter");
    EXPECT_EQ(host.DictionaryGet(seen.userInfo, "NSApplicationPath").AsString(), [application UTF8String]);
    EXPECT_TRUE(seen.onMainThread);
}

TEST_F(RealNotification, ThreadEndsOnlyAfterTheProgramHandledItsEnd)
{
    Host &host = StartWithFamily();
    DefineWrapperClass(host, "NSThreadQZL");
    // It only compares two objects.
    NSThread *const thread = [[[NSThread alloc] initWithTarget:@"body"
                                                      selector:@selector(isEqual:)
                                                        object:nil] autorelease];
    bool finishedBeforeTheEnd = true;
    const Listener listener(host, NSThreadWillExitNotification, DefaultCenter(host), [&](const Value &) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        finishedBeforeTheEnd = [thread isFinished];
    });

    [thread start];
    ASSERT_TRUE(host.RunUntil([&] { return [thread isFinished] != NO; }, 30));

    ASSERT_EQ(listener.All().size(), 1u);
    ExpectObject(listener.All()[0], "NSThreadQZL", thread);
    EXPECT_TRUE(listener.All()[0].onMainThread);
    EXPECT_FALSE(finishedBeforeTheEnd);
}

TEST_F(RealNotification, PortReportsThatItBecameInvalid)
{
    Host &host = StartWithFamily();
    DefineWrapperClass(host, "NSPortQZL");
    const Listener listener(host, NSPortDidBecomeInvalidNotification);
    NSPort *const port = [NSPort port];

    [port invalidate];

    ASSERT_NE(listener.Of(port), nullptr) << "the event runs before -invalidate returns";
    ExpectObject(*listener.Of(port), "NSPortQZL", port);
}

TEST_F(RealNotification, BundleReportsTheClassesThatItLoaded)
{
    Host &host = StartWithFamily();
    DefineWrapperClass(host, "NSBundleQZL");
    const TemporaryFolder folder;
    folder.Write(@"Loadable.bundle/Resources/Info-gnustep.plist", @"{ NSExecutable = Loadable; }");
    NSString *const executable = folder.Path(@"Loadable.bundle/Loadable");
    ASSERT_EQ(::symlink(QZL_LOADABLE_BUNDLE, [executable fileSystemRepresentation]), 0);
    NSBundle *const bundle = [NSBundle bundleWithPath:folder.Path(@"Loadable.bundle")];
    const Listener listener(host, NSBundleDidLoadNotification);

    ASSERT_TRUE([bundle load]);

    ASSERT_NE(listener.Of(bundle), nullptr);
    const Seen &seen = *listener.Of(bundle);
    ExpectObject(seen, "NSBundleQZL", bundle);
    const Value classes = host.DictionaryGet(seen.userInfo, [NSLoadedClasses UTF8String]);
    ASSERT_EQ(host.ArrayCount(classes), 1);
    EXPECT_EQ(host.ArrayElement(classes, 0).AsString(), "QZLLoadedClass");
}
