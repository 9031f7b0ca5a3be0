// The rules for unwinding that are read from a dylib are those that the compiler wrote for its debuggers.
#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <sstream>

#include "platform/macho/image_reader.h"
#include "platform/macho/unwind_info.h"
#include "platform/macho/unwinding.h"
#include "tests/platform/macho/dylib_file.h"

using macho::Bytes;
using macho::Processor;

namespace {

constexpr const char *kDylibs[] = {
    "cxx_exceptions",           "objc_exceptions",           "objects",
    "cxx_exceptions_frameless", "saved_registers_frameless", "saved_registers"};

/// What is known in the body of a function.
struct Frame {
    uint64_t end = 0;
    /// Where the frame's address is, as "W29+16"; and what is saved below it, in bytes, by the register's
    /// name.
    std::string address;
    std::map<std::string, uint64_t> saved;

    bool operator==(const Frame &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Frame &frame)
{
    out << "up to " << std::hex << frame.end << std::dec << ": CFA=" << frame.address;
    for (const auto &[name, bytesBelow] : frame.saved)
        out << ", " << name << "=[CFA-" << bytesBelow << "]";
    return out;
}

/// The frames of functions, by where they begin.
using Frames = std::map<uint64_t, Frame>;

/// Reads LLVM's text: for each function "... FDE ... pc=BEGIN...END", and a line for each state, the last of
/// which holds in the body: "  0x968: CFA=W29+16: W19=[CFA-24], W30=[CFA-8]".
Frames ReadText(const std::vector<char> &text)
{
    const std::regex function(".* FDE .* pc=([0-9a-f]+)\\.\\.\\.([0-9a-f]+)"),
        state("  0x[0-9a-f]+: CFA=([A-Z0-9+]+)(: .*)?"), saved("([A-Z0-9]+)=\\[CFA-([0-9]+)\\]");
    Frames frames;
    Frame *frame = nullptr;
    std::istringstream lines(std::string(text.begin(), text.end()));
    for (std::string line; std::getline(lines, line);) {
        std::smatch parts;
        if (std::regex_match(line, parts, function)) {
            frame = &frames[std::stoull(parts[1], nullptr, 16)];
            frame->end = std::stoull(parts[2], nullptr, 16);
        } else if (frame != nullptr && std::regex_match(line, parts, state)) {
            frame->address = parts[1];
            frame->saved.clear();
            const std::string registers = parts[2];
            for (std::sregex_iterator one(registers.begin(), registers.end(), saved), end; one != end; ++one)
                frame->saved[(*one)[1]] = std::stoull((*one)[2]);
        }
    }
    return frames;
}

/// LLVM's names of registers by DWARF's numbers.
std::string RegisterName(Processor processor, uint64_t number)
{
    static const std::map<uint64_t, std::string> kOnX8664 = {
        {3, "RBX"}, {6, "RBP"}, {7, "RSP"}, {12, "R12"}, {13, "R13"}, {14, "R14"}, {15, "R15"}, {16, "RIP"}};
    if (processor == Processor::X86_64)
        return kOnX8664.at(number);
    if (number == 31)
        return "WSP";
    return number < 31 ? "W" + std::to_string(number) : "B" + std::to_string(number - 64);
}

/// Carries out DWARF's instructions to their end, at `frame`.
class Machine {
public:
    Machine(Processor processor, Frame &frame) : processor_(processor), frame_(frame) {}

    void Run(std::span<const uint8_t> instructions)
    {
        macho::Cursor cursor(Bytes(instructions.data(), instructions.size()), "instructions");
        while (!cursor.AtEnd())
            Step(cursor);
        frame_.address =
            RegisterName(processor_, register_) + (offset_ == 0 ? "" : "+" + std::to_string(offset_));
    }

private:
    void Step(macho::Cursor &cursor)
    {
        const auto code = cursor.Next<uint8_t>();
        if (code >= 0x80 && code < 0xC0)
            Save(code & 0x3F, cursor);
        else if (code >= 0x40 && code < 0x80)
            return; // the next ones hold further on
        else if (code == 0x05)
            Save(cursor.NextUnsignedLeb(), cursor);
        else if (code == 0x0C || code == 0x0D)
            register_ = cursor.NextUnsignedLeb();
        else if (code != 0x00 && code != 0x0E)
            ADD_FAILURE() << "unknown instruction " << int{code};
        if (code == 0x0C || code == 0x0E)
            offset_ = cursor.NextUnsignedLeb();
    }

    void Save(uint64_t number, macho::Cursor &cursor)
    {
        frame_.saved[RegisterName(processor_, number)] = cursor.NextUnsignedLeb() * 8;
    }

    Processor processor_;
    Frame &frame_;
    uint64_t register_ = 0, offset_ = 0;
};

Frames ReadDylib(Processor processor, const std::vector<char> &file)
{
    const macho::Image image =
        macho::ParseImage(Bytes(file.data(), file.size()), processor, macho::ImageKind::Library);
    Frames frames;
    for (const macho::UnwindEntry &entry : macho::ReadUnwindInfo(image)) {
        Frame &frame = frames[entry.begin];
        frame.end = entry.end;
        std::vector<uint8_t> all(macho::UnwindingFor(processor).rulesAtCall.begin(),
                                 macho::UnwindingFor(processor).rulesAtCall.end());
        all.insert(all.end(), entry.instructions.begin(), entry.instructions.end());
        Machine(processor, frame).Run(all);
    }
    return frames;
}

class CompiledFrames : public testing::TestWithParam<std::tuple<Processor, const char *>> {};

} // namespace

TEST_P(CompiledFrames, AreTheCompilers)
{
    const auto [processor, name] = GetParam();
    const Frames expected = ReadText(BuiltFile(FolderOf(processor) + "/" + name + ".frames"));
    const Frames actual = ReadDylib(processor, FileOf(name, processor));
    EXPECT_GT(expected.size(), 5u);
    for (const auto &[begin, frame] : expected) {
        SCOPED_TRACE(begin);
        // The linker joins functions of the same rules into one row, which reaches to the next one.
        const auto next = actual.upper_bound(begin);
        ASSERT_NE(next, actual.begin());
        Frame found = std::prev(next)->second;
        EXPECT_GE(found.end, frame.end);
        found.end = frame.end;
        EXPECT_EQ(found, frame);
    }
}

INSTANTIATE_TEST_SUITE_P(Dylibs, CompiledFrames,
                         testing::Combine(testing::ValuesIn(kProcessors), testing::ValuesIn(kDylibs)),
                         [](const auto &info) {
                             return FolderOf(std::get<0>(info.param)) + "_" + std::get<1>(info.param);
                         });
