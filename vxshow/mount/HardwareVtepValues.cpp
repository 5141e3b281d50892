#include "vxshow/mount/HardwareVtepValues.h"

namespace vxshow::ovsdb {

namespace {

constexpr std::size_t uuidLength = 36;
constexpr unsigned noDigit = 16;

constexpr bool isDash(std::size_t index) {
    return index == 8 || index == 13 || index == 18 || index == 23;
}

constexpr unsigned digitOf(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    return c >= 'a' && c <= 'f' ? static_cast<unsigned>(c - 'a') + 10 : noDigit;
}

} // namespace

std::optional<Uuid> readUuid(std::string_view text) noexcept {
    if (text.size() != uuidLength) {
        return std::nullopt;
    }
    Uuid uuid;
    for (std::size_t index = 0; index < uuidLength; ++index) {
        if (isDash(index)) {
            if (text[index] != '-') {
                return std::nullopt;
            }
            continue;
        }
        unsigned const digit = digitOf(text[index]);
        if (digit == noDigit) {
            return std::nullopt;
        }
        uuid.high = uuid.high << 4 | uuid.low >> 60;
        uuid.low = uuid.low << 4 | digit;
    }
    return uuid;
}

Reference readIdentity(JsonValue & value) {
    constexpr char const * expected =
        "the identity of a row such as 8e81973e-0bec-47b0-b898-d190f9ebdacc";
    auto const text = value.text(expected);
    auto const row = readUuid(text.text());
    if (!row) {
        text.refuse(expected);
    }
    return {*row, text.at()};
}

Reference readReference(JsonValue & value) {
    constexpr std::string_view expected = "a reference to a row";
    Reference reference{};
    readTagged(
        value, expected, [](std::string_view word) { return word == "uuid"; },
        [&](JsonValue & rest) { reference = readIdentity(rest); });
    return reference;
}

std::optional<std::int64_t> readOptionalInteger(JsonValue & value) {
    constexpr std::string_view expected = "a whole number of 64 bits or an empty set";
    if (*value.at() != '[') {
        return value.integer(expected);
    }
    std::optional<std::int64_t> number;
    readTagged(
        value, expected, [](std::string_view word) { return word == "set"; },
        [&](JsonValue & list) {
            list.elements("a list of at most one number", [&](JsonValue & element) {
                if (number) {
                    element.refuse("at most one number");
                }
                number = element.integer("a whole number of 64 bits");
            });
        });
    return number;
}

} // namespace vxshow::ovsdb
