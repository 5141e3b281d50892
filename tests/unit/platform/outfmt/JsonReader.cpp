#include "JsonReader.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <stdexcept>

namespace outfmt::test {
namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    Json document() {
        Json value = element();
        if (text_.substr(position_) != "\n") {
            fail("one newline after the document");
        }
        return value;
    }

private:
    [[noreturn]] void fail(std::string const & expected) const {
        throw std::runtime_error("at " + std::to_string(position_) + ": expected " + expected);
    }

    char peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }

    bool next(std::string_view wanted) {
        bool found = text_.substr(position_).starts_with(wanted);
        position_ += found ? wanted.size() : 0;
        return found;
    }

    void need(std::string_view wanted) {
        if (!next(wanted)) {
            fail(std::string(wanted));
        }
    }

    void blanks() {
        while (peek() == ' ' || peek() == '\n' || peek() == '\t' || peek() == '\r') {
            ++position_;
        }
    }

    Json element() {
        if (peek() == '{') {
            return container(Json::Kind::object, '}');
        }
        if (peek() == '[') {
            return container(Json::Kind::list, ']');
        }
        if (peek() == '"') {
            return Json::string(string());
        }
        for (std::string_view word : {"true", "false"}) {
            if (next(word)) {
                return {Json::Kind::boolean, std::string(word), {}};
            }
        }
        if (next("null")) {
            return {};
        }
        return number();
    }

    Json container(Json::Kind kind, char closing) {
        Json result{kind, {}, {}};
        ++position_;
        blanks();
        if (peek() == closing) {
            ++position_;
            return result;
        }
        for (;;) {
            blanks();
            std::string key;
            if (kind == Json::Kind::object) {
                key = string();
                blanks();
                need(":");
                blanks();
            }
            result.members.emplace_back(std::move(key), element());
            blanks();
            if (!next(",")) {
                need({&closing, 1});
                return result;
            }
        }
    }

    Json number() {
        std::size_t begin = position_;
        next("-");
        std::size_t digits = position_;
        while (std::isdigit(static_cast<unsigned char>(peek())) != 0) {
            ++position_;
        }
        if (position_ == digits || (text_[digits] == '0' && position_ - digits > 1)) {
            fail("a whole number");
        }
        return {Json::Kind::number, std::string(text_.substr(begin, position_ - begin)), {}};
    }

    std::string string() {
        need("\"");
        std::string result;
        while (!next("\"")) {
            auto byte = static_cast<unsigned char>(peek());
            if (position_ == text_.size() || byte < 0x20) {
                fail("no raw control character in a string");
            }
            if (next("\\")) {
                result += escaped();
            } else {
                result += character();
            }
        }
        return result;
    }

    char escaped() {
        constexpr std::string_view letters = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        std::size_t index = letters.find(peek());
        if (index != letters.npos) {
            ++position_;
            return meanings[index];
        }
        need("u00"); // the printer escapes nothing above U+00FF
        std::string digits(text_.substr(position_, 2));
        position_ += 2;
        return static_cast<char>(std::stoi(digits, nullptr, 16));
    }

    /// Decodes to a code point and checks that, unlike the printer, which checks bytes.
    std::string_view character() {
        auto first = static_cast<unsigned char>(peek());
        std::size_t length = first < 0x80                    ? 1
                             : first >= 0xC0 && first < 0xE0 ? 2
                             : first >= 0xE0 && first < 0xF0 ? 3
                             : first >= 0xF0 && first < 0xF8 ? 4
                                                             : 0;
        std::string_view bytes = text_.substr(position_, length);
        if (length == 0 || bytes.size() != length) {
            fail("UTF-8");
        }
        std::uint32_t point = length == 1 ? first : first & (0x7FU >> length);
        for (char byte : bytes.substr(1)) {
            if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80) {
                fail("UTF-8");
            }
            point = point << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
        }
        std::uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
        if (point < least[length] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) {
            fail("a code point in its shortest form");
        }
        position_ += length;
        return bytes;
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

} // namespace

Json Json::list(std::vector<Json> elements) {
    Json result{Kind::list, {}, {}};
    for (Json & element : elements) {
        result.members.emplace_back("", std::move(element));
    }
    return result;
}

Json Json::object(std::vector<std::pair<std::string, Json>> members) {
    return {Kind::object, {}, std::move(members)};
}

Json readJson(std::string_view text) {
    return Reader(text).document();
}

} // namespace outfmt::test
