// The stand-in host: loads a plugin library and runs programs that use its classes.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/language/class_record.h"
#include "host/values/value.h"

namespace qzlhost {

/// A library that cannot be loaded, or has no entry point.
class LoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A member or class that does not exist, or arguments that no overload takes.
class UsageError : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// A host exception that reached the program.
class ProgramException : public std::runtime_error {
public:
    explicit ProgramException(Value exception);
    /// The instance of the exception class.
    const Value &Exception() const { return exception_; }
    const std::string &ClassName() const { return className_; }
    /// The property Message, UTF-8; empty for the empty string.
    const std::string &Message() const { return message_; }
    int64_t ErrorNumber() const { return errorNumber_; }

private:
    Value exception_;
    std::string className_;
    std::string message_;
    int64_t errorNumber_ = 0;
};

/// A member that a class of a program or of the host itself implements.
struct Method {
    /// In the host's language.
    std::string declaration;
    std::function<Value(const Value &self, const std::vector<Value> &arguments)> body;
};

/// A class that is not the library's: a program's, derived from any class, or one that stands in for
/// another library's, with instance data of its own.
struct ClassDefinition {
    std::string name;
    std::string super;
    uint64_t dataSize = 0;
    /// Called with the new instance; its data lie 48 bytes after the pointer.
    std::function<void(Instance *)> constructor = nullptr;
    std::function<void(Instance *)> destructor = nullptr;
    std::vector<Method> methods = {};
    /// Implementations of events that a superclass declares, by the event's name in `declaration`.
    std::vector<Method> events = {};
};

struct HostOptions {
    /// What REALGetRBVersion answers; without a value the host lacks that function.
    std::optional<double> version = 2024.01;
    /// Without accounts and trace the host is faster, and knows no leaks and few mistakes.
    bool accounts = true;
};

struct TraceEntry {
    /// The host function's name.
    std::string function;
    /// Its arguments, readable: classes and serial numbers of instances, texts of strings and names.
    std::string arguments;
};

enum class CallMoment {
    /// The arguments are good; the function has done nothing yet.
    Begins,
    /// A function without a result has done its work.
    Ends,
};

/// Looks on at a call of a host function. At its beginning it answers whether the call goes on: one that does
/// not does nothing and answers its empty result. What it throws is what the function throws.
using Interceptor = std::function<bool(const char *function, CallMoment moment)>;

/// One host in a process at a time. Functions are called on the main thread unless their comment says
/// otherwise.
class Host {
public:
    explicit Host(HostOptions options = {});
    ~Host();
    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    /// The host that lives now. Any thread.
    static Host &Current();

    // The library

    /// Loads the library at `path` and runs its entry point. Throws LoadError.
    void Load(const std::string &path);
    /// The resolver that a library is given. Any thread.
    void *(*Resolver() const)(const char *);
    /// The classes that the library registered, in that order.
    const std::vector<ClassRecord> &RegisteredClasses() const;
    /// What RegisterPluginVersion was called with, if it was.
    std::optional<int32_t> DeclaredVersion() const;

    // Faults: set before Load, or at any time for functions that the library has not resolved yet

    /// The names of all host functions.
    static std::vector<std::string> Functions();
    /// The resolver does not know this function.
    void Lack(std::string_view function);
    /// The resolver knows this function from the nth ask on (the first ask is 1).
    void AnswerFrom(std::string_view function, int ask);
    /// The function is there, but does nothing and answers its empty result. Also after it was resolved.
    void Fail(std::string_view function, bool fails = true);
    /// The resolver gives this function instead of the host's own.
    void Replace(std::string_view function, void *replacement);
    /// Looks on at all calls that come from outside the host, from now on; empty for none. Called while no
    /// other thread uses the host; the interceptor runs on the calling thread.
    void Intercept(Interceptor interceptor);
    /// A global method or a built-in class's method that REALLoadGlobalMethod or REALLoadObjectMethod does
    /// not find.
    void LackMethod(std::string_view declaration);
    /// Such a method is given as this function.
    void ReplaceMethod(std::string_view declaration, void *replacement);
    /// How often the resolver was asked for the function.
    int AsksFor(std::string_view function) const;

    // Classes and members, as a program uses them

    void DefineClass(ClassDefinition definition);
    bool HasClass(std::string_view name) const;
    /// The instance's class.
    std::string ClassOf(const Value &instance) const;
    bool IsA(const Value &instance, std::string_view className) const;

    /// `New Class(arguments)`. A class without a matching Constructor takes no arguments.
    /// Members throw ProgramException where the library raised one, UsageError where nothing fits. Any
    /// thread.
    Value New(std::string_view className, const std::vector<Value> &arguments = {});
    /// A new instance on which no Constructor has run, as a library of the family makes its wrappers.
    Value NewWithoutConstructor(std::string_view className);
    Value Call(const Value &instance, std::string_view method, const std::vector<Value> &arguments = {});
    /// As Call, but looked up from this class of the instance on: how a class calls its superclass's method.
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

    // Cocoa objects that another library of the family would hand to a program

    /// The handle of the workspace's notification centre, with a retain for the wrapper that it is put into.
    static int64_t WorkspaceCenterHandle();

    // Accounts

    /// Calls of host functions since the last ClearTrace. Any thread.
    std::vector<TraceEntry> Trace() const;
    void ClearTrace();
    int CallsOf(std::string_view function) const;
    /// References that an object has now.
    int64_t References(const Value &value) const;
    /// Every instance, string, text and array that lives although nobody in the program or the host holds it,
    /// and every one that has more references than holders: class, serial number, references, and what made
    /// it. References that live Values hold are accounted for.
    std::vector<std::string> Leaks() const;
    /// Misuse so far: a reference given back that was not held, a dead or foreign pointer passed in, a null
    /// where none is allowed, a wrong kind of object, a bad class record.
    std::vector<std::string> Mistakes() const;

    // Running

    /// Runs the main thread's run loop until `done` or for at most `seconds`. Answers whether it was done.
    /// Throws ProgramException for an exception that an event raised meanwhile and no program caught.
    bool RunUntil(const std::function<bool()> &done, double seconds);
    /// Ends the record of an exception on this thread that no call has thrown, as a destructor's; Nil where
    /// there is none. Such an exception that nobody takes becomes a mistake with the next call. Any thread.
    Value TakeException();

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

/// Cocoa objects autoreleased while this lives are released at its end. One per thread and scope.
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
