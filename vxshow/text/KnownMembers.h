#pragma once

#include "vxshow/text/JsonMembers.h"

#include <cstddef>
#include <span>

namespace vxshow::text {

/// The members of an object that may have others than the known ones: a newer daemon adds some.
/// A known one is there once or not at all.
class KnownMembers {
public:
    /// `names` outlives this; at most 32 of them.
    explicit KnownMembers(std::span<MemberName const> names) noexcept : names_(names) {}

    /// Which of the names `name` is, by its place among them; how many they are when it is
    /// another one, whose value may be left alone. Throws `Refusal` for one that has been there.
    std::size_t take(JsonText const & name) {
        std::size_t index = 0;
        while (index < names_.size() && !names_[index].standsAt(name.content())) {
            ++index;
        }
        if (index == names_.size() && *firstMark(name.content()) == '\\') [[unlikely]] {
            index = unescapedPlace(name);
        }
        if (index == names_.size()) {
            return index;
        }
        if (has(index)) [[unlikely]] {
            name.refuseAgain();
        }
        taken_ |= Vex::U32{1} << index;
        return index;
    }

    /// Whether the name at that place has been there.
    bool has(std::size_t index) const noexcept { return (taken_ >> index & 1) != 0; }

    /// Throws `Refusal` when the name at that place was not in the object that starts at
    /// `object`.
    void require(std::size_t index, char const * object) const {
        if (!has(index)) [[unlikely]] {
            refuseWithout(index, object);
        }
    }

private:
    /// As `take`, of a name that is written with escapes.
    std::size_t unescapedPlace(JsonText const & name) const;

    [[noreturn]] void refuseWithout(std::size_t index, char const * object) const;

    std::span<MemberName const> names_;
    Vex::U32 taken_ = 0;
};

} // namespace vxshow::text
