#pragma once

#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vxshow::state {

/// The result of reading the state once.
struct Reading {
    Mount mount;
    /// Whether it shows every source as it is now.
    bool complete = true;
    /// Remarks on the sources: one line each, in printable ASCII.
    std::vector<std::string> remarks = {};
};

/// There is nothing to show. The message has one line of printable ASCII for each reason.
class StateError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Whether a source that fails is shown with its last answer. Only a state that is read several
/// times has a last answer to keep.
enum class Keep : bool { nothing, lastGood };

/// How far reading the state has got.
struct Progress {
    std::size_t done = 0; ///< sources that have answered or failed
    std::size_t sources = 0;
    std::size_t rows = 0; ///< entries in the answers
};

/// Called from time to time while live sources are read, on the thread that reads the state.
using WatchProgress = std::function<void(Progress const &)>;

/// Reads the state as it is at the time of the call: at least what is selected. Raises
/// `StateError`.
using StateReader = std::function<Reading(Selection const &, WatchProgress const &)>;

} // namespace vxshow::state
