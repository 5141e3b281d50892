#pragma once

#include "vxshow/text/JsonMembers.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <utility>

/// Objects described as tables of their members: each member's name, whether it is required,
/// and how its value is taken.
///
///     constexpr auto point = strictObject(
///         "an object of \"x\" and \"y\"",
///         requiredMember("x", [](JsonValue & value, Point & into) { into.x = value.number(9); }),
///         optionalMember("y", [](JsonValue & value, Point & into) { into.y = value.number(9); }));
///
///     point.read(value, into);
///
/// A table is a constant whose entries have their own types, so that the compiler makes of it one
/// comparison after the other, each followed by what takes that member.
namespace vxshow::text {

/// One member. `read(JsonValue &, into...)` takes its value.
template <class Read>
struct JsonField {
    MemberName name;
    bool isRequired;
    Read read;
};

template <class Read>
constexpr JsonField<Read> requiredMember(MemberName name, Read read) {
    return {name, true, read};
}

/// In a lenient object, null in its place counts as its absence.
template <class Read>
constexpr JsonField<Read> optionalMember(MemberName name, Read read) {
    return {name, false, read};
}

/// The table of an object. A known member appears at most once.
template <OtherMembers otherMembers, class... Fields>
class JsonObject {
public:
    /// `expected` describes the object in terms that the document's author knows.
    constexpr explicit JsonObject(std::string_view expected, Fields... fields)
        : expected_(expected), names_{fields.name...}, required_(requiredAmong(fields...)),
          fields_(fields...) {}

    /// Takes `value`, which must be such an object. Calls `read(JsonValue &, into...)` of each
    /// known member in the order of the document. Throws `Refusal` and `MalformedJson`.
    template <class... Into>
    void read(JsonValue & value, Into &&... into) const {
        auto const * const start = value.at();
        Vex::U32 taken = 0;
        value.members(expected_, [&](JsonText const & name, JsonValue & member) {
            take(name, member, taken, into...);
        });
        checkRequired(taken, start);
    }

    /// Takes the whole document, as above.
    template <class... Into>
    void read(JsonReader & json, Into &&... into) const {
        auto const * const start = json.at();
        Vex::U32 taken = 0;
        json.document(
            [&](JsonText const & name, JsonValue & member) { take(name, member, taken, into...); });
        checkRequired(taken, start);
    }

    /// Calls `visit(field)` for each field, in the order of the table.
    template <class Visit>
    constexpr void eachField(Visit && visit) const {
        std::apply([&](auto const &... field) { (visit(field), ...); }, fields_);
    }

    constexpr std::array<MemberName, sizeof...(Fields)> const & names() const noexcept {
        return names_;
    }

private:
    static constexpr std::size_t count = sizeof...(Fields);
    static_assert(count <= 32, "which members were there is one number of 32 bits");

    static constexpr Vex::U32 requiredAmong(Fields const &... fields) {
        Vex::U32 required = 0;
        std::size_t index = 0;
        ((required |= Vex::U32{fields.isRequired} << index++), ...);
        return required;
    }

    template <class... Into>
    void take(JsonText const & name, JsonValue & value, Vex::U32 & taken, Into &... into) const {
        auto const * const content = name.content();
        bool const isKnown = takeFirst(
            [content](auto const & field, std::size_t) { return field.name.standsAt(content); },
            name, value, taken, into...);
        if (!isKnown) {
            takeOther(name, value, taken, into...);
        }
    }

    /// Takes a member whose name is none of the table's byte for byte.
    template <class... Into>
    [[gnu::noinline]] void takeOther(JsonText const & name, JsonValue & value, Vex::U32 & taken,
                                     Into &... into) const {
        auto const index = indexOfOther<otherMembers>(name, names_);
        takeFirst([index](auto const &, std::size_t at) { return at == index; }, name, value, taken,
                  into...);
    }

    /// Takes the member as the first field that `isIt(field, index)`; returns whether there is one.
    template <class IsIt, class... Into>
    bool takeFirst(IsIt isIt, JsonText const & name, JsonValue & value, Vex::U32 & taken,
                   Into &... into) const {
        return [&]<std::size_t... at>(std::index_sequence<at...>) {
            return ((isIt(std::get<at>(fields_), at) &&
                     (takeField<at>(name, value, taken, into...), true)) ||
                    ...);
        }
        (std::index_sequence_for<Fields...>());
    }

    template <std::size_t index, class... Into>
    void takeField(JsonText const & name, JsonValue & value, Vex::U32 & taken,
                   Into &... into) const {
        constexpr Vex::U32 bit = Vex::U32{1} << index;
        if ((taken & bit) != 0) [[unlikely]] {
            name.refuseAgain();
        }
        taken |= bit;
        auto const & field = std::get<index>(fields_);
        if (otherMembers == OtherMembers::skipped && !field.isRequired && *value.at() == 'n') {
            return;
        }
        field.read(value, into...);
    }

    void checkRequired(Vex::U32 taken, char const * object) const {
        if ((required_ & ~taken) != 0) [[unlikely]] {
            refuseWithout(names_, required_ & ~taken, object);
        }
    }

    std::string_view expected_;
    std::array<MemberName, count> names_;
    Vex::U32 required_;
    std::tuple<Fields...> fields_;
};

/// The table of an object that has only these members: any other one is refused.
template <class... Fields>
constexpr JsonObject<OtherMembers::refused, Fields...> strictObject(std::string_view expected,
                                                                    Fields... fields) {
    return JsonObject<OtherMembers::refused, Fields...>(expected, fields...);
}

/// The table of an object of which only some members matter: others, such as those that a newer
/// daemon adds, are skipped.
template <class... Fields>
constexpr JsonObject<OtherMembers::skipped, Fields...> lenientObject(std::string_view expected,
                                                                     Fields... fields) {
    return JsonObject<OtherMembers::skipped, Fields...>(expected, fields...);
}

} // namespace vxshow::text
