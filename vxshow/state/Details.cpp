#include "vxshow/state/Details.h"

#include <algorithm>

namespace vxshow::state {

namespace {

template <class Entry>
void sortUnique(std::vector<Entry> & all) {
    if (!std::is_sorted(all.begin(), all.end())) {
        std::sort(all.begin(), all.end());
    }
    all.erase(std::unique(all.begin(), all.end()), all.end());
}

} // namespace

void SourceDetails::settle() {
    sortUnique(macs);
    sortUnique(vniNames);
    sortUnique(l3Vnis);
}

void SourceDetails::add(SourceDetails const & more) {
    auto const append = [&](auto SourceDetails::*list) {
        auto const & from = more.*list;
        (this->*list).insert((this->*list).end(), from.begin(), from.end());
    };
    append(&SourceDetails::macs);
    append(&SourceDetails::vniNames);
    append(&SourceDetails::l3Vnis);
    settle();
}

} // namespace vxshow::state
