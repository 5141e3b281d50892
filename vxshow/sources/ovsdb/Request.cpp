#include "vxshow/sources/ovsdb/Request.h"

#include <algorithm>
#include <array>

namespace vxshow::sources::ovsdb {

namespace {

struct Select {
    Table table;
    std::string_view name;
    std::string_view columns;
};

using enum Table;

constexpr std::string_view mcastColumns = R"("MAC","logical_switch","locator_set","ipaddr")";
constexpr std::string_view ucastColumns = R"("MAC","logical_switch","locator","ipaddr")";

/// In an order in which a row comes after those it refers to, so that an answer is joined while it
/// is read. The one exception is the ports of a switch.
constexpr std::array<Select, 12> selects{{
    {logicalSwitch, "Logical_Switch", R"("_uuid","name","tunnel_key")"},
    {physicalLocator, "Physical_Locator", R"("_uuid","dst_ip","tunnel_key")"},
    {physicalLocatorSet, "Physical_Locator_Set", R"("_uuid","locators")"},
    {physicalSwitch, "Physical_Switch", R"("name","tunnel_ips","ports")"},
    {physicalPort, "Physical_Port", R"("_uuid","name","vlan_bindings")"},
    {logicalRouter, "Logical_Router", R"("name","switch_binding","static_routes")"},
    {arpSourcesLocal, "Arp_Sources_Local", R"("src_mac","locator")"},
    {arpSourcesRemote, "Arp_Sources_Remote", R"("src_mac","locator")"},
    {mcastMacsLocal, "Mcast_Macs_Local", mcastColumns},
    {mcastMacsRemote, "Mcast_Macs_Remote", mcastColumns},
    {ucastMacsLocal, "Ucast_Macs_Local", ucastColumns},
    {ucastMacsRemote, "Ucast_Macs_Remote", ucastColumns},
}};

Select const & selectOf(Table table) {
    return selects[static_cast<std::size_t>(table)];
}

std::string_view columnsOf(Select const & select, bool locatorKey) {
    return select.table == physicalLocator && !locatorKey ? R"("_uuid","dst_ip")" : select.columns;
}

/// How much of a table is asked for: nothing, what matches the pushed conditions, all.
enum class Share { none, pushed, all };

Share shareOf(Table table, Wanted const & wanted, DatabaseSchema const & schema) {
    switch (table) {
    case logicalRouter:
        return schema.logicalRouter ? Share::all : Share::none;
    case arpSourcesLocal:
        return schema.arpSourcesLocal ? Share::all : Share::none;
    case arpSourcesRemote:
        return schema.arpSourcesRemote ? Share::all : Share::none;
    case mcastMacsLocal:
    case ucastMacsLocal:
        return wanted.localMacs ? Share::pushed : Share::none;
    case mcastMacsRemote:
    case ucastMacsRemote:
        return wanted.remoteMacs ? Share::pushed : Share::none;
    default:
        return Share::all;
    }
}

/// The spellings of `text`, which is in lower case, that differ in the case of letters.
std::vector<std::string> caseSpellings(std::string const & text) {
    std::vector<std::string> spellings{text};
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] < 'a' || text[index] > 'f') {
            continue;
        }
        for (std::size_t known = 0, count = spellings.size(); known < count; ++known) {
            spellings.push_back(spellings[known]);
            spellings.back()[index] = static_cast<char>(text[index] - 'a' + 'A');
        }
    }
    return spellings;
}

/// Every spelling of `mac`, which is not zero.
std::vector<std::string> spellingsOf(Nolt::EthAddr mac) {
    std::string const colons = mac.stringValue();
    std::string dashes = colons;
    std::replace(dashes.begin(), dashes.end(), ':', '-');
    std::vector<std::string> all;
    for (std::string const & separated : {colons, dashes, std::string(mac.displayString())}) {
        auto const some = caseSpellings(separated);
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

} // namespace

std::string_view nameOf(Table table) {
    return selectOf(table).name;
}

void Request::add(Table table, Where where) {
    tables_.push_back(table);
    where_.push_back(std::move(where));
}

Request Request::survey() {
    Request request;
    request.add(logicalSwitch, {});
    return request;
}

Request Request::of(Wanted const & wanted, DatabaseSchema const & schema) {
    Request request;
    request.asksForLocatorKey_ = schema.locatorKey;
    std::vector<std::string> spellings{""};
    if (!wanted.mac.isZero() && spellingsOf(wanted.mac).size() <= mostPushed) {
        spellings = spellingsOf(wanted.mac);
    }
    std::vector<Where> pushed;
    // Of the two conditions, the MAC address matches fewer rows.
    if (wanted.logicalSwitches && wanted.logicalSwitches->size() * spellings.size() <= mostPushed) {
        request.pushed_ = wanted.logicalSwitches;
        for (auto const & row : *wanted.logicalSwitches) {
            addWheres(row, spellings, pushed);
        }
    } else {
        addWheres({}, spellings, pushed);
    }
    for (Select const & select : selects) {
        switch (shareOf(select.table, wanted, schema)) {
        case Share::none:
            break;
        case Share::pushed:
            for (Where const & where : pushed) {
                request.add(select.table, where);
            }
            break;
        case Share::all:
            request.add(select.table, {});
        }
    }
    return request;
}

void Request::addWheres(std::optional<Uuid> const & logicalSwitch,
                        std::vector<std::string> const & macs, std::vector<Where> & wheres) {
    for (std::string const & mac : macs) {
        wheres.push_back({logicalSwitch, mac});
    }
}

std::string Request::conditions(Where const & where) {
    std::string text;
    if (where.logicalSwitch) {
        text.append(R"(["logical_switch","==",["uuid",")").append(textOf(*where.logicalSwitch));
        text.append("\"]]");
    }
    if (!where.mac.empty()) {
        text.append(text.empty() ? "" : ",").append(R"(["MAC","==",")").append(where.mac);
        text.append("\"]");
    }
    return text;
}

std::string Request::text() const {
    std::string text = R"(["hardware_vtep")";
    for (std::size_t index = 0; index < tables_.size(); ++index) {
        Select const & select = selectOf(tables_[index]);
        text.append(R"(,{"op":"select","table":")").append(select.name).append(R"(","where":[)");
        text.append(conditions(where_[index]));
        text.append(R"(],"columns":[)").append(columnsOf(select, asksForLocatorKey_)).append("]}");
    }
    return text.append("]");
}

} // namespace vxshow::sources::ovsdb
