#pragma once

#include "Vex/Types.h"
#include "vxshow/system/FileBytes.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <simdjson.h>
#include <string>
#include <string_view>
#include <utility>

/// A JSON document, read front to back, once, straight out of its bytes.
///
/// This is simdjson's On-Demand reading, narrowed to what a strict reader needs: every value
/// is taken in its turn and none is passed over, since On-Demand does not look into what it
/// passes over. Nothing here keeps track of where it is: what is refused is thrown with its
/// position, and the place is worked out from that.
namespace vxshow::text {

/// Content that is JSON but not what is wanted there.
struct Refusal {
    char const * at; ///< the start of the token to blame
    std::string expected;
    std::string_view about = {}; ///< what to say of that token behind it: " again"
};

/// Content that is no JSON: where and why is for a slower reader to find out.
struct MalformedJson {
    simdjson::error_code error;
};

class JsonReader;

/// The name of a member, or a text: as it stands in the document, not yet unescaped.
class JsonText {
public:
    JsonText(char const * content, JsonReader & reader) noexcept
        : content_(content), reader_(&reader) {}

    /// The opening quote.
    char const * at() const noexcept { return content_ - 1; }

    /// What stands behind the opening quote: a text with a closing one, not yet unescaped.
    char const * content() const noexcept { return content_; }

    /// Whether a quote stands that many bytes behind the opening one: if none of the bytes
    /// between is a quote or a backslash, that is the length of the text. May look behind the
    /// text: the document is followed by room for that.
    bool mayHaveLength(std::size_t length) const noexcept { return content_[length] == '"'; }

    /// The text itself. Valid until `text` is next called, for any text of the document.
    /// Throws `MalformedJson` when it holds a bad escape.
    std::string_view text() const;

    /// Throws `Refusal` with the text as what was found.
    [[noreturn]] void refuse(std::string expected) const {
        throw Refusal{at(), std::move(expected)};
    }

    /// Throws the `Refusal` of what stands here for a second time.
    [[noreturn]] void refuseAgain() const { throw Refusal{at(), "it once", " again"}; }

private:
    char const * content_;
    JsonReader * reader_;
};

/// A value that has not been taken yet. Exactly one of the functions that take it is called,
/// once. Each throws `Refusal` when the value is something else, with what was expected in
/// its author's words, and `MalformedJson`.
class JsonValue {
public:
    /// `value` and `reader` outlive this.
    JsonValue(simdjson::ondemand::value & value, JsonReader & reader) noexcept
        : value_(value), reader_(&reader) {}

    JsonValue(JsonValue const &) = delete;
    JsonValue & operator=(JsonValue const &) = delete;

    /// Where the value starts, also after it was taken.
    char const * at() noexcept { return value_.raw_json_token().data(); }

    /// Takes an object: `take(JsonText, JsonValue &)` for each member, and must take the value.
    template <class Take>
    void members(std::string_view expected, Take && take) {
        simdjson::ondemand::object object;
        check('{', expected, value_.get_object().get(object));
        eachMember(object, *reader_, take);
    }

    /// Takes an array: `take(JsonValue &)` for each element, and must take it.
    template <class Take>
    void elements(std::string_view expected, Take && take) {
        simdjson::ondemand::array array;
        check('[', expected, value_.get_array().get(array));
        eachElement(array, *reader_, take);
    }

    /// Takes an array: `take(JsonText)` for each element, all of which must be texts.
    /// `expected` is about the array, `expectedElement` about those.
    template <class Take>
    void texts(std::string_view expected, std::string_view expectedElement, Take && take) {
        elements(expected, [&](JsonValue & element) { take(element.text(expectedElement)); });
    }

    /// Takes a text. `expected` may say more of it than that.
    JsonText text(std::string_view expected) {
        simdjson::ondemand::raw_json_string content;
        check('"', expected, value_.get_raw_json_string().get(content));
        return {content.raw(), *reader_};
    }

    /// Takes a whole number from 0 to `max`, written without a fraction or an exponent.
    Vex::U32 number(Vex::U32 max) {
        return number(0, max, [&] { return "a whole number from 0 to " + std::to_string(max); });
    }

    /// Takes the whole number `only`.
    void numberIs(Vex::U32 only) {
        number(only, only, [&] { return std::to_string(only); });
    }

    /// Takes a whole number of 64 bits with a sign. `expected` may say more of it than that.
    std::int64_t integer(std::string_view expected) {
        std::int64_t number = 0;
        if (value_.get_int64().get(number)) [[unlikely]] {
            refuse(std::string(expected));
        }
        return number;
    }

