#include "vxshow/sources/Facts.h"

#include <algorithm>
#include <tuple>

namespace vxshow::sources {

namespace {

template <class T>
void appendTo(std::vector<T> & all, std::vector<T> const & more) {
    all.insert(all.end(), more.begin(), more.end());
}

/// What has been settled before is sorted already, but for what was appended to it.
template <class T, class Less, class Same>
void sortUnique(std::vector<T> & all, Less less, Same same) {
    if (!std::is_sorted(all.begin(), all.end(), less)) {
        std::sort(all.begin(), all.end(), less);
    }
    all.erase(std::unique(all.begin(), all.end(), same), all.end());
}

/// Types, and no functions, so that sorting many thousands makes no call for each comparison.
struct PlaceLess {
    bool operator()(MacPlace const & a, MacPlace const & b) const {
        if (a.vni != b.vni) {
            return a.vni < b.vni;
        }
        if (a.mac != b.mac) {
            return a.mac < b.mac;
        }
        return std::tie(a.vtep, b.moves) < std::tie(b.vtep, a.moves);
    }
};

struct BindingLess {
    bool operator()(IpBinding const & a, IpBinding const & b) const {
        return std::tie(a.vni, a.ip, b.preference, b.changes, a.mac) <
               std::tie(b.vni, b.ip, a.preference, a.changes, b.mac);
    }
};

bool samePlace(MacPlace const & a, MacPlace const & b) {
    return std::tie(a.vni, a.mac, a.vtep) == std::tie(b.vni, b.mac, b.vtep);
}

/// Of facts that are sorted.
template <class Fact>
void appendVnis(std::vector<Fact> const & facts, std::vector<Vxlan::Vni> & vnis) {
    for (Fact const & fact : facts) {
        if (vnis.empty() || vnis.back() != fact.vni) {
            vnis.push_back(fact.vni);
        }
    }
}

} // namespace

void SideFacts::append(SideFacts const & other) {
    appendTo(vnis, other.vnis);
    appendTo(macs, other.macs);
    appendTo(floods, other.floods);
    appendTo(bindings, other.bindings);
}

void SideFacts::settle() {
    sortUnique(macs, PlaceLess(), samePlace);
    sortUnique(floods, std::less<>(), std::equal_to<>());
    sortUnique(bindings, BindingLess(), std::equal_to<>());
    appendVnis(macs, vnis);
    appendVnis(floods, vnis);
    appendVnis(bindings, vnis);
    sortUnique(vnis, std::less<>(), std::equal_to<>());
}

void Facts::settle() {
    for (auto & [name, side] : local) {
        side.settle();
    }
    remote.settle();
}

} // namespace vxshow::sources
