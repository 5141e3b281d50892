#include "vxshow/sources/ovsdb/Tables.h"

#include "vxshow/text/JsonFields.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::ovsdb {

namespace {

using Side = Join::Side;

constexpr std::string_view aText = "a text";

std::string takeText(text::JsonValue & value) {
    return std::string(value.text(aText).text());
}

Join::References readAll(text::JsonValue & cell, Join & join) {
    Join::References all;
    readReferences(cell, [&](Reference const & one) {
        join.step();
        all.push_back(one);
    });
    return all;
}

/// The column that is the row's own identity.
template <class Row>
constexpr auto identityColumn(Reference Row::*row) {
    return text::requiredMember("_uuid", [row](text::JsonValue & cell, Row & into, Join &) {
        into.*row = readReference(cell);
    });
}

template <class Row>
constexpr auto textColumn(text::MemberName name, std::string Row::*text) {
    return text::requiredMember(
        name, [text](text::JsonValue & cell, Row & into, Join &) { into.*text = takeText(cell); });
}

template <class Row>
constexpr auto referencesColumn(text::MemberName name, Join::References Row::*references) {
    return text::requiredMember(name,
                                [references](text::JsonValue & cell, Row & into, Join & join) {
                                    into.*references = readAll(cell, join);
                                });
}

/// The table of a row, which has exactly these columns.
template <class... Columns>
constexpr auto rowOf(Columns... columns) {
    return text::strictObject("a row", columns...);
}

/// A row of a logical switch or a locator: they have a text and a key.
struct KeyedRow {
    Reference row{};
    std::string text;
    Join::Key key;
};

constexpr auto takeTunnelKey = [](text::JsonValue & cell, KeyedRow & into, Join &) {
    into.key = readOptionalInteger(cell);
};
constexpr auto logicalSwitchRow =
    rowOf(identityColumn(&KeyedRow::row), textColumn("name", &KeyedRow::text),
          text::requiredMember("tunnel_key", takeTunnelKey));
/// Older schemas have no key of a locator.
constexpr auto locatorRow =
    rowOf(identityColumn(&KeyedRow::row), textColumn("dst_ip", &KeyedRow::text),
          text::optionalMember("tunnel_key", takeTunnelKey));

void readLogicalSwitch(text::JsonValue & value, Join & join) {
    KeyedRow read;
    logicalSwitchRow.read(value, read, join);
    join.logicalSwitch(read.row, std::move(read.text), read.key);
}

void readLocator(text::JsonValue & value, Join & join) {
    KeyedRow read;
    locatorRow.read(value, read, join);
    join.locator(read.row, read.text, read.key);
}

struct LocatorSetRow {
    Reference row{};
    Join::References locators;
};

constexpr auto locatorSetRow = rowOf(identityColumn(&LocatorSetRow::row),
                                     referencesColumn("locators", &LocatorSetRow::locators));

void readLocatorSet(text::JsonValue & value, Join & join) {
    LocatorSetRow read;
    locatorSetRow.read(value, read, join);
    join.locatorSet(read.row, read.locators);
}

struct PhysicalSwitchRow {
    std::string name;
    std::vector<std::string> ips;
    Join::References ports;
};

constexpr auto physicalSwitchRow =
    rowOf(textColumn("name", &PhysicalSwitchRow::name),
          text::requiredMember("tunnel_ips",
                               [](text::JsonValue & cell, PhysicalSwitchRow & into, Join & join) {
                                   readTexts(cell, [&](text::JsonText const & ip) {
                                       join.step();
                                       into.ips.emplace_back(ip.text());
                                   });
                               }),
          referencesColumn("ports", &PhysicalSwitchRow::ports));

void readPhysicalSwitch(text::JsonValue & value, Join & join) {
    PhysicalSwitchRow read;
    physicalSwitchRow.read(value, read, join);
    join.physicalSwitch(read.name, read.ips, read.ports);
}

struct PortRow {
    Reference row{};
    Join::References bound;
};

constexpr auto portRow = rowOf(
    identityColumn(&PortRow::row),
    text::requiredMember(
        "name", [](text::JsonValue & cell, PortRow &, Join &) { cell.text(aText).text(); }),
    text::requiredMember("vlan_bindings", [](text::JsonValue & cell, PortRow & into, Join & join) {
        readMap(
            cell, [](text::JsonValue & vlan) { vlan.integer("a VLAN"); },
            [&](text::JsonValue & to) {
                join.step();
                into.bound.push_back(readReference(to));
            });
    }));

void readPort(text::JsonValue & value, Join & join) {
    PortRow read;
    portRow.read(value, read, join);
    join.port(read.row, read.bound);
}

struct RouterRow {
    std::string name;
    std::vector<std::pair<std::string, Reference>> ports;
    std::vector<std::pair<std::string, std::string>> routes;
};

/// A map from texts to what `takeElement(JsonValue &)` makes of its values.
template <class Pairs, class TakeElement>
void readPairs(text::JsonValue & cell, Pairs & into, Join & join, TakeElement && takeElement) {
    std::string key;
    readMap(
        cell,
        [&](text::JsonValue & half) {
            join.step();
            key = takeText(half);
        },
        [&](text::JsonValue & half) { into.emplace_back(key, takeElement(half)); });
}

constexpr auto routerRow =
    rowOf(textColumn("name", &RouterRow::name),
          text::requiredMember("switch_binding",
                               [](text::JsonValue & cell, RouterRow & into, Join & join) {
                                   readPairs(cell, into.ports, join, readReference);
                               }),
          text::requiredMember("static_routes",
                               [](text::JsonValue & cell, RouterRow & into, Join & join) {
                                   readPairs(cell, into.routes, join, takeText);
                               }));

void readRouter(text::JsonValue & value, Join & join) {
    RouterRow read;
    routerRow.read(value, read, join);
    join.router(read.name, read.ports, read.routes);
}

constexpr auto arpSourceRow =
    rowOf(text::requiredMember("src_mac", [](text::JsonValue & cell) { cell.text(aText).text(); }),
          text::requiredMember("locator", [](text::JsonValue & cell) { readReference(cell); }));

/// There are no facts for these; their form is checked all the same.
void readArpSource(text::JsonValue & value, Join & /* none of this is known elsewhere */) {
    arpSourceRow.read(value);
}

/// A text of a row that is used once the whole row is read. A text without escapes stays in the
/// document; one with escapes is copied, since the next such text overwrites it.
class CellText {
public:
    void take(text::JsonValue & cell) {
        auto const text = cell.text(aText);
        auto const content = text.text();
        if (content.data() == text.content()) [[likely]] {
            text_ = content;
            return;
        }
        copy_.assign(content);
        text_ = copy_;
    }

