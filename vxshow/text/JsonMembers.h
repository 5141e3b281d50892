#pragma once

#include "vxshow/text/Json.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace vxshow::text {

/// The name of a known member. It is compared with the document as one number of eight bytes,
/// closing quote included: a state has millions of members, and few names are longer.
class MemberName {
public:
    constexpr MemberName(char const * text) noexcept : MemberName(std::string_view(text)) {}

    constexpr MemberName(std::string_view text) noexcept : text_(text) {
        static_assert(std::endian::native == std::endian::little);
        for (std::size_t at = 0; at < sizeof start_ && at <= text.size(); ++at) {
            auto const byte = static_cast<Vex::U8>(at < text.size() ? text[at] : '"');
            start_ |= Vex::U64{byte} << 8 * at;
            compared_ |= Vex::U64{0xFF} << 8 * at;
        }
    }

    constexpr std::string_view text() const noexcept { return text_; }

    /// Whether `content`, which follows an opening quote in a document, is this name without any
    /// escape. Reads at least eight bytes: the document is followed by room for that.
    bool standsAt(char const * content) const noexcept {
        Vex::U64 start = 0;
        std::memcpy(&start, content, sizeof start);
        return (start & compared_) == start_ &&
               (text_.size() < sizeof start || restStandsAt(content));
    }

private:
    bool restStandsAt(char const * content) const noexcept;

    std::string_view text_;
    Vex::U64 start_ = 0;
    Vex::U64 compared_ = 0;
};

/// `"a", "b" or "c"`.
std::string oneOf(std::span<MemberName const> names);

/// What becomes of a member whose name is not known.
enum class OtherMembers : bool { refused, skipped };

/// The index among `names` of a name that is written with escapes, or how many they are.
std::size_t indexOfEscaped(JsonText const & name, std::span<MemberName const> names);

/// The index among `names` of a name that does not stand in the document as any of them does.
/// An unknown one is refused with `Refusal`, or skipped: its index is how many names there are.
template <OtherMembers otherMembers>
std::size_t indexOfOther(JsonText const & name, std::span<MemberName const> names) {
    bool const isEscaped = *firstMark(name.content()) == '\\';
    auto const index = isEscaped ? indexOfEscaped(name, names) : names.size();
    if (otherMembers == OtherMembers::refused && index == names.size()) {
        name.refuse(oneOf(names));
    }
    return index;
}

/// Throws the `Refusal` of an object that starts at `object` and lacks the member `name`.
[[noreturn]] void refuseWithout(MemberName name, char const * object);

/// As above, for the first of `names` whose bit in `missing` is set.
[[noreturn]] void refuseWithout(std::span<MemberName const> names, Vex::U32 missing,
                                char const * object);

/// The members of an object whose members are all known: each is there once or not at all.
class Members {
public:
    /// `names` outlives this; at most 32 of them.
    explicit Members(std::span<MemberName const> names) noexcept : names_(names) {}

    /// Which of the names `name` is, by its place among them. Throws `Refusal` for another
    /// name and for one that has been there.
    std::size_t take(JsonText const & name) {
        std::size_t index = 0;
        while (index < names_.size() && !names_[index].standsAt(name.content())) {
            ++index;
        }
        if (index == names_.size()) [[unlikely]] {
            index = unescapedPlace(name);
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
    void require(std::size_t index, char const * object) const;

private:
    /// The place of a name that is written with escapes. Throws `Refusal` for one that is none.
    std::size_t unescapedPlace(JsonText const & name) const;

    std::span<MemberName const> names_;
    Vex::U32 taken_ = 0;
};

} // namespace vxshow::text
