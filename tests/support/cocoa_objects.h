// Counts the live Cocoa objects of a class.
#pragma once

#include <string>

/// Starts counting. Objects made earlier do not count.
void CountCocoaObjects();

/// The live objects of exactly this class that were made since the counting began.
int LiveCocoaObjects(const std::string &className);
