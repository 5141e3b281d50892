#pragma once

#include "outfmt/TextValue.h"

#include <cstddef>
#include <string_view>

namespace VxlanController::Cli {

/// The text of an address or another value of bounded length, without allocating a string. For
/// the keys of JSON dictionaries, which the printer takes as text.
template <outfmt::TextValue Value>
class ValueText {
public:
    explicit ValueText(Value const & value) noexcept
        : length_(static_cast<std::size_t>(value.writeTo(text_) - text_)) {}

    /// Valid for the lifetime of this object.
    std::string_view view() const noexcept { return {text_, length_}; }

private:
    char text_[Value::maxTextLength];
    std::size_t length_;
};

} // namespace VxlanController::Cli
