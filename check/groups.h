// The groups of checks.
#pragma once

#include "check/lines.h"

/// The first check, which is the only one if the library cannot be loaded.
inline NSString *const kLoaded = @"The library is loaded";
inline NSString *const kFiveClasses = @"5 classes";

void CheckLibrary();
void CheckCenters();
void CheckValues();
void CheckFiles();
void CheckWrappers();
void CheckExceptions();
void CheckProcesses();
void CheckThreads();
void RecordNotificationFacts();
void RecordValueFacts();
