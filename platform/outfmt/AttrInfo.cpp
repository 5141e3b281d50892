#include "outfmt/AttrInfo.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace outfmt {

void StringAttrInfo::setValue(std::string_view value) {
    if (value.size() <= maxBufferedLength) {
        if (!value.empty()) {
            std::memmove(buffer_, value.data(), value.size());
        }
        keep({buffer_, value.size()}, nullptr);
    } else {
        auto heap = std::make_unique_for_overwrite<char[]>(value.size());
        std::ranges::copy(value, heap.get());
        std::string_view text(heap.get(), value.size());
        keep(text, std::move(heap));
    }
}

} // namespace outfmt
