#pragma once

#include "vxshow/sources/ovsdb/Uuid.h"
#include "vxshow/text/Json.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// The cells of a row as OVSDB writes them (RFC 7047, section 5.1).
///
/// The form of a cell depends on its content: a set of one can be written bare; other sets and
/// references are arrays that start with a word. The column determines what a cell can hold, so
/// each function reads one type of column in all its forms, and refuses anything else. Each throws
/// `Refusal` and `MalformedJson`.
namespace vxshow::sources::ovsdb {

/// A reference to a row, and its place in the document.
struct Reference {
    Uuid row;
    char const * at;
};

/// The TEXT of a reference, which identifies the row.
Reference readIdentity(text::JsonValue & value);

/// `["uuid",TEXT]`.
Reference readReference(text::JsonValue & value);

/// Zero or one whole number: bare, or a set.
std::optional<std::int64_t> readOptionalInteger(text::JsonValue & value);

/// Reads `["set",…]`, `["map",…]` and the like.
///
/// Calls `word(std::string_view)` with the first element, and refuses it if that returns false;
/// then `rest(JsonValue &)` with the second. Refuses an array of another length.
template <class Word, class Rest>
void readTagged(text::JsonValue & value, std::string_view expected, Word && word, Rest && rest) {
    auto const * const start = value.at();
    std::size_t index = 0;
    value.elements(expected, [&](text::JsonValue & element) {
        switch (index++) {
        case 0: {
            auto const text = element.text(expected);
            if (!word(text.text())) {
                text.refuse(std::string(expected));
            }
            return;
        }
        case 1:
            return rest(element);
        default:
            element.refuse("the end of a pair");
        }
    });
    if (index < 2) {
        throw text::Refusal{start, std::string(expected)};
    }
}

/// A set of texts, bare or not: `take(JsonText const &)` for each.
template <class Take>
void readTexts(text::JsonValue & value, Take && take) {
    constexpr std::string_view expected = "a text or a set of texts";
    if (*value.at() != '[') {
        return take(value.text(expected));
    }
    readTagged(
        value, expected, [](std::string_view word) { return word == "set"; },
        [&](text::JsonValue & list) { list.texts("a list of texts", "a text", take); });
}

/// A set of references, bare or not: `take(Reference const &)` for each.
template <class Take>
void readReferences(text::JsonValue & value, Take && take) {
    constexpr std::string_view expected = "a reference to a row or a set of such";
    bool single = false;
    readTagged(
        value, expected,
        [&](std::string_view word) {
            single = word == "uuid";
            return single || word == "set";
        },
        [&](text::JsonValue & rest) {
            if (!single) {
                return rest.elements(
                    "a list of references to rows",
                    [&](text::JsonValue & element) { take(readReference(element)); });
            }
            take(readIdentity(rest));
        });
}

/// A map: `key(JsonValue &)`, then `element(JsonValue &)`, for each pair.
template <class Key, class Element>
void readMap(text::JsonValue & value, Key && key, Element && element) {
    readTagged(
        value, "a map", [](std::string_view word) { return word == "map"; },
        [&](text::JsonValue & list) {
            list.elements("a list of pairs", [&](text::JsonValue & pair) {
                auto const * const start = pair.at();
                std::size_t index = 0;
                pair.elements("a pair", [&](text::JsonValue & half) {
                    switch (index++) {
                    case 0:
                        return key(half);
                    case 1:
                        return element(half);
                    default:
                        half.refuse("the end of a pair");
                    }
                });
                if (index < 2) {
                    throw text::Refusal{start, "a pair"};
                }
            });
        });
}

} // namespace vxshow::sources::ovsdb
