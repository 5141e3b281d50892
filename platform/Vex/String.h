#pragma once

#include "Vex/KeyedHash.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// The framework's text type: bytes, in no particular encoding, ordered byte by byte.
///
/// It is a standard string that also names the iterator from which string forms are
/// read, so everything that takes a `std::string` or a `std::string_view` takes it.
class String : public std::string {
public:
    using IteratorConst = const_iterator;

    using std::string::string;
    String() = default;

    String(std::string text) : std::string(std::move(text)) {}

    explicit String(std::string_view text) : std::string(text) {}
};

} // namespace Vex

template <>
struct std::hash<Vex::String> {
    std::size_t operator()(Vex::String const & text) const noexcept {
        return Vex::keyedHash(std::string_view(text));
    }
};
