// Makes and reads host memory blocks in whichever way the host supports.
#include "frame/memory_blocks.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <new>

#include "frame/errors.h"
#include "frame/host_references.h"
#include "frame/kept_look_ups.h"

namespace {

/// The host's function takes a size of 32 bits; from this size on the constructor makes the block.
constexpr int64_t kFirstSizeForConstructor = 0x7FFFFFFF;

using PointerFunction = void *(*)(REALmemoryBlock block);
std::atomic<PointerFunction> myMemoryBlockGetPtr{nullptr};

REALmemoryBlock AsMemoryBlock(REALobject instance)
{
    return reinterpret_cast<REALmemoryBlock>(instance);
}

/// The block's own method, looked up on a block made for this purpose, or else the host's function. The
/// method is kept once it is found.
PointerFunction FindPointerFunction(REALmemoryBlock block)
{
    constexpr int32_t kProbeSize = 4;
    HostRef<REALobject> probe(AsInstance(REALNewMemoryBlockOriginal(kProbeSize)));
    const REALobject asked = probe ? probe.Get() : AsInstance(block);
    const auto method =
        reinterpret_cast<PointerFunction>(REALLoadObjectMethod(asked, "Operator_Convert() As Ptr"));
    if (method != nullptr)
        myMemoryBlockGetPtr = method;
    probe.GiveBack();
    return method != nullptr ? method : REALMemoryBlockGetPtr;
}

/// A block of the size with one reference for the caller, or null. The host drops what its constructor
/// raises.
REALmemoryBlock NewMemoryBlock(int64_t size)
{
    if (size < kFirstSizeForConstructor)
        return REALNewMemoryBlockOriginal(static_cast<int32_t>(size));
    MemoryBlockRequest request = {size, nullptr};
    HostRef<REALobject> report(REALCallFunctionWithExceptionHandler(REALNewMemoryBlockWork, &request));
    HostRef<REALobject> block(AsInstance(request.block));
    report.GiveBack();
    return AsMemoryBlock(block.Release());
}

/// A block with a copy of the bytes, or null.
REALmemoryBlock CopyToMemoryBlock(const void *bytes, int64_t length)
{
    HostRef<REALobject> block(AsInstance(NewMemoryBlock(length)));
    void *const target = block ? MyREALMemoryBlockGetPtr(AsMemoryBlock(block.Get())) : nullptr;
    if (target == nullptr) {
        block.GiveBack();
        return nullptr;
    }
    std::memcpy(target, bytes, static_cast<size_t>(length));
    return AsMemoryBlock(block.Release());
}

void RaiseOutOfMemory(int64_t length)
{
    char message[200];
    std::snprintf(message, sizeof message, "Failed to allocate a memoryblock with %lld bytes in size.",
                  static_cast<long long>(length));
    RaiseException("OutOfMemoryException", message);
}

} // namespace

void *MyREALMemoryBlockGetPtr(REALmemoryBlock block)
{
    if (block == nullptr)
        return nullptr;
    const PointerFunction known = myMemoryBlockGetPtr;
    return (known != nullptr ? known : FindPointerFunction(block))(block);
}

int64_t MemoryBlockSize(REALmemoryBlock block)
{
    int64_t size = 0;
    if (REALGetPropValueInteger(AsInstance(block), "Size", &size))
        return size;
    return REALMemoryBlockGetSize(block);
}

void REALNewMemoryBlockWork(void *argument)
{
    using Constructor = void (*)(REALobject instance, int64_t size);
    MemoryBlockRequest *const request = static_cast<MemoryBlockRequest *>(argument);
    HostRef<REALobject> instance(REALnewInstance("MemoryBlock"));
    if (!instance)
        return;
    static FirstSlot<Constructor> kept;
    const Constructor constructor = KeepFirst(
        kept, [&] { return REALLoadObjectMethod(instance.Get(), "Constructor(bytes as Integer)"); });
    if (constructor != nullptr) {
        constructor(instance.Get(), request->size);
        if (MemoryBlockSize(AsMemoryBlock(instance.Get())) >= request->size)
            request->block = AsMemoryBlock(instance.Release());
    }
    instance.GiveBack();
}

REALmemoryBlock NewMemoryBlockOfBytes(const void *bytes, int64_t length)
{
    if (bytes == nullptr || length <= 0)
        return nullptr;
    try {
        if (const REALmemoryBlock block = CopyToMemoryBlock(bytes, length))
            return block;
        RaiseOutOfMemory(length);
        return nullptr;
    } catch (const std::bad_alloc &) {
        // Thrown for the block, or for the report that there is none.
    }
    RaiseOutOfMemory(length);
    return nullptr;
}
