#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"
#include "state/HostTable.h"

#include <map>
#include <set>

/// A shared table beside a std::map: the writer, its own reader and one that was opened elsewhere
/// agree with it.
namespace fuzz {

namespace {

using VcsEvpn::Host;
using VcsEvpn::HostKey;
using Hosts = std::map<HostKey, Host>;

HostKey keyOf(std::uint8_t number) {
    return {Nolt::EthAddr::ofValue(number / 4U + 1), Vxlan::Vni(number % 4U)};
}

Host hostOf(Input & input) {
    auto const number = input.byte();
    // 0 gives the default host, which is a dead slot to readers.
    return {Nolt::IpAddr(number), number / 16U};
}

template <class Table>
void checkWalk(Table const & table, Hosts const & expected) {
    check(table.size() == expected.size(), "the size is wrong");
    std::set<HostKey> walked;
    for (auto at = table.begin(); at; ++at) {
        auto const known = expected.find(at.key());
        check(known != expected.end(), "a walk reaches a key that is not there");
        check(at.value() == known->second, "a walk shows another value");
        check(walked.insert(at.key()).second, "a walk reaches a key twice");
    }
    check(walked.size() == expected.size(), "a walk misses a key");
}

void checkLookUp(VcsEvpn::HostTableWriter const & writer, VcsEvpn::HostTable const & elsewhere,
                 Hosts const & expected, HostKey const & key) {
    auto const known = expected.find(key);
    auto const found = writer.find(key);
    check(found.has_value() == (known != expected.end()), "the writer's find is wrong");
    auto const host = known == expected.end() ? Host() : known->second;
    check(!found || *found == host, "the writer finds another host");
    check(writer.table()->host(key) == host, "the table has another host");
    check(elsewhere.host(key) == host, "a table opened elsewhere has another host");
}

} // namespace

void tableOperations(std::string_view bytes) {
    Input input(bytes);
    VcsEvpn::HostTableWriter writer("fuzz", input.below(40));
    Hosts expected;
    while (!input.empty()) {
        auto const operation = input.below(8);
        auto const key = keyOf(input.byte());
        switch (operation) {
        case 0: {
            auto const known = expected.erase(key) > 0;
            check(writer.erase(key) == known, "erase does not say whether the key was there");
            break;
        }
        case 1: {
            auto const elsewhere = VcsEvpn::openHostTable(writer.descriptor(), "elsewhere");
            checkLookUp(writer, *elsewhere, expected, key);
            checkWalk(*elsewhere, expected);
            break;
        }
        case 2:
            for (unsigned i = 0, count = input.below(64); i < count; ++i) {
                auto const next = keyOf(static_cast<std::uint8_t>(key.mac.value() + i));
                Host const host(Nolt::IpAddr(i + 1), i);
                writer.insert(next, host);
                expected[next] = host;
            }
            break;
        default: {
            auto const host = hostOf(input);
            check(writer.insert(key, host) == !expected.contains(key),
                  "insert does not say whether the key is new");
            expected[key] = host;
        }
        }
        check(writer.size() == expected.size(), "the writer's size is wrong");
    }
    checkWalk(*writer.table(), expected);
}

} // namespace fuzz
