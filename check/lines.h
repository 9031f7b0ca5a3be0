// The lines of the output, as the process that runs a group of checks writes them for the one that prints
// them.
#pragma once

#import <Foundation/Foundation.h>

#include "check/text.h"

/// Runs a group of checks, without the bodies of its first `skipped` lines. SIGALRM ends a process that takes
/// too long.
void RunGroup(void (*run)(), int skipped);

constexpr unsigned kSecondsOfGroup = 120;
constexpr int kTookTooLong = 14;

/// A check holds if the body returns the expected text. The result of a fact is only recorded, beside what
/// the port answers on Linux; null if that is different from run to run. Both are called by a group's `run`.
template <typename Body>
void Check(NSString *what, NSString *expected, Body body);
template <typename Body>
void Fact(NSString *what, NSString *onLinux, Body body);

/// The lines that a group's process wrote: dictionaries with "kind" ("check" or "fact"), "what", "expected"
/// and "came". The last one has no "came" if the process ended within it. Everything else that it wrote, its
/// log, is added to `log`.
NSArray *ReadLines(NSData *written, NSMutableArray *log);

// What the two templates are made of.
bool BeginLine(NSString *kind, NSString *what, NSString *expected);
void EndLine(NSString *came);

template <typename Body>
void Check(NSString *what, NSString *expected, Body body)
{
    if (BeginLine(@"check", what, expected))
        EndLine(ResultOf(body));
}

template <typename Body>
void Fact(NSString *what, NSString *onLinux, Body body)
{
    if (BeginLine(@"fact", what, onLinux == nil ? @"" : onLinux))
        EndLine(ResultOf(body));
}
