#include "vxshow/text/Json.h"

#include <cstdint>
#include <new>

namespace vxshow::text {

static_assert(system::FileBytes::padding >= simdjson::SIMDJSON_PADDING);

JsonReader::JsonReader(system::PaddedText document) {
    auto const text = document.text();
    if (text.starts_with("\xEF\xBB\xBF")) {
        // Later versions of simdjson skip a byte order mark; a JSON text must not begin with one.
        throw MalformedJson{simdjson::UTF8_ERROR};
    }
    auto const error =
        parser_.iterate(text.data(), text.size(), text.size() + system::FileBytes::padding)
            .get(document_);
    if (error == simdjson::MEMALLOC) {
        throw std::bad_alloc();
    }
    JsonValue::checked(error);
}

char const * JsonReader::at() {
    std::string_view token;
    JsonValue::checked(document_.raw_json_token().get(token));
    return token.data();
}

void JsonReader::checkEnd() {
    // The location after the root is out of bounds unless something follows the root.
    char const * location = nullptr;
    if (document_.current_location().get(location) == simdjson::SUCCESS) {
        throw MalformedJson{simdjson::TRAILING_CONTENT};
    }
}

std::string_view JsonReader::unescaped(char const * content) {
    std::size_t length = 0;
    while (content[length] != '"') {
        length += content[length] == '\\' ? 2 : 1;
    }
    scratch_.resize(length + simdjson::SIMDJSON_PADDING);
    auto * to = reinterpret_cast<std::uint8_t *>(scratch_.data());
    simdjson::ondemand::raw_json_string const raw(reinterpret_cast<std::uint8_t const *>(content));
    std::string_view result;
    if (parser_.unescape(raw, to).get(result)) {
        // A bad escape makes the document malformed, like an error that is found while indexing.
        throw MalformedJson{simdjson::STRING_ERROR};
    }
    return result;
}

} // namespace vxshow::text
