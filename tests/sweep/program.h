// A host program that visits the whole library: every class and member, each value both ways, delivery on two
// threads.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/host.h"

class Family;

/// What one step of the program came to.
struct Outcome {
    std::string step;
    /// What the step gave, readable, or how it ended: one of the endings below with what came.
    std::string result;
};

inline constexpr char kHostException[] = "host exception ";
inline constexpr char kStandardException[] = "std::bad_alloc";
inline constexpr char kOtherException[] = "int";
/// A member of what the host did not make.
inline constexpr char kNoInstance[] = "no instance";
/// An exception of Cocoa's came out of the library.
inline constexpr char kCocoaException[] = "Cocoa exception";

/// Whether a call into the library runs on this thread, as opposed to the program's own work.
bool InLibrary();

/// Marks such a call while it lives, or the program's own work inside of one.
class LibraryCall {
public:
    explicit LibraryCall(bool in = true);
    ~LibraryCall();
    LibraryCall(const LibraryCall &) = delete;
    LibraryCall &operator=(const LibraryCall &) = delete;

private:
    bool outer_;
};

/// Runs `body` and returns what it gave, or how it ended.
std::string ResultOf(const std::function<std::string()> &body);

/// The steps of the program. Each is independent of the others and leaves nothing behind.
class SweptProgram {
public:
    /// Adds what the program needs to the host and the family.
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

    // Members, called as the library's
    qzlhost::Value New(const char *className, const std::vector<qzlhost::Value> &arguments = {});
    qzlhost::Value Call(const qzlhost::Value &self, const char *member,
                        const std::vector<qzlhost::Value> &arguments = {});
    qzlhost::Value CallShared(const char *className, const char *member,
                              const std::vector<qzlhost::Value> &arguments = {});
    qzlhost::Value Get(const qzlhost::Value &self, const char *property);
    std::string Shown(const qzlhost::Value &value);
    /// A notification of these.
    qzlhost::Value Notification(const qzlhost::Value &object = {}, const qzlhost::Value &info = {});
    void Heard(const qzlhost::Value &notification);

    qzlhost::Host &host_;
    std::vector<Step> steps_;
    /// What steps that run inside of others came to, as the handler's.
    std::vector<Outcome> inner_;
};
