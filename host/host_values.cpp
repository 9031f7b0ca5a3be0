// The stand-in host: its built-in values.
#include <cstring>

#include "host/calls/instances.h"
#include "host/host.h"
#include "host/values/arrays.h"
#include "host/values/date.h"
#include "host/values/dictionary.h"
#include "host/values/folder_item.h"
#include "host/values/memory_block.h"

namespace qzlhost {

namespace {

/// Throws UsageError for an instance of another class.
template <typename P>
P &PayloadIn(const Value &value, const char *className)
{
    P *const payload = PayloadOf<P>(&InstanceOf(value));
    if (!payload)
        throw UsageError("the value is not of the class " + std::string(className));
    return *payload;
}

Dictionary &DictionaryIn(const Value &value)
{
    return PayloadIn<Dictionary>(value, "Dictionary");
}

ArrayPayload &ArrayIn(const Value &value)
{
    return PayloadIn<ArrayPayload>(value, "Array");
}

Value NewWith(const char *className, std::unique_ptr<Payload> payload)
{
    return Value::Adopt(NewBuiltIn(className, std::move(payload)));
}

[[noreturn]] void ThrowOutside(const char *what, int64_t index)
{
    throw UsageError(std::string(what) + " has no index " + std::to_string(index));
}

} // namespace

Value Host::NewDictionary()
{
    return NewWith("Dictionary", nullptr);
}

Value Host::DictionaryGet(const Value &dictionary, const Value &key) const
{
    return DictionaryIn(dictionary).Find(key).value_or(Value());
}

void Host::DictionarySet(const Value &dictionary, const Value &key, const Value &value)
{
    DictionaryIn(dictionary).Set(key, value);
}

Value Host::DictionaryKey(const Value &dictionary, int64_t index) const
{
    const std::optional<Value> key = DictionaryIn(dictionary).KeyAt(index);
    if (!key)
        ThrowOutside("the Dictionary", index);
    return *key;
}

int64_t Host::DictionaryCount(const Value &dictionary) const
{
    return DictionaryIn(dictionary).Count();
}

Value Host::NewDate(int64_t year, int64_t month, int64_t day, int64_t hour, int64_t minute, int64_t second)
{
    auto date = std::make_unique<Date>();
    date->SetFields({year, month, day, hour, minute, second});
    return NewWith("Date", std::move(date));
}

Value Host::NewMemoryBlock(std::string_view bytes)
{
    auto block = std::make_unique<MemoryBlock>();
    if (!block->Allocate(static_cast<int64_t>(bytes.size())))
        throw std::bad_alloc();
    if (!bytes.empty())
        std::memcpy(block->Pointer(), bytes.data(), bytes.size());
    return NewWith("MemoryBlock", std::move(block));
}

std::string Host::MemoryBlockBytes(const Value &block) const
{
    const MemoryBlock &content = PayloadIn<MemoryBlock>(block, "MemoryBlock");
    return std::string(static_cast<const char *>(content.Pointer()), static_cast<size_t>(content.Size()));
}

Value Host::NewFolderItem(const std::string &path)
{
    return NewWith("FolderItem", std::make_unique<FolderItem>(path));
}

std::string Host::FolderItemPath(const Value &item) const
{
    return PayloadIn<FolderItem>(item, "FolderItem").path;
}

Value Host::NewArray(int64_t elementCode, const std::vector<Value> &elements)
{
    Value array = Value::Adopt(NewArrayOf(elementCode, static_cast<int64_t>(elements.size())));
    if (array.IsNil())
        throw UsageError("no array has elements of code " + std::to_string(elementCode));
    for (size_t i = 0; i < elements.size(); ++i)
        ArrayIn(array).Write(static_cast<int64_t>(i), elements[i]);
    return array;
}

int64_t Host::ArrayCount(const Value &array) const
{
    return ArrayIn(array).Count();
}

Value Host::ArrayElement(const Value &array, int64_t index) const
{
    Value element;
    if (!ArrayIn(array).Read(index, element))
        ThrowOutside("the array", index);
    return element;
}

void Host::ArraySet(const Value &array, int64_t index, const Value &element)
{
    if (!ArrayIn(array).Write(index, element))
        ThrowOutside("the array", index);
}

void Host::ArrayResize(const Value &array, int64_t count)
{
    ArrayIn(array).Resize(count);
}

} // namespace qzlhost
