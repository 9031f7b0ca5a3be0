// A program that tests run: its first argument says what it does.
#import <Foundation/Foundation.h>
#include <dlfcn.h>
#include <objc/runtime.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace {

void Print(const char *text)
{
    @autoreleasepool {
        NSFileHandle *const output = [NSFileHandle fileHandleWithStandardOutput];
        [output writeData:[NSData dataWithBytes:text length:std::strlen(text)]];
        [output writeData:[NSData dataWithBytes:"\n" length:1]];
    }
}

void Print(NSString *text)
{
    Print([text UTF8String]);
}

void Print(const char *name, long value)
{
    char line[100];
    std::snprintf(line, sizeof line, "%s %ld", name, value);
    Print(line);
}

/// Says when it begins and ends, if its program asks for that.
class Global {
public:
    Global() : isMade_(true) {}
    ~Global()
    {
        if (speaks_)
            Print("the destructor runs");
    }

    void Speak()
    {
        speaks_ = true;
        Print("the constructor has run", isMade_);
    }

private:
    bool isMade_ = false;
    bool speaks_ = false;
};

Global gGlobal;
bool gWasClassLoaded = false;

class Failure : public std::exception {
public:
    const char *what() const noexcept override { return "a C++ exception"; }
};

void SayThatItEnds()
{
    Print("the function for the end runs");
}

} // namespace

@interface Counter : NSObject {
    long count_;
}
- (void)add:(long)number;
- (long)count;
@end

@implementation Counter

+ (void)load
{
    gWasClassLoaded = true;
}

- (id)init
{
    self = [super init];
    count_ = 40;
    return self;
}

- (void)add:(long)number
{
    count_ += number;
}

- (long)count
{
    return count_;
}

@end

namespace {

struct Arguments {
    int count;
    char **values;
    char **environment;
    char **kernel;
};

int PrintArguments(const Arguments &arguments)
{
    for (int i = 0; i < arguments.count; ++i)
        Print(arguments.values[i]);
    return arguments.count;
}

int PrintSurroundings(const Arguments &arguments)
{
    for (char **line = arguments.environment; *line != nullptr; ++line) {
        if (std::strncmp(*line, "SURROUNDINGS=", 13) == 0)
            Print(*line);
    }
    for (char **line = arguments.kernel; *line != nullptr; ++line)
        Print(*line);
    return 0;
}

int UseFoundation(const Arguments &)
{
    NSMutableDictionary *const dictionary = [NSMutableDictionary dictionaryWithCapacity:1];
    [dictionary setObject:@[ @"one", @2 ] forKey:@"key"];
    Print("elements", static_cast<long>([[dictionary objectForKey:@"key"] count]));
    Print([@"joined: " stringByAppendingString:[[dictionary objectForKey:@"key"] objectAtIndex:0]]);
    Print("the folder has a name", [NSTemporaryDirectory() length] > 0);
    Print(NSStringFromClass(NSClassFromString(@"NSNotificationCenter")));
    Print("the mode has a name", [NSDefaultRunLoopMode length] > 0);
    Print("process", getpid() > 1);
    Print("terminal", isatty(STDOUT_FILENO));
    usleep(1);
    const CFUUIDRef uuid = CFUUIDCreate(kCFAllocatorDefault);
    const CFStringRef type = CFCopyTypeIDDescription(CFGetTypeID(uuid));
    char name[20];
    Print("it fits", CFStringGetCString(type, name, sizeof name, kCFStringEncodingUTF8));
    Print(name);
    CFRelease(type);
    CFRelease(uuid);
    return 0;
}

int UseClass(const Arguments &)
{
    Counter *const counter = [Counter new];
    [counter add:2];
    Print(object_getClassName(counter), [counter count]);
    [counter release];
    Print("its class was loaded", gWasClassLoaded);
    return 0;
}

long Answer(id, SEL)
{
    return 42;
}

int MakeClass(const Arguments &)
{
    const Class made = objc_allocateClassPair(objc_getClass("Counter"), "MadeCounter", 0);
    Print("the method is new",
          class_addMethod(made, sel_registerName("count"), reinterpret_cast<IMP>(Answer), "q@:"));
    objc_registerClassPair(made);
    Print("the name is taken", objc_allocateClassPair([NSObject class], "MadeCounter", 0) == Nil);
    Counter *const counter = [made new];
    Print(class_getName(object_getClass(counter)), [counter count]);
    [counter release];
    objc_disposeClassPair(objc_allocateClassPair([NSObject class], "Unused", 0));
    Print("the name is free", objc_getClass("Unused") == Nil);
    return 0;
}

int CatchExceptions(const Arguments &)
{
    @try {
        [[NSException exceptionWithName:@"Name" reason:@"Reason" userInfo:nil] raise];
    } @catch (NSException *exception) {
        Print([exception reason]);
    } @finally {
        Print("finally");
    } @
    try {
        [[NSMutableArray array] objectAtIndex:1];
    } @catch (id exception) {
        Print([exception name]);
    }
    try {
        throw Failure();
    } catch (const std::exception &error) {
        Print(error.what());
    }
    return 0;
}

int ThrowCocoaException(const Arguments &)
{
    [[NSException exceptionWithName:@"Name" reason:@"nobody catches it" userInfo:nil] raise];
    return 0;
}

int ThrowCxxException(const Arguments &)
{
    throw Failure();
}

int SayWhatRuns(const Arguments &)
{
    gGlobal.Speak();
    atexit(SayThatItEnds);
    return 3;
}

int Exit(const Arguments &arguments)
{
    SayWhatRuns(arguments);
    exit(4);
}

int ExitAtOnce(const Arguments &arguments)
{
    SayWhatRuns(arguments);
    _exit(5);
}

int Abort(const Arguments &)
{
    abort();
}

/// The second argument is the path of a dylib, the third the name of its function.
int LoadDylib(const Arguments &arguments)
{
    const char *const path = arguments.values[2];
    void *const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        Print(dlerror());
        Print("and then nothing", dlerror() == nullptr);
        return 1;
    }
    Print("the same handle", dlopen(path, RTLD_LAZY) == library);
    void *const function = dlsym(library, arguments.values[3]);
    Print("the function is found", function != nullptr);
    Print("so is one of its libraries", dlsym(library, "strlen") == reinterpret_cast<void *>(std::strlen));
    Print("no error", dlerror() == nullptr);
    Print("nonsense is found", dlsym(library, "nonsense") != nullptr);
    char error[100];
    std::snprintf(error, sizeof error, "dlsym(%p, nonsense): symbol not found", library);
    Print("the error says so", std::strcmp(dlerror(), error) == 0);
    Dl_info image = {};
    Print("the image has an address", dladdr(function, &image) != 0);
    Print("its header is there", *static_cast<const uint32_t *>(image.dli_fbase) == 0xFEEDFACF);
    Print("the stack is in an image", dladdr(&image, &image) != 0);
    return 0;
}

