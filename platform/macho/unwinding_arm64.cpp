// What compact unwind rules for arm64 stand for.
#include "platform/macho/dwarf_instructions.h"
#include "platform/macho/unwinding.h"

namespace macho {

namespace {

constexpr uint8_t kX29 = 29, kX30 = 30, kStackPointer = 31;

constexpr uint32_t kStackMode = 0x02000000, kDwarfMode = 0x03000000, kFrameMode = 0x04000000;

/// The frame's address is the stack pointer; the return address is still in its register.
constexpr uint8_t kRulesAtCall[] = {dwarf::DefineCfa, kStackPointer, 0};

/// The pairs of registers that a function may save, in the order in which they lie below its frame: x19 to
/// x28, d8 to d15.
constexpr struct {
    uint32_t flag;
    uint8_t first;
} kPairs[] = {
    {0x001, 19}, {0x002, 21}, {0x004, 23}, {0x008, 25}, {0x010, 27},
    {0x100, 72}, {0x200, 74}, {0x400, 76}, {0x800, 78},
};

/// Appends where each saved pair lies. The first is right below `words` words from the frame's address.
void AppendPairs(std::vector<uint8_t> &rules, uint32_t compact, uint64_t words)
{
    for (const auto &[flag, first] : kPairs) {
        if ((compact & flag) == 0)
            continue;
        AppendSaved(rules, first, ++words);
        AppendSaved(rules, first + 1, ++words);
    }
}

/// The rules of a function whose frame is in x29: the caller's x29 and x30 lie there, and pairs below.
std::vector<uint8_t> RulesOfFrame(uint32_t compact)
{
    std::vector<uint8_t> rules = {dwarf::DefineCfa, kX29, 16};
    AppendSaved(rules, kX30, 1);
    AppendSaved(rules, kX29, 2);
    AppendPairs(rules, compact, 2);
    return rules;
}

/// The rules of a function without a frame: it calls nothing, so the return address is still in x30.
std::vector<uint8_t> RulesOfStack(uint32_t compact)
{
    std::vector<uint8_t> rules = {dwarf::DefineCfaOffset};
    AppendUnsignedLeb(rules, uint64_t{CompactField(compact, 12, 12)} * 16);
    AppendPairs(rules, compact, 0);
    return rules;
}

std::vector<uint8_t> Rules(const Image &, uint64_t, uint32_t compact)
{
    switch (compact & kCompactMode) {
    case kFrameMode:
        return RulesOfFrame(compact);
    case kStackMode:
        return RulesOfStack(compact);
    default:
        FailCompact("the rules " + Hex(compact) + " are not known");
    }
}

} // namespace

const Unwinding kUnwindingArm64 = {kX30, kRulesAtCall, kDwarfMode, Rules};

} // namespace macho
