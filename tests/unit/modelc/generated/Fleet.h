#pragma once

#include "Vex/AllocTrack.h"
#include "models/Fleet.h"

/// What the tests of the generated types share.
namespace Test::Fleet {

/// The keys of a collection in the order in which it is walked, with a blank behind each.
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
