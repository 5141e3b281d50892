#pragma once

#include "vxshow/mount/Json.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace vxshow {

/// `"a", "b" or "c"`.
std::string oneOf(std::span<std::string_view const> names);

/// The members of an object whose members are all known: each is there once or not at all.
class Members {
public:
    /// `names` outlives this; at most 32 of them.
    explicit Members(std::span<std::string_view const> names) noexcept : names_(names) {}

    /// Which of the names `name` is, by its place among them. Throws `Refusal` for another
    /// name and for one that has been there.
    std::size_t take(JsonText const & name) {
        auto const text = name.text();
        for (std::size_t index = 0; index < names_.size(); ++index) {
            if (text == names_[index]) {
                if (has(index)) [[unlikely]] {
                    name.refuseAgain();
                }
                taken_ |= Vex::U32{1} << index;
                return index;
            }
        }
        name.refuse(oneOf(names_));
    }

    /// Whether the name at that place has been there.
    bool has(std::size_t index) const noexcept { return (taken_ >> index & 1) != 0; }

    /// Throws `Refusal` when the name at that place was not in the object that starts at
    /// `object`.
    void require(std::size_t index, char const * object) const;

private:
    std::span<std::string_view const> names_;
    Vex::U32 taken_ = 0;
};

} // namespace vxshow
