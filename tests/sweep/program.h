// A host program that covers the whole library: every class and member, each value both ways, delivery on two
// threads.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/host.h"

class Family;

/// The outcome of one step of the program.
struct Outcome {
    std::string step;
    /// The step's result as text, or one of the endings below with its details.
    std::string result;
};

inline constexpr char kHostException[] = "host exception ";
inline constexpr char kStandardException[] = "std::bad_alloc";
inline constexpr char kOtherException[] = "int";
/// A member was called on an instance that the host did not make.
inline constexpr char kNoInstance[] = "no instance";
/// A Cocoa exception left the library.
inline constexpr char kCocoaException[] = "Cocoa exception";

/// Whether this thread is in a call of the library, not in the program's own work.
bool InLibrary();

/// While it lives, this thread is in a call of the library, or in the program's own work inside one.
class LibraryCall {
public:
    explicit LibraryCall(bool in = true);
    ~LibraryCall();
    LibraryCall(const LibraryCall &) = delete;
    LibraryCall &operator=(const LibraryCall &) = delete;

private:
    bool outer_;
};

/// Runs `body` and returns its result, or how it ended.
std::string ResultOf(const std::function<std::string()> &body);

/// The program. Its steps are independent of each other and leave nothing behind.
class SweptProgram {
public:
    /// Defines the classes in the host and the family that the program needs.
    SweptProgram(qzlhost::Host &host, Family &family);

    /// Runs all steps. Main thread.
    std::vector<Outcome> Run();

private:
    struct Step {
        std::string name;
        std::function<std::string()> body;
    };

    void AddStep(std::string name, std::function<std::string()> body);
    void AddMembers();
    void AddValuesToCocoa();
    void AddValuesToHost();
    void AddDelivery();

    // Calls of the library's members
    qzlhost::Value New(const char *className, const std::vector<qzlhost::Value> &arguments = {});
    qzlhost::Value Call(const qzlhost::Value &self, const char *member,
                        const std::vector<qzlhost::Value> &arguments = {});
    qzlhost::Value CallShared(const char *className, const char *member,
                              const std::vector<qzlhost::Value> &arguments = {});
    qzlhost::Value Get(const qzlhost::Value &self, const char *property);
    std::string Shown(const qzlhost::Value &value);
    /// A new notification with this object and user info.
    qzlhost::Value Notification(const qzlhost::Value &object = {}, const qzlhost::Value &info = {});
    void Heard(const qzlhost::Value &notification);

    qzlhost::Host &host_;
    std::vector<Step> steps_;
    /// The outcomes of the steps that ran inside another, such as the handler's.
    std::vector<Outcome> inner_;
};
