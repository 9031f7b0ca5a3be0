// The record of calls of host functions, and who may watch them.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace qzlhost {

struct TraceEntry {
    /// The host function's name.
    std::string function;
    /// Its arguments, readable: classes and serial numbers of instances, texts of strings and names.
    std::string arguments;
};

enum class CallMoment {
    /// The arguments are acceptable; the function has done nothing yet.
    Begins,
    /// A function without a result has done its work.
    Ends,
};

/// Sees a call of a host function. At the beginning it returns whether the call goes on; if not, the function
/// does nothing and returns its empty result. The function throws what the interceptor throws.
using Interceptor = std::function<bool(const char *function, CallMoment moment)>;

/// The record of calls. Any thread.
class Trace {
public:
    void Add(const char *function, std::string arguments);
    std::vector<TraceEntry> All() const;
    void Clear();
    int CallsOf(std::string_view function) const;

private:
    mutable std::mutex mutex_;
    std::vector<TraceEntry> all_;
};

} // namespace qzlhost
