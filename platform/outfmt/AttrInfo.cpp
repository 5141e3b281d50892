#include "outfmt/AttrInfo.h"

#include "outfmt/JsonText.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace [[gnu::visibility("default")]] outfmt {

detail::QuotedKey::QuotedKey(std::string_view key) noexcept {
    constexpr std::size_t quotesAndColon = 3;
    if (!key.empty() && key.size() + quotesAndColon <= sizeof text_ && isPlainJson(key)) {
        char * end = text_;
        *end++ = '"';
        end += key.copy(end, key.size());
        *end++ = '"';
        *end++ = ':';
        length_ = static_cast<std::size_t>(end - text_);
    }
}

void StringAttrInfo::setValue(std::string_view value) {
    if (value.size() <= maxBufferedLength) {
        if (!value.empty()) {
            std::memmove(buffer_ + 1, value.data(), value.size());
        }
        keep({buffer_ + 1, value.size()}, nullptr);
        quoteIfPlain(value.size());
    } else {
        auto heap = std::make_unique_for_overwrite<char[]>(value.size());
        std::ranges::copy(value, heap.get());
        std::string_view text(heap.get(), value.size());
        keep(text, std::move(heap));
    }
}

void StringAttrInfo::quoteIfPlain(std::size_t length) {
    if (isPlainJson({buffer_ + 1, length})) {
        quote(length);
    }
}

} // namespace outfmt