    std::string_view text() const noexcept { return text_; }

private:
    std::string copy_;
    std::string_view text_;
};

/// A row of any of the four tables of MAC addresses.
struct MacRowTexts {
    CellText mac;
    CellText ip;
    Reference logicalSwitch{};
    Reference target{};
};

/// The table of such a row, which leads to its target by the column `target`.
constexpr auto macRowOf(text::MemberName target) {
    return rowOf(
        text::requiredMember(
            "MAC", [](text::JsonValue & cell, MacRowTexts & into) { into.mac.take(cell); }),
        text::requiredMember(
            "ipaddr", [](text::JsonValue & cell, MacRowTexts & into) { into.ip.take(cell); }),
        text::requiredMember(target, [](text::JsonValue & cell,
                                        MacRowTexts & into) { into.target = readReference(cell); }),
        text::requiredMember("logical_switch", [](text::JsonValue & cell, MacRowTexts & into) {
            into.logicalSwitch = readReference(cell);
        }));
}

constexpr auto unicastRow = macRowOf("locator");
constexpr auto multicastRow = macRowOf("locator_set");

/// `take` is the member of the join for such a row.
template <class Row>
void readMacRow(text::JsonValue & value, Row const & row, Table table, Side side, Join & join,
                void (Join::*take)(Join::MacRow const &)) {
    MacRowTexts read;
    row.read(value, read);
    (join.*take)({table, side, read.mac.text(), read.logicalSwitch, read.target, read.ip.text()});
}

template <class Read>
void eachRow(text::JsonValue & value, Join & join, Read && read) {
    value.elements("a list of rows", [&](text::JsonValue & row) {
        join.step();
        read(row);
    });
}

void readRows(text::JsonValue & rows, Table table, Join & join) {
    auto const each = [&](void (*read)(text::JsonValue &, Join &)) {
        eachRow(rows, join, [&](text::JsonValue & row) { read(row, join); });
    };
    auto const macs = [&](auto const & form, Side side, void (Join::*take)(Join::MacRow const &)) {
        eachRow(rows, join,
                [&](text::JsonValue & row) { readMacRow(row, form, table, side, join, take); });
    };
    switch (table) {
    case Table::logicalSwitch:
        return each(readLogicalSwitch);
    case Table::physicalLocator:
        return each(readLocator);
    case Table::physicalLocatorSet:
        return each(readLocatorSet);
    case Table::physicalSwitch:
        return each(readPhysicalSwitch);
    case Table::physicalPort:
        return each(readPort);
    case Table::logicalRouter:
        return each(readRouter);
    case Table::arpSourcesLocal:
    case Table::arpSourcesRemote:
        return each(readArpSource);
    case Table::mcastMacsLocal:
        return macs(multicastRow, Side::local, &Join::multicast);
    case Table::mcastMacsRemote:
        return macs(multicastRow, Side::remote, &Join::multicast);
    case Table::ucastMacsLocal:
        return macs(unicastRow, Side::local, &Join::unicast);
    case Table::ucastMacsRemote:
        return macs(unicastRow, Side::remote, &Join::unicast);
    }
}

constexpr std::string_view anAnswer = "an object with \"rows\"";

/// The answer to a select: rows, or an error.
struct SelectResult {
    bool hasRows = false;
    bool hasFailed = false;
    std::string problem = {};
    std::string details = {};
    bool schema = false;
};

constexpr auto selectObject = text::strictObject(
    anAnswer,
    text::optionalMember(
        "rows",
        [](text::JsonValue & value, SelectResult & into, Table table, Join & join) {
            into.hasRows = true;
            readRows(value, table, join);
        }),
    text::optionalMember("error",
                         [](text::JsonValue & value, SelectResult & into, Table, Join &) {
                             auto const word = value.text(aText).text();
                             into.hasFailed = true;
                             // The first is what Open vSwitch sends, the second is from RFC 7047.
                             into.schema = word == "syntax error" || word == "unknown column";
                             into.problem = text::shownText(word);
                         }),
    text::optionalMember("details",
                         [](text::JsonValue & value, SelectResult & into, Table, Join &) {
                             into.details = ": " + text::shownText(value.text(aText).text());
                         }),
    text::optionalMember("syntax", [](text::JsonValue & value, SelectResult &, Table, Join &) {
        value.text(aText).text();
    }));

} // namespace

void readSelect(text::JsonValue & value, Table table, Join & join) {
    auto const * const start = value.at();
    SelectResult select;
    selectObject.read(value, select, table, join);
    if (select.hasFailed) {
        throw SelectRefused{select.problem + select.details, select.schema};
    }
    if (!select.hasRows) {
        throw text::Refusal{start, std::string(anAnswer)};
    }
}

} // namespace vxshow::sources::ovsdb
