// The outcomes of works: how they are given back, and how they read.
#pragma once

#include <objc/objc.h>

#include <cstdint>
#include <string>

#include "frame/host_types.h"

/// The parts of a notification that a program reads.
struct NotificationParts {
    REALstring name = nullptr;
    REALobject object = nullptr;
    REALobject userInfo = nullptr;
};

// Each gives back the outcome's reference. Cocoa objects are autoreleased.
inline void GiveBack(id) {}
inline void GiveBack(int64_t) {}
void GiveBack(REALobject object);
void GiveBack(REALstring string);
void GiveBack(const NotificationParts &parts);

// Equal for equal outcomes only; many bytes read as their number and a checksum.
std::string TextOf(id object);
std::string TextOf(int64_t number);
std::string TextOf(REALobject object);
std::string TextOf(REALstring string);
std::string TextOf(const NotificationParts &parts);
