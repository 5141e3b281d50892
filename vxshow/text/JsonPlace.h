#pragma once

#include "vxshow/text/JsonTokens.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Finds where a document is wrong, from its bytes.
///
/// The reader of a document keeps only positions: tracking lines, columns and paths would cost time
/// and memory for every value, and they are needed only once, in an error message. Only then is the
/// document scanned again from its start, slowly.
namespace vxshow::text {

/// A position in a document, in terms that its author knows.
struct Place {
    std::size_t line;   ///< from 1
    std::size_t column; ///< from 1, in bytes
    /// The path of member names and list indexes from the root to the value at or around the
    /// position, such as `received.switches.leaf1."10"`. At the name of a member it is the path of
    /// the object; at the root it is empty.
    std::string members;
};

/// What a document must be as a whole.
enum class JsonRoot { object, array };

/// Called at each token that is scanned. What it throws ends the scan: a caller with a deadline
/// looks at the clock there.
using EachToken = std::function<void()>;

/// The place of the token at or around `position`. Up to there, the document must be JSON.
Place placeOf(std::string_view document, std::size_t position, JsonRoot root = JsonRoot::object,
              EachToken const & eachToken = {});

/// The first place where `document` is not exactly one JSON value of the kind `root`, or is nested
/// far deeper than anything that is read here; nullopt if there is none.
std::optional<SyntaxError> firstSyntaxError(std::string_view document,
                                            JsonRoot root = JsonRoot::object,
                                            EachToken const & eachToken = {});

} // namespace vxshow::text
