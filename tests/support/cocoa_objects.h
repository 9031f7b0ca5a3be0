// Counts the live Cocoa objects of a class.
#pragma once

#include <string>

/// Starts counting. Objects made earlier do not count.
void CountCocoaObjects();

/// Lets a file operation fail. Foundation keeps each thread's last error of one, with a dictionary, and has
/// one now and then: when another process locks the user's defaults.
void MakeLastFileError();

/// The live objects of exactly this class that were made since the counting began.
int LiveCocoaObjects(const std::string &className);
