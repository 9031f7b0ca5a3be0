// Loading the library into a process that has Cocoa already, and the registration of its classes.
#include "bench/work.h"

void AddLoadWorks(std::vector<Work> &works)
{
    works.push_back({"loading", nullptr, 0, Quantity::FreshProcess, "library without classes"});
}
