#pragma once

#include "Vex/AllocTrack.h"
#include "models/Fleet.h"

/// Helpers shared by the tests of the generated types.
namespace Test::Fleet {

/// The keys of a collection in iteration order, each followed by a blank.
template <class Collection, class Text>
std::string keysOf(Collection const & collection, Text text) {
    std::string keys;
    for (auto at = collection.begin(); at; ++at) {
        keys += text(at.key()) + " ";
    }
    return keys;
}

template <class Collection>
std::string keysOf(Collection const & collection) {
    return keysOf(collection, [](auto const & key) -> std::string {
        if constexpr (requires { std::to_string(key); }) {
            return std::to_string(key);
        } else {
            return std::string(std::string_view(key));
        }
    });
}

} // namespace Test::Fleet
