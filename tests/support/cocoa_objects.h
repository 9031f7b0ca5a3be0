// Counts the Cocoa objects that live, by class.
#pragma once

#include <string>

/// Starts counting. Objects made before do not count.
void CountCocoaObjects();

/// How many objects of exactly this class live now, of those made since the counting began.
int LiveCocoaObjects(const std::string &className);
