#include "vxshow/sources/ovsdb/Values.h"

namespace vxshow::sources::ovsdb {

Reference readIdentity(text::JsonValue & value) {
    constexpr char const * expected =
        "the identity of a row such as 8e81973e-0bec-47b0-b898-d190f9ebdacc";
    auto const text = value.text(expected);
    auto const row = readUuid(text.text());
    if (!row) {
        text.refuse(expected);
    }
    return {*row, text.at()};
}

Reference readReference(text::JsonValue & value) {
    constexpr std::string_view expected = "a reference to a row";
    Reference reference{};
    readTagged(
        value, expected, [](std::string_view word) { return word == "uuid"; },
        [&](text::JsonValue & rest) { reference = readIdentity(rest); });
    return reference;
}

std::optional<std::int64_t> readOptionalInteger(text::JsonValue & value) {
    constexpr std::string_view expected = "a whole number of 64 bits or an empty set";
    if (*value.at() != '[') {
        return value.integer(expected);
    }
    std::optional<std::int64_t> number;
    readTagged(
        value, expected, [](std::string_view word) { return word == "set"; },
        [&](text::JsonValue & list) {
            list.elements("a list of at most one number", [&](text::JsonValue & element) {
                if (number) {
                    element.refuse("at most one number");
                }
                number = element.integer("a whole number of 64 bits");
            });
        });
    return number;
}

} // namespace vxshow::sources::ovsdb
