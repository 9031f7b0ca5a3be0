// Memory blocks: the members of their class, and entry points.
#include "host/values/memory_block.h"

#include "host/interface/builtin_classes.h"
#include "host/interface/entry_functions.h"
#include "host/interface/exceptions.h"
#include "host/interface/thunk.h"

namespace qzlhost {

namespace {

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
                {"Operator_Convert() As Ptr", Native<&MemoryBlockPointer, 1>("MemoryBlock.Operator_Convert")},
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
    return NewBuiltIn("MemoryBlock", std::move(block));
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
