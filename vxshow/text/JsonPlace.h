#pragma once

#include "vxshow/text/JsonTokens.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Where in a document something is wrong, worked out from its bytes when it is.
///
/// The reader of a document notes nothing but positions: lines, columns and the way through
/// the members cost time and memory per value, and are wanted once, in an error message.
/// Then the document is gone through again from its start, slowly.
namespace vxshow::text {

/// A position in a document, in the terms of its author.
struct Place {
    std::size_t line;   ///< from 1
    std::size_t column; ///< from 1, in bytes
    /// The members and list positions from the root to the value that is at the position or
    /// around it, such as `received.switches.leaf1."10"`. At the name of a member it is the
    /// object's; at the root it is empty.
    std::string members;
};

/// What a whole document is to be.
enum class JsonRoot { object, array };

/// The place of the token that is at `position` or around it, in a document that is JSON up to
/// there.
Place placeOf(std::string_view document, std::size_t position, JsonRoot root = JsonRoot::object);

/// The first place at which `document` is not one JSON value of the kind `root` and nothing
/// else, or is nested far deeper than anything that is read here.
std::optional<SyntaxError> firstSyntaxError(std::string_view document,
                                            JsonRoot root = JsonRoot::object);

} // namespace vxshow::text
