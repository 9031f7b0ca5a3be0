// Cocoa dictionaries become host Dictionaries.
#pragma once

#include "bridge/to_host/conversion_subject.h"
#include "frame/host_types.h"

@class NSDictionary;

/// A new host Dictionary with every entry of the Cocoa dictionary, with one reference for the caller; null
/// for nil, for one that encloses itself, and if the host makes none. Called on the host's thread. Cocoa
/// exceptions pass.
REALdictionary NSDictionaryRB(NSDictionary *dictionary, const EnclosingContainers *enclosing = nullptr);

/// The same for the subject of a step, as an instance.
REALobject NewDictionaryOfEntries(const ConversionSubject &subject);
