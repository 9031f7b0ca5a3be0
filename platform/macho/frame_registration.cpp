// Writes a section .eh_frame for the functions of an image, with absolute addresses, and registers it.
#include "platform/macho/frame_registration.h"

#include <map>

#include "platform/macho/dwarf_instructions.h"
#include "platform/macho/unwinding.h"

extern "C" void RegisterFrame(void *section) __asm__("__register_frame");

namespace macho {

namespace {

constexpr uint8_t kAbsolute = 0x00, kNop = 0;
constexpr size_t kAlignment = 8;

/// Builds the section.
class Writer {
public:
    explicit Writer(const Unwinding &unwinding) : unwinding_(unwinding) {}

    /// The offset of what entries with this personality routine share, which is written once.
    size_t CommonFor(uint64_t personality)
    {
        if (const auto known = common_.find(personality); known != common_.end())
            return known->second;
        const size_t start = Begin();
        Append(uint32_t{0});
        bytes_.push_back(1);
        for (const char letter : std::string_view(personality == 0 ? "zR" : "zPLR"))
            bytes_.push_back(static_cast<uint8_t>(letter));
        bytes_.push_back(0);
        AppendUnsignedLeb(bytes_, 1);
        AppendSignedLeb(bytes_, dwarf::DataAlignment);
        bytes_.push_back(unwinding_.returnAddress);
        if (personality == 0) {
            AppendUnsignedLeb(bytes_, 1);
        } else {
            AppendUnsignedLeb(bytes_, 3 + sizeof personality);
            bytes_.push_back(kAbsolute);
            Append(personality);
            bytes_.push_back(kAbsolute);
        }
        bytes_.push_back(kAbsolute);
        bytes_.insert(bytes_.end(), unwinding_.rulesAtCall.begin(), unwinding_.rulesAtCall.end());
        End(start);
        common_[personality] = start;
        return start;
    }

    void AddEntry(uint64_t personality, uint64_t begin, uint64_t size, uint64_t handlerTable,
                  const std::vector<uint8_t> &instructions)
    {
        const size_t common = CommonFor(personality);
        const size_t start = Begin();
        Append(static_cast<uint32_t>(bytes_.size() - common));
        Append(begin);
        Append(size);
        if (personality == 0) {
            AppendUnsignedLeb(bytes_, 0);
        } else {
            AppendUnsignedLeb(bytes_, sizeof handlerTable);
            Append(handlerTable);
        }
        bytes_.insert(bytes_.end(), instructions.begin(), instructions.end());
        End(start);
    }

    /// The section, which ends with a record of length 0.
    std::vector<uint8_t> Take()
    {
        Append(uint32_t{0});
        return std::move(bytes_);
    }

private:
    template <typename T>
    void Append(T value)
    {
        const auto *const raw = reinterpret_cast<const uint8_t *>(&value);
        bytes_.insert(bytes_.end(), raw, raw + sizeof value);
    }

    /// Begins a record, whose length End fills in.
    size_t Begin()
    {
        const size_t start = bytes_.size();
        Append(uint32_t{0});
        return start;
    }

    void End(size_t start)
    {
        while ((bytes_.size() - start - sizeof(uint32_t)) % kAlignment != 0)
            bytes_.push_back(kNop);
        const auto size = static_cast<uint32_t>(bytes_.size() - start - sizeof(uint32_t));
        std::memcpy(&bytes_[start], &size, sizeof size);
    }

    const Unwinding &unwinding_;
    std::vector<uint8_t> bytes_;
    std::map<uint64_t, size_t> common_;
};

} // namespace

void RegisterFrames(const std::vector<UnwindEntry> &entries, const MappedImage &memory)
{
    if (entries.empty())
        return;
    const auto place = [&](uint64_t address) {
        return address == 0 ? 0 : reinterpret_cast<uint64_t>(memory.At(address));
    };
    Writer writer(UnwindingFor(kThisProcessor));
    for (const UnwindEntry &entry : entries) {
        const uint64_t personality =
            entry.personalitySlot == 0
                ? 0
                : memory.Read<uint64_t>(memory.At(entry.personalitySlot), "a personality routine");
        writer.AddEntry(personality, place(entry.begin), entry.end - entry.begin, place(entry.handlerTable),
                        entry.instructions);
    }
    static auto &sections = *new std::vector<std::vector<uint8_t>>;
    RegisterFrame(sections.emplace_back(writer.Take()).data());
}

} // namespace macho
