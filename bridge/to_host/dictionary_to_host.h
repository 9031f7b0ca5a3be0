// Cocoa dictionaries become host Dictionaries.
#pragma once

#include "bridge/to_host/conversion_subject.h"
#include "frame/host_types.h"

@class NSDictionary;

/// A new host Dictionary with every entry of the Cocoa dictionary, with one reference for the caller; null
/// for nil, for one that encloses itself, and where the host makes none. Called on the thread on which the
/// host called in. Cocoa exceptions pass.
REALdictionary NSDictionaryRB(NSDictionary *dictionary, const EnclosingContainers *enclosing = nullptr);

/// The step's form of it: the host Dictionary as an instance.
REALobject NewDictionaryOfEntries(const ConversionSubject &subject);
