#include "tests/unit/platform/Vex/ChosenKeys.h"

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Vex/FlatHashMap.h"
#include "Vex/HashMap.h"
#include "Vex/Name.h"
#include "Vex/Slot.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

/// Collections of keys that collide without a secret: hosts choose addresses, peers choose names.
/// Each search may take a few steps more than one, not thousands.
namespace {

using Vex::U32;
using Vex::U64;

constexpr std::size_t count = 8192;

template <class Key>
using Flat = Vex::FlatHashMap<Vex::SetSlot<Key>>;
template <class Key>
using Chained = Vex::HashMap2018<Vex::SetSlot<Key>>;

/// The steps of a search for every key, in a collection that holds all of them.
template <class Collection, class Key>
std::size_t stepsForAll(std::vector<Key> const & keys) {
    Collection collection;
    for (Key const & key : keys) {
        collection.upsert(Vex::SetSlot<Key>(key, true));
    }
    EXPECT_EQ(collection.size(), keys.size());
    std::size_t steps = 0;
    for (Key const & key : keys) {
        steps += collection.searchSteps(key);
    }
    return steps;
}

template <class Key>
void expectFewSteps(std::vector<Key> const & keys) {
    EXPECT_LT(stepsForAll<Flat<Key>>(keys), 4 * keys.size());
    EXPECT_LT(stepsForAll<Chained<Key>>(keys), 4 * keys.size());
}

/// MAC addresses for which `hit(hashMix(address))` holds.
template <class Hit>
std::vector<Nolt::EthAddr> macs(Hit && hit) {
    std::vector<Nolt::EthAddr> keys;
    for (U64 number = 0x020000000000U; keys.size() < count; ++number) {
        if (hit(Vex::hashMix(number))) {
            keys.push_back(Nolt::EthAddr::ofValue(number));
        }
    }
    return keys;
}

/// IPv6 addresses of one network that had the same hash in the bits of `hashes`.
std::vector<Nolt::IpGenAddr> interfaces(ChosenKeys::Keys const & keys) {
    constexpr U64 network = 0x20010db800000000U;
    U64 const high = Vex::hashMix(network ^ static_cast<U64>(Nolt::Family::ipv6) << 32);
    std::vector<Nolt::IpGenAddr> addresses;
    for (U64 const key : keys) {
        addresses.push_back(Nolt::IpGenAddr::ipv6(network, key ^ high));
    }
    return addresses;
}

} // namespace

TEST(ChosenKeys, InterfaceIdentifiersWithOneLowerHalf) {
    expectFewSteps(interfaces(ChosenKeys::sameLowerHalf(count)));
}

TEST(ChosenKeys, InterfaceIdentifiersWithOneUpperHalf) {
    expectFewSteps(interfaces(ChosenKeys::sameUpperHalf(count)));
}

TEST(ChosenKeys, MacAddressesWithTheSameLowBits) {
    expectFewSteps(macs([](U64 hash) { return hash % 1024 == 7; }));
}

TEST(ChosenKeys, MacAddressesWithTheSameTopBits) {
    expectFewSteps(macs([](U64 hash) { return hash >> 54 == 7; }));
}

TEST(ChosenKeys, AllMasksOfManyAddresses) {
    std::vector<Nolt::IpGenAddrWithMask> keys;
    for (U64 low = 0; keys.size() < count; ++low) {
        for (unsigned length = 65; length <= 128 && keys.size() < count; ++length) {
            keys.emplace_back(Nolt::IpGenAddr::ipv6(0x20010db800000000U, low), length);
        }
    }
    expectFewSteps(keys);
}

TEST(ChosenKeys, StructuredNumbersAsInterfaceIdentifiers) {
    for (auto const & [how, keys] : ChosenKeys::allSets(count)) {
        SCOPED_TRACE(how);
        std::vector<Nolt::IpGenAddr> addresses;
        for (U64 const key : keys) {
            addresses.push_back(Nolt::IpGenAddr::ipv6(0xfe80000000000000U, key));
        }
        expectFewSteps(addresses);
    }
}

TEST(ChosenKeys, NamesThatShareAllButAFewLetters) {
    std::vector<Vex::Name> names;
    for (std::size_t i = 0; i < count; ++i) {
        names.emplace_back("leaf-of-a-very-long-name-" + std::to_string(i) + "-in-the-middle");
    }
    expectFewSteps(names);
}

TEST(ChosenKeys, NamesWithOneStandardHash) {
    std::vector<Vex::Name> names;
    std::set<std::size_t> hashes;
    for (std::size_t i = 0; i < count; ++i) {
        names.push_back(Vex::Name(ChosenKeys::sameStandardHash(i)));
        hashes.insert(std::hash<std::string_view>()(names.back()));
    }
    EXPECT_EQ(hashes.size(), 1U);
    expectFewSteps(names);
}

TEST(ChosenKeys, NotChosenOnesTakeAsFew) {
    std::mt19937_64 random(1);
    std::vector<Nolt::IpGenAddr> addresses;
    for (std::size_t i = 0; i < count; ++i) {
        addresses.push_back(Nolt::IpGenAddr::ipv6(random(), random()));
    }
    expectFewSteps(addresses);
}
