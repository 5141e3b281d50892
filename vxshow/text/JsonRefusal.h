#pragma once

#include "vxshow/text/Json.h"
#include "vxshow/text/JsonPlace.h"

#include <string>
#include <string_view>

/// What is wrong with a document, as one line of printable ASCII for whoever wrote it:
/// `LINE:COLUMN: MEMBERS: found WHAT, expected WHAT`. What kind of document it is, and where it
/// came from, is for the caller to put before that.
namespace vxshow::text {

/// The line for content that is JSON but not what is wanted there.
std::string refusalLine(Refusal const & refusal, std::string_view document,
                        JsonRoot root = JsonRoot::object);

/// The line for content that is no JSON.
std::string refusalLine(MalformedJson const & malformed, std::string_view document,
                        JsonRoot root = JsonRoot::object);

} // namespace vxshow::text
