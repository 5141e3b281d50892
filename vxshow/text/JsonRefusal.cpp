#include "vxshow/text/JsonRefusal.h"

#include "vxshow/text/Quoting.h"

namespace vxshow::text {

namespace {

std::string line(Place const & place, std::string const & found, std::string const & expected) {
    auto line = std::to_string(place.line) + ":" + std::to_string(place.column) + ": ";
    if (!place.members.empty()) {
        line.append(place.members).append(": ");
    }
    return line.append("found ").append(found).append(", expected ").append(expected);
}

} // namespace

std::string refusalLine(Refusal const & refusal, std::string_view document, JsonRoot root,
                        EachToken const & eachToken) {
    auto const position = static_cast<std::size_t>(refusal.at - document.data());
    auto const found = shownToken(document, position).append(refusal.about);
    return line(placeOf(document, position, root, eachToken), found, refusal.expected);
}

std::string refusalLine(MalformedJson const & malformed, std::string_view document, JsonRoot root,
                        EachToken const & eachToken) {
    if (auto const error = firstSyntaxError(document, root, eachToken)) {
        return line(placeOf(document, error->position, root, eachToken), error->found,
                    error->expected);
    }
    return std::string(" ").append(simdjson::error_message(malformed.error));
}

} // namespace vxshow::text
