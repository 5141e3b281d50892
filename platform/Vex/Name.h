#pragma once

#include "Vex/KeyedHash.h"
#include "Vex/String.h"

#include <compare>
#include <functional>

namespace [[gnu::visibility("default")]] Vex {

/// The name of a switch, a source or a directory entry: any bytes, compared and ordered
/// byte by byte. A type of its own, so that a name cannot be mistaken for other text.
class Name {
public:
    Name() = default;

    Name(char const * text) : text_(text) {}

    Name(String text) : text_(std::move(text)) {}

    Name(std::string text) : text_(std::move(text)) {}

    explicit Name(std::string_view text) : text_(text) {}

    String const & stringValue() const noexcept { return text_; }

    operator std::string_view() const noexcept { return text_; }

    bool empty() const noexcept { return text_.empty(); }

    friend bool operator==(Name const & a, Name const & b) noexcept { return a.view() == b.view(); }

    friend std::strong_ordering operator<=>(Name const & a, Name const & b) noexcept {
        return a.view() <=> b.view();
    }

    /// Compares with text without making a `Name` first.
    friend bool operator==(Name const & a, std::string_view b) noexcept { return a.view() == b; }

    friend bool operator==(Name const & a, char const * b) noexcept { return a.view() == b; }

private:
    std::string_view view() const noexcept { return text_; }

    String text_;
};

} // namespace Vex

template <>
struct std::hash<Vex::Name> {
    std::size_t operator()(Vex::Name const & name) const noexcept {
        return Vex::keyedHash(std::string_view(name));
    }
};
