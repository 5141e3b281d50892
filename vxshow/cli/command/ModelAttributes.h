#pragma once

#include "Vex/Type.h"

#include <algorithm>
#include <string>
#include <vector>

/// What the listings of the model's types and of its objects share.
namespace vxshow::cli::command {

using Attributes = std::vector<Vex::Attribute const *>;

/// Own and inherited ones, in the order of their numbers.
inline Attributes allAttributes(Vex::Type const & type) {
    Attributes all;
    for (auto const * at = &type; at; at = at->base) {
        for (auto const & attribute : at->attributes) {
            all.push_back(&attribute);
        }
    }
    std::sort(all.begin(), all.end(),
              [](auto const * a, auto const * b) { return a->number < b->number; });
    return all;
}

/// With the key of a collection in brackets; a set is a collection of bool.
inline std::string typeOf(Vex::Attribute const & attribute) {
    std::string text(attribute.type);
    if (!attribute.key.empty()) {
        text.append("[").append(attribute.key).append("]");
    }
    return text;
}

} // namespace vxshow::cli::command
