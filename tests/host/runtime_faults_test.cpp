// Faults of the host on request: functions that it lacks, resolves late, replaces or lets fail.
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

#include "tests/host/runtime_test.h"
#include "tests/support/private_folder.h"

namespace qzlhost {

namespace {

int64_t Ninety(Instance *)
{
    return 90;
}

std::string LoadMessage(Host &host, const std::string &path)
{
    try {
        host.Load(path);
    } catch (const LoadError &error) {
        return error.what();
    }
    return "loaded";
}

} // namespace

using Faults = RuntimeTest;

TEST_F(Faults, EveryFunctionOfTheInterfaceIsThere)
{
    EXPECT_EQ(Host::Functions().size(), 62u);
    for (const std::string &name : Host::Functions())
        EXPECT_NE(HostFunction<void()>(name.c_str()), nullptr) << name;
    EXPECT_EQ(HostFunction<void()>("NoSuchFunction"), nullptr);
    EXPECT_EQ(host.AsksFor("NoSuchFunction"), 1);
}

TEST_F(Faults, AMissingFunctionIsNotResolved)
{
    host.Lack("RuntimeUBound");
    EXPECT_EQ(HostFunction<void()>("RuntimeUBound"), nullptr);
    EXPECT_EQ(host.AsksFor("RuntimeUBound"), 1);
    EXPECT_THROW(host.Lack("NoSuchFunction"), UsageError);
}

TEST_F(Faults, AFunctionMayBeResolvedFromALaterAskOn)
{
    host.AnswerFrom("RuntimeUBound", 3);
    EXPECT_EQ(HostFunction<void()>("RuntimeUBound"), nullptr);
    EXPECT_EQ(HostFunction<void()>("RuntimeUBound"), nullptr);
    EXPECT_NE(HostFunction<void()>("RuntimeUBound"), nullptr);
    EXPECT_NE(HostFunction<void()>("RuntimeUBound"), nullptr);
    EXPECT_EQ(host.AsksFor("RuntimeUBound"), 4);
}

TEST_F(Faults, AFailingFunctionDoesNothing)
{
    const auto newBlock = HostFunction<Instance *(int32_t)>("newMemoryBlock");
    host.Fail("newMemoryBlock");
    EXPECT_EQ(newBlock(4), nullptr);
    EXPECT_EQ(host.CallsOf("newMemoryBlock"), 1);
    host.Fail("newMemoryBlock", false);
    EXPECT_FALSE(Value::Adopt(newBlock(4)).IsNil());
}

TEST_F(Faults, NamesThatShareAFunctionFailApart)
{
    host.Fail("REALGetPropValueInt64");
    const Value number = Value(41).Boxed();
    int64_t value = 0;
    EXPECT_FALSE(ReadProperty("REALGetPropValueInt64", number, "LongValue", &value));
    EXPECT_TRUE(ReadProperty("REALGetPropValueInteger", number, "LongValue", &value));
}

TEST_F(Faults, AFunctionMayBeReplaced)
{
    host.Replace("RuntimeUBound", reinterpret_cast<void *>(&Ninety));
    EXPECT_EQ(HostFunction<int64_t(Instance *)>("RuntimeUBound")(nullptr), 90);
}

TEST_F(Faults, AMethodMayBeMissingOrReplaced)
{
    const auto load = HostFunction<void *(void *, const char *)>("REALLoadGlobalMethod");
    EXPECT_NE(load(nullptr, "LenB( s as string ) as integer"), nullptr);
    host.LackMethod("LenB(text As String) As Integer");
    EXPECT_EQ(load(nullptr, "LenB( s as string ) as integer"), nullptr);
    EXPECT_EQ(load(nullptr, "LenB( s as string ) as double"), nullptr);
    host.ReplaceMethod("VarType(value As Variant) As Integer", reinterpret_cast<void *>(&Ninety));
    EXPECT_EQ(load(nullptr, "VarType(v as variant) as integer"), reinterpret_cast<void *>(&Ninety));
    host.LackMethod("Key(index As Integer) As Variant");
    EXPECT_EQ(HostFunction<void *(Instance *, const char *)>("REALLoadObjectMethod")(
                  host.NewDictionary().ObjectPointer(), "Key(index As Integer) As Variant"),
              nullptr);
}

TEST(FaultsOfAHost, EndWithIt)
{
    const auto upperBound = [](Host &host) {
        const Value array = host.NewArray(code::Int64, {1, 2});
        return HostFunction<int64_t(Instance *)>("RuntimeUBound")(array.ObjectPointer());
    };
    {
        Host first;
        first.Fail("RuntimeUBound");
        EXPECT_EQ(upperBound(first), 0);
    }
    Host second;
    EXPECT_EQ(upperBound(second), 1);
}

TEST(Versions, AreReturnedAsSet)
{
    for (const double version : {2011.0, 2013.04, 2024.01}) {
        HostOptions options;
        options.version = version;
        Host host(options);
        EXPECT_EQ(HostFunction<double()>("REALGetRBVersion")(), version);
        LoadExample(host);
        EXPECT_EQ(host.DeclaredVersion(), version < 2013 ? 9 : 13);
        EXPECT_EQ(host.RegisteredClasses()[0].version, version < 2013 ? 9u : 13u);
    }
}

TEST(Versions, WithoutOneTheFunctionIsMissing)
{
    HostOptions options;
    options.version = std::nullopt;
    Host host(options);
    EXPECT_EQ(HostFunction<double()>("REALGetRBVersion"), nullptr);
    EXPECT_EQ(host.DeclaredVersion(), std::nullopt);
}

/// Tests that run at once do not share their files.
class Loading : public testing::Test {
protected:
    const PrivateFolder folder;
    const std::string path = folder.Path("no_library.so");
    Host host;
};

TEST_F(Loading, NamesThePathOfAMissingFile)
{
    EXPECT_EQ(LoadMessage(host, "/no/such/library.so"), "there is no file /no/such/library.so");
}

TEST_F(Loading, NamesThePathOfAFileThatIsNoLibrary)
{
    std::ofstream(path) << "text";
    EXPECT_THAT(LoadMessage(host, path), testing::StartsWith("cannot load " + path + ": "));
}

TEST_F(Loading, NamesThePathOnce)
{
    for (const char *text : {"text", "\xCA\xFE\xBA\xBE and more"}) {
        std::ofstream(path) << text;
        const std::string message = LoadMessage(host, path);
        EXPECT_EQ(message.find(path), message.rfind(path)) << message;
    }
}

TEST_F(Loading, SaysOfAMachOFileWhatItIs)
{
    // A universal file of one slice, a 32-bit file, a 64-bit executable.
    const std::pair<std::string, const char *> files[] = {
        {std::string("\xCA\xFE\xBA\xBE\0\0\0\1\1\0\0\x0C\0\0\0\0\0\0\0\x1C\0\0\0\0\0\0\0\0", 28),
         "it is a universal file for arm64; "},
        {std::string("\xCE\xFA\xED\xFE\7\0\0\0\3\0\0\0\6\0\0\0", 16), "it is a 32-bit dylib for i386; "},
        {std::string("\xCF\xFA\xED\xFE\7\0\0\1\3\0\0\0\2\0\0\0", 16),
         "it is a 64-bit executable for x86-64; "},
    };
    for (const auto &[content, kind] : files) {
        std::ofstream(path, std::ios::binary) << content;
        EXPECT_EQ(LoadMessage(host, path),
                  "cannot load " + path + ": " + kind + "a 64-bit dylib or bundle for x86-64 is needed");
    }
}

TEST_F(Loading, TakesOnlyRegularFiles)
{
    // A hang ends the test.
    alarm(60);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(LoadMessage(host, path), "cannot load " + path + ": it is a FIFO");
    EXPECT_EQ(LoadMessage(host, "/dev"), "cannot load /dev: it is a directory");
}

TEST_F(Loading, SaysThatLinksLeadInACircle)
{
    ASSERT_EQ(symlink(path.c_str(), path.c_str()), 0);
    EXPECT_EQ(LoadMessage(host, path), "cannot load " + path + ": its symbolic links lead in a circle");
}

TEST_F(Loading, SaysThatTheNameIsEmpty)
{
    EXPECT_EQ(LoadMessage(host, ""), "the name of the library is empty");
}

TEST_F(Loading, NamesThePathOfALibraryWithoutAnEntryPoint)
{
    EXPECT_EQ(LoadMessage(host, EMPTY_LIBRARY_PATH),
              std::string("the library ") + EMPTY_LIBRARY_PATH + " has no function REALPluginMain");
}

TEST_F(Loading, WithoutRegistrationThereAreNoClasses)
{
    host.Lack("PluginRegisterClass");
    LoadExample(host);
    EXPECT_THAT(host.RegisteredClasses(), testing::IsEmpty());
    EXPECT_FALSE(host.HasClass("BaseEX"));
}

TEST_F(Loading, ASecondClassOfTheSameNameIsAMistake)
{
    host.DefineClass({"BaseEX", ""});
    host.Load(EXAMPLE_LIBRARY_PATH);
    EXPECT_THAT(host.Mistakes(),
                testing::ElementsAre(testing::HasSubstr("BaseEX cannot be registered again")));
    EXPECT_THROW(host.DefineClass({"dictionary", ""}), UsageError);
}

} // namespace qzlhost
