#include "vxshow/sources/Facts.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <tuple>
#include <utility>

namespace vxshow::sources {

namespace {

/// Many sources report their rows in order.
template <class T, class Less, class Same>
void sortUnique(std::vector<T> & all, Less less, Same same) {
    if (!std::is_sorted(all.begin(), all.end(), less)) {
        std::sort(all.begin(), all.end(), less);
    }
    all.erase(std::unique(all.begin(), all.end(), same), all.end());
}

/// The facts that one list has in all of the parts, in which it is settled.
template <class T, class Less, class Same>
std::vector<T> mergedLists(std::vector<SideFacts const *> const & parts,
                           std::vector<T> SideFacts::*list, Less less, Same same,
                           DeadlineWatch & watch) {
    std::vector<T> all;
    std::vector<std::ptrdiff_t> ends{0};
    for (SideFacts const * const part : parts) {
        all.insert(all.end(), (part->*list).begin(), (part->*list).end());
        ends.push_back(static_cast<std::ptrdiff_t>(all.size()));
    }
    // Merges neighbours, two by two, until one list is left.
    while (ends.size() > 2) {
        std::vector<std::ptrdiff_t> next{0};
        for (std::size_t index = 2; index < ends.size(); index += 2) {
            watch.look();
            std::inplace_merge(all.begin() + ends[index - 2], all.begin() + ends[index - 1],
                               all.begin() + ends[index], less);
            next.push_back(ends[index]);
        }
        if (next.back() != ends.back()) {
            next.push_back(ends.back());
        }
        ends = std::move(next);
    }
    all.erase(std::unique(all.begin(), all.end(), same), all.end());
    return all;
}

/// Types rather than functions, so that sorting does not make a call for each comparison.
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

struct SamePlace {
    bool operator()(MacPlace const & a, MacPlace const & b) const {
        return std::tie(a.vni, a.mac, a.vtep) == std::tie(b.vni, b.mac, b.vtep);
    }
};

/// Appends the VNIs of facts that are sorted.
template <class Fact>
void appendVnis(std::vector<Fact> const & facts, std::vector<Vxlan::Vni> & vnis) {
    for (Fact const & fact : facts) {
        if (vnis.empty() || vnis.back() != fact.vni) {
            vnis.push_back(fact.vni);
        }
    }
}

} // namespace

void SideFacts::settle() {
    sortUnique(macs, PlaceLess(), SamePlace());
    sortUnique(floods, std::less<>(), std::equal_to<>());
    sortUnique(bindings, BindingLess(), std::equal_to<>());
    appendVnis(macs, vnis);
    appendVnis(floods, vnis);
    appendVnis(bindings, vnis);
    sortUnique(vnis, std::less<>(), std::equal_to<>());
}

SideFacts merged(std::vector<SideFacts const *> const & parts, DeadlineWatch & watch) {
    SideFacts all;
    all.vnis = mergedLists(parts, &SideFacts::vnis, std::less<>(), std::equal_to<>(), watch);
    all.macs = mergedLists(parts, &SideFacts::macs, PlaceLess(), SamePlace(), watch);
    all.floods = mergedLists(parts, &SideFacts::floods, std::less<>(), std::equal_to<>(), watch);
    all.bindings =
        mergedLists(parts, &SideFacts::bindings, BindingLess(), std::equal_to<>(), watch);
    return all;
}

void Facts::settle() {
    for (auto & [name, side] : local) {
        side.settle();
    }
    remote.settle();
    details.settle();
}

} // namespace vxshow::sources
