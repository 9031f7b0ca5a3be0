// What compact unwind rules for x86-64 stand for.
#include <array>

#include "platform/macho/dwarf_instructions.h"
#include "platform/macho/unwinding.h"

namespace macho {

namespace {

constexpr std::string_view kWhat = "__unwind_info";

constexpr uint8_t kRbx = 3, kRbp = 6, kRsp = 7, kR12 = 12, kR13 = 13, kR14 = 14, kR15 = 15,
                  kReturnAddress = 16;

constexpr uint32_t kFrameMode = 0x01000000, kStackMode = 0x02000000, kLargeStackMode = 0x03000000,
                   kDwarfMode = 0x04000000;

/// The frame's address is rsp + 8, and the return address lies right below.
constexpr uint8_t kRulesAtCall[] = {dwarf::DefineCfa, kRsp, 8, dwarf::OffsetOf | kReturnAddress, 1};

/// Registers are numbered from 1 to 6; 0 stands for none.
constexpr std::array<uint8_t, 7> kRegisters = {0, kRbx, kR12, kR13, kR14, kR15, kRbp};

/// The rules of a function with its frame in rbp; up to five saved registers lie below, the lowest as many
/// words down as the encoding says.
std::vector<uint8_t> RulesOfFrame(uint32_t compact)
{
    std::vector<uint8_t> rules = {dwarf::DefineCfa, kRbp, 16};
    AppendSaved(rules, kRbp, 2);
    const uint32_t lowest = CompactField(compact, 16, 8);
    for (unsigned i = 0; i < 5; ++i) {
        const uint32_t number = CompactField(compact, i * 3, 3);
        if (number == 0)
            continue;
        if (number >= kRegisters.size() || lowest < i)
            FailCompact("a frame with wrong registers");
        AppendSaved(rules, kRegisters[number], 2 + lowest - i);
    }
    return rules;
}

/// The registers in the order in which they were saved, from that order's number among all orders of `count`
/// of six registers.
std::vector<uint32_t> RegistersOfPermutation(uint32_t count, uint32_t permutation)
{
    if (count > 6)
        FailCompact("too many saved registers");
    // Each digit says which of the remaining registers comes next.
    std::vector<uint32_t> digits(count);
    uint32_t rest = permutation;
    for (uint32_t i = count; i-- > 0;) {
        const uint32_t choices = 6 - i;
        digits[i] = rest % choices;
        rest /= choices;
    }
    std::vector<uint32_t> left = {1, 2, 3, 4, 5, 6};
    std::vector<uint32_t> registers;
    for (const uint32_t digit : digits) {
        registers.push_back(left[digit]);
        left.erase(left.begin() + digit);
    }
    return registers;
}

/// The rules of a function whose frame of `stackSize` bytes is in rsp; the saved registers lie right below
/// the return address.
std::vector<uint8_t> RulesOfStack(uint32_t compact, uint64_t stackSize)
{
    std::vector<uint8_t> rules = {dwarf::DefineCfaOffset};
    AppendUnsignedLeb(rules, stackSize);
    const uint32_t count = CompactField(compact, 10, 3);
    const std::vector<uint32_t> registers = RegistersOfPermutation(count, CompactField(compact, 0, 10));
    for (uint32_t i = 0; i < count; ++i)
        AppendSaved(rules, kRegisters[registers[i]], 1 + count - i);
    return rules;
}

/// The size of a large stack, from the instruction that makes it.
uint64_t LargeStackSize(const Image &image, uint64_t function, uint32_t compact)
{
    const uint64_t place = function + CompactField(compact, 16, 8);
    const auto size = image.ContentAt(place, sizeof(uint32_t), kWhat).Read<uint32_t>(0, kWhat);
    return size + uint64_t{CompactField(compact, 13, 3)} * 8;
}

std::vector<uint8_t> Rules(const Image &image, uint64_t function, uint32_t compact)
{
    switch (compact & kCompactMode) {
    case kFrameMode:
        return RulesOfFrame(compact);
    case kStackMode:
        return RulesOfStack(compact, uint64_t{CompactField(compact, 16, 8)} * 8);
    case kLargeStackMode:
        return RulesOfStack(compact, LargeStackSize(image, function, compact));
    default:
        FailCompact("the rules " + Hex(compact) + " are not known");
    }
}

} // namespace

const Unwinding kUnwindingX86_64 = {kReturnAddress, kRulesAtCall, kDwarfMode, Rules};

} // namespace macho
