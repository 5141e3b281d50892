#pragma once

#include "Nolt/IpAddr.h"
#include "Vex/Hash.h"
#include "Vex/Name.h"
#include "state/PortVlanPairV2.h"
#include "state/VtepKeyPairs.h"

#include <functional>
#include <string_view>

namespace VxlanController::Cli {

/// The order in which a listing meets the entries of a hashed collection where it shows that
/// order: because it shows only the first of several, or lets the last of several that
/// contradict each other win. A walk over the collection itself has another order in each
/// process (Vex/KeyedHash.h).
///
/// The functions give the number by which keys are ordered. Any order that depends on the keys
/// alone would do; this one is a promise, since listings show it. It is no hash for a table:
/// keys can be chosen that share a number.
inline Vex::U64 fixedNumber(std::string_view text) noexcept {
    return std::hash<std::string_view>()(text);
}

inline Vex::U64 fixedNumber(Nolt::IpAddr address) noexcept {
    return Vex::hashMix(address.value());
}

inline Vex::U64 fixedNumber(IpVtepKeyPair const & key) noexcept {
    auto const ip = Vex::hashMix(key.ip.low() ^ Vex::hashMix(key.ip.highAndFamily()));
    return Vex::hashMix(ip + fixedNumber(std::string_view(key.vtepName)));
}

inline Vex::U64 fixedNumber(PortVlanPairV2 const & pair) noexcept {
    return Vex::hashMix(fixedNumber(std::string_view(pair.port)) + pair.vlan.value());
}

/// Whether `a` comes before `b`. Keys with the same number are ordered as keys.
template <class Key>
bool comesFirst(Key const & a, Key const & b) noexcept {
    auto const x = fixedNumber(a);
    auto const y = fixedNumber(b);
    return x != y ? x < y : a < b;
}

} // namespace VxlanController::Cli
