#include "vxshow/sources/Facts.h"

#include "vxshow/sources/Sorting.h"

#include <cstddef>
#include <functional>
#include <tuple>
#include <utility>

namespace vxshow::sources {

namespace {

template <class T, class Less, class Same>
void sortUnique(std::vector<T> & all, Less less, Same same, DeadlineWatch & watch) {
    sortList(all, less, watch);
    removeRepetitions(all, same, watch);
}

/// The facts that one list has in all of the parts, in which it is settled.
template <class T, class Less, class Same>
std::vector<T> mergedLists(std::vector<SideFacts const *> const & parts,
                           std::vector<T> SideFacts::*list, Less less, Same same,
                           DeadlineWatch & watch) {
    std::size_t size = 0;
    for (SideFacts const * const part : parts) {
        size += (part->*list).size();
    }
    std::vector<T> all;
    all.reserve(size);
    std::vector<std::size_t> ends{0};
    for (SideFacts const * const part : parts) {
        watch.steps((part->*list).size());
        all.insert(all.end(), (part->*list).begin(), (part->*list).end());
        ends.push_back(all.size());
    }
    mergeRuns(all, std::move(ends), less, watch);
    removeRepetitions(all, same, watch);
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
void appendVnis(std::vector<Fact> const & facts, std::vector<Vxlan::Vni> & vnis,
                DeadlineWatch & watch) {
    for (Fact const & fact : facts) {
        watch.step();
        if (vnis.empty() || vnis.back() != fact.vni) {
            vnis.push_back(fact.vni);
        }
    }
}

} // namespace

void SideFacts::settle(DeadlineWatch & watch) {
    sortUnique(macs, PlaceLess(), SamePlace(), watch);
    sortUnique(floods, std::less<>(), std::equal_to<>(), watch);
    sortUnique(bindings, BindingLess(), std::equal_to<>(), watch);
    appendVnis(macs, vnis, watch);
    appendVnis(floods, vnis, watch);
    appendVnis(bindings, vnis, watch);
    sortUnique(vnis, std::less<>(), std::equal_to<>(), watch);
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

void Facts::settle(DeadlineWatch & watch) {
    for (auto & [name, side] : local) {
        watch.step();
        side.settle(watch);
    }
    remote.settle(watch);
    // Nothing is left to sort then when the details are settled, which does not look at the clock.
    sortList(details.macs, std::less<>(), watch);
    sortList(details.vniNames, std::less<>(), watch);
    sortList(details.l3Vnis, std::less<>(), watch);
    details.settle();
}

} // namespace vxshow::sources
