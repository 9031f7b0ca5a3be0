// Calls through which exceptions travel between a test and its dylib.
#pragma once

/// Something that the other side calls, and that may throw.
struct Callback {
    void (*function)(void *context);
    void *context;

    void operator()() const { function(context); }
};

/// What ended a try block.
enum class Outcome { Nothing, OwnClass, Exception, AnyObject, Anything, OwnType, StandardException };

/// Thrown in C++ with a value.
struct Thrown {
    int value;
};

/// Counts itself while it lives.
struct Counted {
    explicit Counted(int *living) : count(living) { ++*count; }
    ~Counted() { --*count; }
    Counted(const Counted &) = delete;
    Counted &operator=(const Counted &) = delete;

    int *count;
};
