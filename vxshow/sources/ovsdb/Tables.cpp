#include "vxshow/sources/ovsdb/Tables.h"

#include "vxshow/text/JsonMembers.h"
#include "vxshow/text/Quoting.h"

#include <array>

namespace vxshow::sources::ovsdb {

namespace {

using Side = Join::Side;

constexpr std::string_view aText = "a text";

std::string takeText(text::JsonValue & value) {
    return std::string(value.text(aText).text());
}

/// Reads a row, which has exactly the columns `names`: `take(index, cell)` for each of them.
/// Returns where the row starts.
template <std::size_t count, class Take>
void readRow(text::JsonValue & value, std::array<text::MemberName, count> const & names,
             Take && take) {
    auto const * const start = value.at();
    text::Members members(names);
    value.members("a row", [&](text::JsonText const & name, text::JsonValue & cell) {
        take(members.take(name), cell);
    });
    for (std::size_t index = 0; index < count; ++index) {
        members.require(index, start);
    }
}

Join::References readAll(text::JsonValue & cell, Join & join) {
    Join::References all;
    readReferences(cell, [&](Reference const & one) {
        join.step();
        all.push_back(one);
    });
    return all;
}

/// A row of a logical switch or a locator, which have a text column, `textColumn`, and a key.
struct KeyedRow {
    Reference row{};
    std::string text;
    Join::Key key;
};

KeyedRow readKeyedRow(text::JsonValue & value, std::string_view textColumn) {
    std::array<text::MemberName, 3> const names{"_uuid", textColumn, "tunnel_key"};
    KeyedRow read;
    readRow(value, names, [&](std::size_t column, text::JsonValue & cell) {
        switch (column) {
        case 0:
            read.row = readReference(cell);
            break;
        case 1:
            read.text = takeText(cell);
            break;
        default:
            read.key = readOptionalInteger(cell);
        }
    });
    return read;
}

void readLogicalSwitch(text::JsonValue & value, Join & join) {
    auto read = readKeyedRow(value, "name");
    join.logicalSwitch(read.row, std::move(read.text), read.key);
}

void readLocator(text::JsonValue & value, Join & join) {
    auto const read = readKeyedRow(value, "dst_ip");
    join.locator(read.row, read.text, read.key);
}

void readLocatorSet(text::JsonValue & value, Join & join) {
    static constexpr std::array<text::MemberName, 2> names{"_uuid", "locators"};
    Reference row{};
    Join::References locators;
    readRow(value, names, [&](std::size_t column, text::JsonValue & cell) {
        if (column == 0) {
            row = readReference(cell);
        } else {
            locators = readAll(cell, join);
        }
    });
    join.locatorSet(row, locators);
}

void readPhysicalSwitch(text::JsonValue & value, Join & join) {
    static constexpr std::array<text::MemberName, 3> names{"name", "tunnel_ips", "ports"};
    std::string name;
    std::vector<std::string> ips;
    Join::References ports;
    readRow(value, names, [&](std::size_t column, text::JsonValue & cell) {
        switch (column) {
        case 0:
            name = takeText(cell);
            break;
        case 1:
            readTexts(cell, [&](text::JsonText const & ip) {
                join.step();
                ips.emplace_back(ip.text());
            });
            break;
        default:
            ports = readAll(cell, join);
        }
    });
    join.physicalSwitch(name, ips, ports);
}

void readPort(text::JsonValue & value, Join & join) {
    static constexpr std::array<text::MemberName, 3> names{"_uuid", "name", "vlan_bindings"};
    Reference row{};
    Join::References bound;
    readRow(value, names, [&](std::size_t column, text::JsonValue & cell) {
        switch (column) {
        case 0:
            row = readReference(cell);
            break;
        case 1:
            cell.text(aText).text();
            break;
        default:
            readMap(
                cell, [](text::JsonValue & vlan) { vlan.integer("a VLAN"); },
                [&](text::JsonValue & to) {
                    join.step();
                    bound.push_back(readReference(to));
                });
        }
    });
    join.port(row, bound);
}

void readRouter(text::JsonValue & value, Join & join) {
    static constexpr std::array<text::MemberName, 3> names{"name", "switch_binding",
                                                           "static_routes"};
    std::string name;
    std::vector<std::pair<std::string, Reference>> ports;
    std::vector<std::pair<std::string, std::string>> routes;
    std::string key;
    auto const takeKey = [&](text::JsonValue & half) {
        join.step();
        key = takeText(half);
    };
    readRow(value, names, [&](std::size_t column, text::JsonValue & cell) {
        switch (column) {
        case 0:
            name = takeText(cell);
            break;
        case 1:
            readMap(cell, takeKey,
                    [&](text::JsonValue & to) { ports.emplace_back(key, readReference(to)); });
            break;
        default:
            readMap(cell, takeKey,
                    [&](text::JsonValue & to) { routes.emplace_back(key, takeText(to)); });
        }
    });
    join.router(name, ports, routes);
}

/// There are no facts for these; their form is checked all the same.
void readArpSource(text::JsonValue & value, Join & /* none of this is known elsewhere */) {
    static constexpr std::array<text::MemberName, 2> names{"src_mac", "locator"};
    readRow(value, names, [&](std::size_t column, text::JsonValue & cell) {
        if (column == 0) {
            cell.text(aText).text();
        } else {
            readReference(cell);
        }
    });
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

/// `take` is the member of the join for such a row.
void readMacRow(text::JsonValue & value, std::array<text::MemberName, 4> const & names, Table table,
                Side side, Join & join, void (Join::*take)(Join::MacRow const &)) {
    CellText mac;
    CellText ip;
    Reference logicalSwitch{};
    Reference target{};
    readRow(value, names, [&](std::size_t column, text::JsonValue & cell) {
        switch (column) {
        case 0:
            mac.take(cell);
            break;
        case 1:
            ip.take(cell);
            break;
        case 2:
            target = readReference(cell);
            break;
        default:
            logicalSwitch = readReference(cell);
        }
    });
    (join.*take)({table, side, mac.text(), logicalSwitch, target, ip.text()});
}

template <class Read>
void eachRow(text::JsonValue & value, Join & join, Read && read) {
    value.elements("a list of rows", [&](text::JsonValue & row) {
        join.step();
        read(row);
    });
}

void readRows(text::JsonValue & rows, Table table, Join & join) {
    static constexpr std::array<text::MemberName, 4> ucast{"MAC", "ipaddr", "locator",
                                                           "logical_switch"};
    static constexpr std::array<text::MemberName, 4> mcast{"MAC", "ipaddr", "locator_set",
                                                           "logical_switch"};
    auto const each = [&](void (*read)(text::JsonValue &, Join &)) {
        eachRow(rows, join, [&](text::JsonValue & row) { read(row, join); });
    };
    auto const macs = [&](auto const & names, Side side, void (Join::*take)(Join::MacRow const &)) {
        eachRow(rows, join,
                [&](text::JsonValue & row) { readMacRow(row, names, table, side, join, take); });
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
        return macs(mcast, Side::local, &Join::multicast);
    case Table::mcastMacsRemote:
        return macs(mcast, Side::remote, &Join::multicast);
    case Table::ucastMacsLocal:
        return macs(ucast, Side::local, &Join::unicast);
    case Table::ucastMacsRemote:
        return macs(ucast, Side::remote, &Join::unicast);
    }
}

} // namespace

void readSelect(text::JsonValue & value, Table table, Join & join) {
    enum Name : std::size_t { rows, error, details, syntax };

    static constexpr std::array<text::MemberName, 4> names{"rows", "error", "details", "syntax"};
    constexpr std::string_view expected = "an object with \"rows\"";
    auto const * const start = value.at();
    text::Members members(names);
    std::string problem;
    std::string more;
    bool schema = false;
    value.members(expected, [&](text::JsonText const & name, text::JsonValue & member) {
        switch (members.take(name)) {
        case rows:
            return readRows(member, table, join);
        case error: {
            auto const word = member.text(aText).text();
            // The first is what Open vSwitch sends, the second is from RFC 7047.
            schema = word == "syntax error" || word == "unknown column";
            problem = text::shownText(word);
            break;
        }
        case details:
            more = ": " + text::shownText(member.text(aText).text());
            break;
        default:
            member.text(aText).text();
        }
    });
    if (members.has(error)) {
        throw SelectRefused{problem + more, schema};
    }
    if (!members.has(rows)) {
        throw text::Refusal{start, std::string(expected)};
    }
}

} // namespace vxshow::sources::ovsdb
