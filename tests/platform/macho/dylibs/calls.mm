// Calls of functions that code for macOS calls in its own way: with variable arguments, and with objects that
// destructors return.
#import <Foundation/Foundation.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>

@protocol Narrow
- (signed char)charValue;
- (unsigned char)unsignedCharValue;
- (short)shortValue;
- (unsigned short)unsignedShortValue;
- (int)intValue;
@end

#pragma GCC visibility push(default)
extern "C" {

int formatMany(char *buffer, size_t size)
{
    return snprintf(buffer, size, "%d %s %.2f %ld %c %.1f %lld %u %.3f %x %s %.1f", 1, "two", 3.25, 4L, '5',
                    6.5, 7LL, 8U, 9.125, 10, "eleven", 12.5);
}
int formatNumbers(char *buffer, size_t size)
{
    return snprintf(buffer, size, "%.1f %.1f %.1f %.1f %.1f %.1f %.1f %.1f %.1f %.1f", 1.5, 2.5, 3.5, 4.5,
                    5.5, 6.5, 7.5, 8.5, 9.5, 10.5);
}
int formatNothing(char *buffer, size_t size)
{
    return snprintf(buffer, size, "%%");
}
int formatChecked(char *buffer, size_t size, size_t room)
{
    return __builtin___snprintf_chk(buffer, size, 0, room, "%d %s %.2f", 1, "two", 3.25);
}
int formatCheckedUnbounded(char *buffer, size_t room)
{
    return __builtin___sprintf_chk(buffer, 0, room, "%d %s %.2f", 1, "two", 3.25);
}

// Each trusts that the result fills a register, as code for arm64 does.
int64_t widenChar(signed char (*function)(int64_t), int64_t value)
{
    return function(value);
}
int64_t widenUnsignedChar(unsigned char (*function)(int64_t), int64_t value)
{
    return function(value);
}
int64_t widenShort(short (*function)(int64_t), int64_t value)
{
    return function(value);
}
int64_t widenUnsignedShort(unsigned short (*function)(int64_t), int64_t value)
{
    return function(value);
}
int64_t charOf(id<Narrow> number)
{
    return [number charValue];
}
int64_t unsignedCharOf(id<Narrow> number)
{
    return [number unsignedCharValue];
}
int64_t shortOf(id<Narrow> number)
{
    return [number shortValue];
}
int64_t unsignedShortOf(id<Narrow> number)
{
    return [number unsignedShortValue];
}
int64_t intOf(id<Narrow> number)
{
    return [number intValue];
}

void logMany()
{
    NSLog(@"%d %s %.2f %@ %ld", 1, "two", 3.25, @"four", 5L);
}
}
#pragma GCC visibility pop

namespace {

/// A class whose destructor ends in the one of its base.
template <typename Base>
struct Derived : Base {
    ~Derived() override;
};
template <typename Base>
Derived<Base>::~Derived() = default;

/// Destroys the object in this memory. The compiler may take the memory's address from what the destructor
/// returns.
template <typename Type>
void *Destroy(void *memory)
{
    static_cast<Type *>(memory)->Type::~Type();
    return memory;
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

void *makeBadAlloc(void *memory)
{
    return new (memory) std::bad_alloc;
}
void *destroyBadAlloc(void *memory)
{
    return Destroy<std::bad_alloc>(memory);
}
void *destroyLogicError(void *memory)
{
    return Destroy<Derived<std::logic_error>>(memory);
}
void *destroyRuntimeError(void *memory)
{
    return Destroy<Derived<std::runtime_error>>(memory);
}
void *destroyException(void *memory)
{
    return Destroy<Derived<std::exception>>(memory);
}
}
#pragma GCC visibility pop
