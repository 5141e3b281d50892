#pragma once

#include "vxshow/cli/StateOptions.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vxshow::state {

/// One reading of the state.
struct Reading {
    Mount mount;
    /// Whether every source is in it as it is now.
    bool complete = true;
    /// What there is to say of the sources: a line each, in printable ASCII.
    std::vector<std::string> remarks = {};
};

/// There is nothing to show. Its text is one line of printable ASCII for each reason.
class StateError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Whether a source that fails is shown as it was when it was last read. Only what is shown
/// again and again has something to keep.
enum class Keep : bool { nothing, lastGood };

/// What reads the state, as it is at the time of the call, each time that it is called; it
/// raises `StateError`. A fabric file is read when this is called, and `StateError` raised for
/// one that cannot be.
std::function<Reading(Selection const &)> stateReader(cli::StateOptions const & options, Keep keep);

} // namespace vxshow::state
