#pragma once

#include "vxshow/text/Json.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace vxshow::text {

/// The name of a known member. Its first eight bytes, closing quote included, are compared with the
/// document as one number: a state has millions of members, and few names are longer.
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
    /// escape. Reads at least eight bytes: the document is padded for that.
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

/// Lists the names for a message: `"a", "b" or "c"`.
std::string oneOf(std::span<MemberName const> names);

/// What to do with a member whose name is unknown.
enum class OtherMembers : bool { refused, skipped };

/// The index in `names` of a name that is written with escapes; `names.size()` if it is unknown.
std::size_t indexOfEscaped(JsonText const & name, std::span<MemberName const> names);

/// The index in `names` of a name that does not match any of them byte for byte. An unknown name is
/// refused with `Refusal`, or skipped: then the index is `names.size()`.
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

} // namespace vxshow::text
