// The host's MemoryBlock: bytes at a fixed address.
#include "host/values/memory_block.h"

#include <cstdlib>

#include <sys/mman.h>

#include "host/calls/exceptions.h"
#include "host/interface/entry_functions.h"
#include "host/interface/thunk.h"
#include "host/runtime.h"

namespace qzlhost {

namespace {

/// Blocks from this size on are mapped, smaller ones are of the heap, where sanitizers see their ends.
constexpr int64_t kMapped = int64_t{1} << 20;

void *AllocateBytes(int64_t size)
{
    if (size < kMapped)
        return std::calloc(1, static_cast<size_t>(size));
    void *const bytes = mmap(nullptr, static_cast<size_t>(size), PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return bytes == MAP_FAILED ? nullptr : bytes;
}

void *ConvertToPointer(Of<MemoryBlock> self)
{
    return self->Pointer();
}

void Construct(Of<MemoryBlock> self, int64_t size)
{
    if (!self->Allocate(size)) {
        RaiseHostException("OutOfMemoryException",
                           "There is no memory block of " + std::to_string(size) + " bytes.");
    }
}

int64_t Size(Of<MemoryBlock> self, int64_t)
{
    return self->Size();
}

} // namespace

MemoryBlock::~MemoryBlock()
{
    Free();
}

bool MemoryBlock::Allocate(int64_t size)
{
    void *const bytes = size > 0 ? AllocateBytes(size) : nullptr;
    if (size < 0 || (size > 0 && !bytes))
        return false;
    Free();
    bytes_ = bytes;
    size_ = size;
    return true;
}

void MemoryBlock::Free()
{
    if (size_ < kMapped)
        std::free(bytes_);
    else
        munmap(bytes_, static_cast<size_t>(size_));
}

BuiltInClass MemoryBlockClass()
{
    return {"MemoryBlock",
            nullptr,
            &MakePayloadOf<MemoryBlock>,
            {
                {"Size", "Integer", Native<&Size>("MemoryBlock.Size")},
            },
            {
                {"Constructor(bytes As Integer)", Native<&Construct>("MemoryBlock.Constructor")},
                {"Operator_Convert() As Ptr", Native<&ConvertToPointer>("MemoryBlock.Operator_Convert")},
            }};
}

Instance *NewMemoryBlock(int32_t size)
{
    auto block = std::make_unique<MemoryBlock>();
    if (size < 0) {
        RecordMistake("a memory block of " + std::to_string(size) + " bytes");
        return nullptr;
    }
    if (!block->Allocate(size))
        return nullptr;
    return NewInstance(*Runtime::Current()->classes.Find("MemoryBlock"), std::move(block));
}

void *MemoryBlockPointer(Of<MemoryBlock> block)
{
    return block->Pointer();
}

int64_t MemoryBlockSize(Of<MemoryBlock> block)
{
    return block->Size();
}

} // namespace qzlhost
