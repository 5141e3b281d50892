#include "Vex/OrderedMap.h"

#include "fuzz/Targets.h"
#include "fuzz/platform/MapTwin.h"

#include <compare>

/// The ordered collection agrees with std::map, and its iterators keep their place.
namespace fuzz {

namespace {

/// Keys for collections of a few blocks, of some forty entries each.
struct FewKey {
    static constexpr std::size_t padding = 0;
    static constexpr unsigned fillFactor = 1;

    std::uint8_t number;

    explicit FewKey(std::uint8_t n) noexcept : number(n) {}

    FewKey beside(unsigned which) const noexcept {
        return FewKey(static_cast<std::uint8_t>(number + which - 1));
    }

    FewKey plus(unsigned count) const noexcept {
        return FewKey(static_cast<std::uint8_t>(number + count));
    }

    auto operator<=>(FewKey const &) const = default;
};

/// Keys for collections of so many blocks, of eight entries each, that their index has groups.
struct ManyKey {
    static constexpr std::size_t padding = 112;
    static constexpr unsigned fillFactor = 16;

    unsigned number;

    explicit ManyKey(unsigned n) noexcept : number(n * 8) {}

    ManyKey beside(unsigned which) const noexcept { return plus(which - 1); }

    ManyKey plus(unsigned count) const noexcept {
        ManyKey key = *this;
        key.number += count;
        return key;
    }

    auto operator<=>(ManyKey const &) const = default;
};

template <class Key>
using Twin = MapTwin<Vex::OrderedMap<MapEntrySlot<Key>>, std::less<Key>>;

} // namespace

void orderedMap(std::string_view bytes) {
    Input input(bytes);
    if (input.below(16) == 0) {
        Twin<ManyKey>(input.rest()).run();
    } else {
        Twin<FewKey>(input.rest()).run();
    }
}

} // namespace fuzz
