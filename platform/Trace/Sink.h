#pragma once

#include <functional>
#include <string_view>

namespace [[gnu::visibility("default")]] Trace {

/// One trace record, as a sink sees it. The views are valid during the call only.
struct Record {
    std::string_view handle; ///< name of the handle that it was written to
    unsigned level;
    char const * file; ///< as the compiler knows it, with directories
    int line;
    char const * function;
    std::string_view text; ///< any bytes
};

/// Where records go. Called on the thread that wrote the record, and by several threads
/// at once if several write. What it throws is swallowed: a diagnosis must not break what
/// it observes. What it traces itself is dropped.
using Sink = std::function<void(Record const &)>;

/// Chooses the sink for all handles of the process; an empty one, as at the start, drops
/// all records. A record that is being delivered still goes to the sink before.
void setSink(Sink sink);

} // namespace Trace
