// The stand-in host: loads a plugin library and runs programs that use its classes.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/calls/class_definition.h"
#include "host/calls/errors.h"
#include "host/interface/library.h"
#include "host/interface/trace.h"
#include "host/language/class_record.h"
#include "host/values/value.h"

namespace qzlhost {

struct HostOptions {
    /// What REALGetRBVersion returns; without a value the host lacks that function.
    std::optional<double> version = 2024.01;
    /// Whether the host keeps accounts and a trace. Without them it is faster, but finds no leaks and few
    /// mistakes.
    bool accounts = true;
};

struct Runtime;

/// A process has one host at a time. Functions are called on the main thread unless their comment says
/// otherwise.
class Host {
public:
    explicit Host(HostOptions options = {});
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// The current host. Throws UsageError if there is none. Any thread.
    static Host &Current();

    // The library

    /// Loads the library at `path` and runs its entry point. Throws LoadError.
    void Load(const std::string &path);
    /// The resolver that a library is given. Any thread.
    void *(*Resolver() const)(const char *);
    /// What the library registered, in that order.
    const std::vector<ClassRecord> &RegisteredClasses() const;
    /// What RegisterPluginVersion was called with, if it was.
    std::optional<int32_t> DeclaredVersion() const;

    // Faults: set before Load, or at any time for functions that the library has not resolved yet

    /// The names of all host functions.
    static std::vector<std::string> Functions();
    /// The resolver lacks this function.
    void Lack(std::string_view function);
    /// The resolver lacks this function until it is asked for the nth time; 1 is the first.
    void AnswerFrom(std::string_view function, int ask);
    /// The function exists, but does nothing and returns its empty result, even if it is resolved already.
    void Fail(std::string_view function, bool fails = true);
    /// The resolver returns this function instead of the host's own.
    void Replace(std::string_view function, void *replacement);
    /// From now on the interceptor sees every call from outside the host; an empty one ends that. Called
    /// while no other thread uses the host; the interceptor runs on the calling thread.
    void Intercept(Interceptor interceptor);
    /// REALLoadGlobalMethod and REALLoadObjectMethod do not find the method.
    void LackMethod(std::string_view declaration);
    /// They return this function instead of the method.
    void ReplaceMethod(std::string_view declaration, void *replacement);
    /// How often the resolver was asked for the function.
    int AsksFor(std::string_view function) const;

    // Classes and members, as a program uses them. Calls of members throw ProgramException if the library
    // raises an exception, and UsageError if nothing fits

    void DefineClass(ClassDefinition definition);
    bool HasClass(std::string_view name) const;
    /// The instance's class.
    std::string ClassOf(const Value &instance) const;
    bool IsA(const Value &instance, std::string_view className) const;

    /// `New Class(arguments)`. A class without a matching Constructor takes no arguments. Any thread, as all
    /// calls of members.
    Value New(std::string_view className, const std::vector<Value> &arguments = {});
    /// A new instance on which no Constructor has run, as a library makes one.
    Value NewWithoutConstructor(std::string_view className);
    Value Call(const Value &instance, std::string_view method, const std::vector<Value> &arguments = {});
    /// As Call, but the look-up begins at this class: how a class calls its superclass's method.
    Value CallAs(std::string_view className, const Value &instance, std::string_view method,
                 const std::vector<Value> &arguments = {});
    Value CallShared(std::string_view className, std::string_view method,
                     const std::vector<Value> &arguments = {});
    /// Properties, computed ones included; of built-in classes too.
    Value Get(const Value &instance, std::string_view property);
    void Set(const Value &instance, std::string_view property, const Value &value);
    int64_t Constant(std::string_view className, std::string_view name) const;
    /// The address of the instance data that a library reserves.
    void *InstanceData(const Value &instance) const;

    // Built-in values

    Value NewDictionary();
    Value DictionaryGet(const Value &dictionary, const Value &key) const; // Nil where absent
    void DictionarySet(const Value &dictionary, const Value &key, const Value &value);
    Value DictionaryKey(const Value &dictionary, int64_t index) const;
    int64_t DictionaryCount(const Value &dictionary) const;
    Value NewDate(int64_t year, int64_t month, int64_t day, int64_t hour, int64_t minute, int64_t second);
    Value NewMemoryBlock(std::string_view bytes);
    std::string MemoryBlockBytes(const Value &block) const;
    Value NewFolderItem(const std::string &path);
    std::string FolderItemPath(const Value &item) const;
    /// An array of elements of this code (code::Int64, code::String, ...).
    Value NewArray(int64_t elementCode, const std::vector<Value> &elements = {});
    int64_t ArrayCount(const Value &array) const;
    Value ArrayElement(const Value &array, int64_t index) const;
    void ArraySet(const Value &array, int64_t index, const Value &element);
    void ArrayResize(const Value &array, int64_t count);

    // Accounts

    /// Calls of host functions since the last ClearTrace. Any thread.
    std::vector<TraceEntry> Trace() const;
    void ClearTrace();
    int CallsOf(std::string_view function) const;
    /// How many references an object, string or text has.
    int64_t References(const Value &value) const;
    /// Every instance, string and text that has more references than the program's Values and the host hold:
    /// class, serial number, references, and what made it.
    std::vector<std::string> Leaks() const;
    /// Misuse so far: a reference given back that was not held, a dead or foreign pointer passed in, a null
    /// where none is allowed, a wrong kind of object, a bad class record.
    std::vector<std::string> Mistakes() const;

    // Running

    /// Runs the main thread's run loop until `done` or for at most `seconds`. Returns whether it was done.
    /// Throws ProgramException for an exception that an event raised meanwhile and no program caught.
    bool RunUntil(const std::function<bool()> &done, double seconds);
    /// Takes an exception that was raised on this thread and that no call has thrown, such as a destructor's;
    /// Nil if there is none. The next call records a mistake for one that nobody takes. Any thread.
    Value TakeException();

private:
    std::unique_ptr<Runtime> runtime_;
};

/// Releases Cocoa objects that were autoreleased on this thread while it lives.
class AutoreleasePool {
public:
    AutoreleasePool();
    ~AutoreleasePool();
    AutoreleasePool(const AutoreleasePool &) = delete;
    AutoreleasePool &operator=(const AutoreleasePool &) = delete;

private:
    void *pool_;
};

} // namespace qzlhost
