#pragma once

#include <functional>
#include <string_view>

namespace [[gnu::visibility("default")]] Trace {

/// One trace record, as a sink sees it. The views are valid only during the call.
struct Record {
    std::string_view handle; ///< name of the handle that it belongs to
    unsigned level;
    char const * file; ///< as passed to the compiler, with directories
    int line;
    char const * function;
    std::string_view text; ///< any bytes
};

/// Receives records. Called on the thread that wrote the record, and by several threads
/// at once if several write. Its exceptions are swallowed, since diagnostics must not
/// break the code they observe. Its own traces are dropped.
using Sink = std::function<void(Record const &)>;

/// Chooses the sink for all handles of the process; an empty one, the initial state,
/// drops all records. A record that is being delivered still goes to the previous sink.
void setSink(Sink sink);

} // namespace Trace
