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
/// This is simdjson's On-Demand reading, narrowed to what a strict reader needs: every value is
/// taken in its turn. On-Demand does not look into what is skipped, so only the readers of other
/// programs' answers skip members. Nothing here tracks lines or paths: a refusal is thrown with its
/// position in the bytes, and the place is worked out from that.
namespace vxshow::text {

/// Content that is JSON but not what is expected there.
struct Refusal {
    char const * at; ///< the start of the offending token
    std::string expected;
    std::string_view about = {}; ///< what to add after that token: " again"
};

/// Content that is not JSON. A slower pass over the document finds out where and why.
struct MalformedJson {
    simdjson::error_code error;
};

class JsonReader;

/// The name of a member, or a text: as written in the document, not yet unescaped.
class JsonText {
public:
    JsonText(char const * content, JsonReader & reader) noexcept
        : content_(content), reader_(&reader) {}

    /// Points to the opening quote.
    char const * at() const noexcept { return content_ - 1; }

    /// Points just after the opening quote: to the text, not yet unescaped, and its closing quote.
    char const * content() const noexcept { return content_; }

    /// Whether the byte at `length`, counted from `content()`, is a quote. If no byte before it is
    /// a quote or a backslash, `length` is the length of the text. Can read past the end of the
    /// text: the document is padded for that.
    bool mayHaveLength(std::size_t length) const noexcept { return content_[length] == '"'; }

    /// The text itself, unescaped. Valid until the next call of `text` for any text of the
    /// document. Throws `MalformedJson` if it contains a bad escape.
    std::string_view text() const;

    /// Throws a `Refusal` that names the text as what was found.
    [[noreturn]] void refuse(std::string expected) const {
        throw Refusal{at(), std::move(expected)};
    }

    /// Throws the `Refusal` of a repetition: it was expected once.
    [[noreturn]] void refuseAgain() const { throw Refusal{at(), "it once", " again"}; }

private:
    char const * content_;
    JsonReader * reader_;
};

/// A value that has not been taken yet. Exactly one of the functions that take it must be called,
/// once. Each throws `MalformedJson`, or `Refusal` if the value is something else; `expected` says
/// what belongs there in terms that the document's author knows.
class JsonValue {
public:
    /// `value` and `reader` must outlive this.
    JsonValue(simdjson::ondemand::value & value, JsonReader & reader) noexcept
        : value_(value), reader_(&reader) {}

    JsonValue(JsonValue const &) = delete;
    JsonValue & operator=(JsonValue const &) = delete;

    /// Where the value starts; still available after the value has been taken.
    char const * at() noexcept { return value_.raw_json_token().data(); }

    /// Takes an object. Calls `take(JsonText, JsonValue &)` for each member, which must take the
    /// value.
    template <class Take>
    void members(std::string_view expected, Take && take) {
        simdjson::ondemand::object object;
        check('{', expected, value_.get_object().get(object));
        eachMember(object, *reader_, take);
    }

    /// Takes an array. Calls `take(JsonValue &)` for each element, which must take it.
    template <class Take>
    void elements(std::string_view expected, Take && take) {
        simdjson::ondemand::array array;
        check('[', expected, value_.get_array().get(array));
        eachElement(array, *reader_, take);
    }

    /// Takes an array of texts. Calls `take(JsonText)` for each element. `expected` describes the
    /// array, `expectedElement` an element.
    template <class Take>
    void texts(std::string_view expected, std::string_view expectedElement, Take && take) {
        elements(expected, [&](JsonValue & element) { take(element.text(expectedElement)); });
    }

    /// Takes a text. `expected` can be more specific than that. Inline even where many callers
    /// share it: most members of a state are texts.
    [[gnu::always_inline]] JsonText text(std::string_view expected) {
        simdjson::ondemand::raw_json_string content;
        check('"', expected, value_.get_raw_json_string().get(content));
        return {content.raw(), *reader_};
    }

    /// Takes a whole number from 0 to `max`, written without a fraction or an exponent.
    Vex::U32 number(Vex::U32 max) {
        return number(0, max, [&] { return "a whole number from 0 to " + std::to_string(max); });
    }

    /// Takes a number that must be `only`.
    void numberIs(Vex::U32 only) {
        number(only, only, [&] { return std::to_string(only); });
    }

    /// Takes a signed 64-bit whole number. `expected` can be more specific than that.
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

    /// Throws a `Refusal` that names the value as what was found.
    [[noreturn]] void refuse(std::string expected) { throw Refusal{at(), std::move(expected)}; }

    /// Throws the `Refusal` of a repetition: it was expected once.
    [[noreturn]] void refuseAgain() { throw Refusal{at(), "it once", " again"}; }

    /// As `members`, for an object that is already open.
    template <class Take>
    static void eachMember(simdjson::ondemand::object & object, JsonReader & reader, Take && take) {
        for (auto member : object) {
            checked(member.error());
            auto & field = member.value_unsafe();
            JsonValue value(field.value(), reader);
            take(JsonText(field.key().raw(), reader), value);
        }
    }

    /// As `elements`, for an array that is already open.
    template <class Take>
    static void eachElement(simdjson::ondemand::array & array, JsonReader & reader, Take && take) {
        for (auto element : array) {
            checked(element.error());
            JsonValue value(element.value_unsafe(), reader);
            take(value);
        }
    }

    /// Throws `MalformedJson` if `error` is an error.
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

/// Reads one document.
class JsonReader {
public:
    /// Reads `document`, which must outlive the reader. Throws `MalformedJson` and
    /// `std::bad_alloc`.
    explicit JsonReader(system::PaddedText document);

    /// Reads all of `bytes`, which must outlive the reader.
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

    /// Takes the whole document, which must be one array, as `JsonValue::elements` does. Throws a
    /// `Refusal` with `expected` if it is anything else.
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

/// The first quote or backslash at or after `text`. Reads eight bytes at a time, so up to seven
/// bytes past the mark: the document is padded for that.
inline char const * firstMark(char const * text) noexcept {
    constexpr Vex::U64 ones = 0x0101010101010101U;
    static_assert(std::endian::native == std::endian::little);
    for (;; text += sizeof(Vex::U64)) {
        Vex::U64 word = 0;
        std::memcpy(&word, text, sizeof word);
        Vex::U64 const quote = word ^ ones * '"';
        Vex::U64 const backslash = word ^ ones * '\\';
        // A borrow from the first mark can mark a byte above it, but never one below it.
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