    /// Takes true or false.
    bool boolean() {
        bool flag = false;
        if (value_.get_bool().get(flag)) [[unlikely]] {
            refuse("true or false");
        }
        return flag;
    }

    /// Throws `Refusal` with the value as what was found.
    [[noreturn]] void refuse(std::string expected) { throw Refusal{at(), std::move(expected)}; }

    /// Throws the `Refusal` of what stands here for a second time.
    [[noreturn]] void refuseAgain() { throw Refusal{at(), "it once", " again"}; }

    /// `members`, of an object that has been opened.
    template <class Take>
    static void eachMember(simdjson::ondemand::object & object, JsonReader & reader, Take && take) {
        for (auto member : object) {
            checked(member.error());
            auto & field = member.value_unsafe();
            JsonValue value(field.value(), reader);
            take(JsonText(field.key().raw(), reader), value);
        }
    }

    /// `elements`, of an array that has been opened.
    template <class Take>
    static void eachElement(simdjson::ondemand::array & array, JsonReader & reader, Take && take) {
        for (auto element : array) {
            checked(element.error());
            JsonValue value(element.value_unsafe(), reader);
            take(value);
        }
    }

    /// Throws `MalformedJson` unless `error` is none.
    static void checked(simdjson::error_code error) {
        if (error) [[unlikely]] {
            throw MalformedJson{error};
        }
    }

private:
    template <class Expected>
    Vex::U32 number(Vex::U32 min, Vex::U32 max, Expected && expected) {
        Vex::U64 number = 0;
        if (value_.get_uint64().get(number) || number < min || number > max) [[unlikely]] {
            refuse(expected());
        }
        return static_cast<Vex::U32>(number);
    }

    void check(char first, std::string_view expected, simdjson::error_code error) {
        if (error) [[unlikely]] {
            if (*at() != first) {
                refuse(std::string(expected));
            }
            throw MalformedJson{error};
        }
    }

    simdjson::ondemand::value & value_;
    JsonReader * reader_;
};

/// The reader of one document.
class JsonReader {
public:
    /// Reads `document`, which outlives the reader. Throws `MalformedJson` and `std::bad_alloc`.
    explicit JsonReader(system::PaddedText document);

    /// Reads all of `bytes`, which outlives the reader.
    explicit JsonReader(system::FileBytes const & bytes) : JsonReader(bytes.padded()) {}

    JsonReader(JsonReader const &) = delete;
    JsonReader & operator=(JsonReader const &) = delete;

    /// Where the document starts.
    char const * at();

    /// Takes the whole document, which must be one object, as `JsonValue::members` does.
    template <class Take>
    void document(Take && take) {
        simdjson::ondemand::object object;
        JsonValue::checked(document_.get_object().get(object));
        JsonValue::eachMember(object, *this, take);
        checkEnd();
    }

    /// Takes the whole document, which must be one array, as `JsonValue::elements` does. Throws
    /// `Refusal` when it is something else, with what was `expected`.
    template <class Take>
    void documentElements(std::string_view expected, Take && take) {
        auto const * const start = at();
        simdjson::ondemand::array array;
        if (auto const error = document_.get_array().get(array)) [[unlikely]] {
            if (*start != '[') {
                throw Refusal{start, std::string(expected)};
            }
            JsonValue::checked(error);
        }
        JsonValue::eachElement(array, *this, take);
        checkEnd();
    }

private:
    friend JsonText;

    void checkEnd();

    std::string_view unescaped(char const * content);

    simdjson::ondemand::parser parser_;
    simdjson::ondemand::document document_;
    std::string scratch_;
};

/// The first quote or backslash at or behind `text`. Looks at eight bytes at a time, and so
/// at up to seven behind it: the document is followed by room for that.
inline char const * firstMark(char const * text) noexcept {
    constexpr Vex::U64 ones = 0x0101010101010101U;
    static_assert(std::endian::native == std::endian::little);
    for (;; text += sizeof(Vex::U64)) {
        Vex::U64 word = 0;
        std::memcpy(&word, text, sizeof word);
        Vex::U64 const quote = word ^ ones * '"';
        Vex::U64 const backslash = word ^ ones * '\\';
        // A byte above the first mark may be marked by a borrow from it; none below it is.
        Vex::U64 const marked =
            (((quote - ones) & ~quote) | ((backslash - ones) & ~backslash)) & ones * 0x80;
        if (marked != 0) {
            return text + std::countr_zero(marked) / 8;
        }
    }
}

inline std::string_view JsonText::text() const {
    char const * const end = firstMark(content_);
    if (*end == '\\') [[unlikely]] {
        return reader_->unescaped(content_);
    }
    return {content_, static_cast<std::size_t>(end - content_)};
}

} // namespace vxshow::text
