// The classes of a library, for people and for programs to read.
#pragma once

#include <string>
#include <vector>

#include "host/language/class_record.h"

namespace qzlhost {

/// A paragraph for each class: its properties, then a row for each member, then the faults.
std::string DescribeAsTable(const std::vector<ClassRecord> &classes);

/// An array with an object for each class, indented by 2 blanks. Bytes that are not UTF-8 become U+FFFD.
std::string DescribeAsJson(const std::vector<ClassRecord> &classes);

} // namespace qzlhost
