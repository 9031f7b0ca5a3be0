// A test that loads a dylib which was built for it, and calls its exports.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/macho/loader.h"
#include "tests/platform/macho/processors.h"

class DylibTest : public testing::Test {
protected:
    /// The path of a dylib that was built for the tests.
    static std::string PathOf(const std::string &name)
    {
        return std::string(TEST_DYLIBS) + "/" + FolderOf(macho::kThisProcessor) + "/" + name + ".dylib";
    }

    /// Loads it for as long as the process lives, which is the test's own.
    void Load(const std::string &name) { dylib_ = &macho::LoadDylib(PathOf(name)); }

    const macho::LoadedImage &Dylib() const { return *dylib_; }

    /// The function of this name; null where there is none, and then the test fails.
    template <typename Function>
    Function *Find(const std::string &name)
    {
        void *const symbol = macho::FindSymbol(*dylib_, name);
        EXPECT_NE(symbol, nullptr) << name;
        return reinterpret_cast<Function *>(symbol);
    }

private:
    const macho::LoadedImage *dylib_ = nullptr;
};
