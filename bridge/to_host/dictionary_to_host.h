// Cocoa dictionaries become host Dictionaries.
#pragma once

#include "frame/host_types.h"

@class NSDictionary;

/// A new host Dictionary with every entry of the Cocoa dictionary, with one reference for the caller; null
/// for nil and where the host makes none. Called on the thread on which the host called in. Cocoa exceptions
/// pass.
REALdictionary NSDictionaryRB(NSDictionary *dictionary);
