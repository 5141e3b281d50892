#pragma once

#include "vxshow/text/Json.h"
#include "vxshow/text/JsonPlace.h"

#include <string>
#include <string_view>

/// What is wrong with a document, as one line of printable ASCII for its author:
/// `LINE:COLUMN: MEMBERS: found WHAT, expected WHAT`. The caller adds in front what kind of
/// document it is and where it came from. Finding the place takes many times as long as reading the
/// document: see `EachToken`.
namespace vxshow::text {

/// The line for content that is JSON but not what is expected there.
std::string refusalLine(Refusal const & refusal, std::string_view document,
                        JsonRoot root = JsonRoot::object, EachToken const & eachToken = {});

/// The line for content that is not JSON.
std::string refusalLine(MalformedJson const & malformed, std::string_view document,
                        JsonRoot root = JsonRoot::object, EachToken const & eachToken = {});

} // namespace vxshow::text