int LookUpElsewhere(const Arguments &)
{
    Print("program", dlopen(nullptr, RTLD_LAZY) != nullptr);
    Print(dlerror());
    Print("everywhere", dlsym(RTLD_DEFAULT, "main") != nullptr);
    Print(dlerror());
    return 0;
}

/// Starts itself with these arguments, and prints what it prints and how it ends.
void RunSelf(const Arguments &arguments, NSArray *childsArguments)
{
    NSString *const path = [NSString stringWithUTF8String:arguments.values[0]];
    NSTask *const task = [NSTask new];
    NSPipe *const pipe = [NSPipe pipe];
    [task setLaunchPath:path];
    [task setArguments:childsArguments];
    [task setStandardOutput:pipe];
    // An emulator writes there what ended the child.
    [task setStandardError:[NSFileHandle fileHandleWithNullDevice]];
    [task setCurrentDirectoryPath:@"/"];
    [task launch];
    NSData *const output = [[pipe fileHandleForReading] readDataToEndOfFile];
    [task waitUntilExit];
    NSString *const text = [[NSString alloc] initWithData:output encoding:NSUTF8StringEncoding];
    Print(text);
    [text release];
    Print([task terminationReason] == NSTaskTerminationReasonExit ? "exit" : "signal",
          [task terminationStatus]);
    Print("its path is kept", [[task launchPath] isEqualToString:path]);
    Print("its arguments are kept", [[task arguments] isEqual:childsArguments]);
    [task release];
}

int StartItself(const Arguments &arguments)
{
    RunSelf(arguments, @[ @"arguments", @"with a space", @"" ]);
    RunSelf(arguments, @[ @"abort" ]);
    return 0;
}

/// The second argument is the path of a program of the system.
int StartAnother(const Arguments &arguments)
{
    NSTask *const task = [NSTask new];
    [task setLaunchPath:[NSString stringWithUTF8String:arguments.values[2]]];
    [task setArguments:@[ @"an argument" ]];
    [task launch];
    [task waitUntilExit];
    const int status = [task terminationStatus];
    [task release];
    return status;
}

constexpr struct {
    const char *name;
    int (*function)(const Arguments &arguments);
} kActions[] = {
    {"arguments", PrintArguments},
    {"surroundings", PrintSurroundings},
    {"foundation", UseFoundation},
    {"class", UseClass},
    {"made_class", MakeClass},
    {"catch", CatchExceptions},
    {"throw_cocoa", ThrowCocoaException},
    {"throw_cxx", ThrowCxxException},
    {"ends", SayWhatRuns},
    {"exit", Exit},
    {"exit_at_once", ExitAtOnce},
    {"abort", Abort},
    {"dylib", LoadDylib},
    {"elsewhere", LookUpElsewhere},
    {"itself", StartItself},
    {"another", StartAnother},
};

} // namespace

int main(int argc, char **argv, char **environment, char **kernel)
{
    @autoreleasepool {
        const Arguments arguments = {argc, argv, environment, kernel};
        for (const auto &action : kActions) {
            if (argc > 1 && std::strcmp(argv[1], action.name) == 0)
                return action.function(arguments);
        }
    }
    return 99;
}
