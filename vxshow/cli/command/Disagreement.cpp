#include "vxshow/cli/command/Disagreement.h"

#include "Vex/Errors.h"
#include "VxlanController/arp/Collect.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace vxshow::cli::command {

namespace {

using VxlanController::ArpEntryV2;
using VxlanController::VniFdbStatusV2;

/// What a table of the listing is keyed by.
using BindingKey = std::pair<Vxlan::Vni, Nolt::IpGenAddr>;

struct Binding {
    Vex::Name entry;
    ArpEntryV2 published;
};

/// The first attribute in which the two differ, with both values; empty if they are equal.
std::string difference(ArpEntryV2 const & a, ArpEntryV2 const & b) {
    auto const both = [](char const * what, auto const & x, auto const & y) {
        return std::string(what) + " " + Vex::valueToStrep(x) + " and " + Vex::valueToStrep(y);
    };
    if (a.macAddress() != b.macAddress()) {
        return both("MAC address", a.macAddress(), b.macAddress());
    }
    if (a.preference() != b.preference()) {
        return both("preference", a.preference(), b.preference());
    }
    return a.changes() == b.changes() ? "" : both("changes", a.changes(), b.changes());
}

std::vector<Vex::Name> sortedNames(Vex::Dir const & entries) {
    std::vector<Vex::Name> names;
    for (auto entry = entries.entityPtrIteratorConst(); entry; ++entry) {
        if (Vex::dynamicPtr<VniFdbStatusV2 const>(entry.entity())) {
            names.push_back(entry.name());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

std::optional<std::string> firstDisagreement(Vex::Dir const & entries,
                                             VxlanController::Cli::ArpFilter const & filter) {
    std::map<BindingKey, Binding> first;
    std::map<BindingKey, std::string> disagreements;
    for (Vex::Name const & name : sortedNames(entries)) {
        auto const vni = VxlanController::Cli::vniNamed(name);
        if (!filter.vni.matches(vni)) {
            continue;
        }
        auto const status = Vex::dynamicPtr<VniFdbStatusV2 const>(entries.entityPtr(name));
        for (ArpEntryV2 const & published : status->arpTable()) {
            if (!filter.matches(published)) {
                continue;
            }
            BindingKey const key{vni, published.ipAddress()};
            auto const [known, isNew] = first.try_emplace(key, Binding{name, published});
            auto const differs = difference(known->second.published, published);
            if (!differs.empty()) {
                disagreements.try_emplace(
                    key, "entries " + Vex::quoted(known->second.entry.stringValue()) + " and " +
                             Vex::quoted(name.stringValue()) + " of VNI " + vni.stringValue() +
                             " disagree about " + published.ipAddress().stringValue() + ": " +
                             differs);
            }
        }
    }
    return disagreements.empty() ? std::nullopt
                                 : std::optional(std::move(disagreements.begin()->second));
}

} // namespace vxshow::cli::command
