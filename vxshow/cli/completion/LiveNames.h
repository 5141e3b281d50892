#pragma once

#include "vxshow/cli/StateOptions.h"

#include <string>
#include <vector>

namespace vxshow::cli::completion {

/// The names that the filter `option` can have in the live sources that `options` name. They come
/// from a file (`NamesCache`). Unless those are fresh, a process of its own begins to read the
/// sources; this one waits for it for at most 150 ms, and gives what is known then: the new names,
/// or those from before.
///
/// The sources are read at most once in 10 seconds, whether that succeeds or not, and by one
/// process at a time. A reading ends after 10 seconds. It has no terminal, no standard streams and
/// no other descriptors of this process, so it can ask the user for nothing. Without a folder for
/// the file nothing is read, and there are no names. This process must have one thread.
std::vector<std::string> liveNames(std::string const & option, StateOptions const & options);

} // namespace vxshow::cli::completion
