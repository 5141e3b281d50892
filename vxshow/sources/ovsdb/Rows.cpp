#include "vxshow/sources/ovsdb/Rows.h"

#include "vxshow/sources/Sorting.h"
#include "vxshow/sources/ovsdb/Content.h"
#include "vxshow/sources/ovsdb/Request.h"

#include <functional>
#include <utility>

namespace vxshow::sources::ovsdb {

namespace {

template <class Rows, class Row>
void insertNew(Rows & rows, Reference const & identity, Row && row) {
    if (!rows.emplace(identity.row, std::forward<Row>(row)).second) {
        throw text::Refusal{identity.at, "it once", " again"};
    }
}

template <class Rows>
auto & rowAt(Rows & rows, Reference const & to, Table table) {
    auto const found = rows.find(to.row);
    if (found == rows.end()) {
        throw text::Refusal{to.at, std::string("the _uuid of a row of ").append(nameOf(table))};
    }
    return found->second;
}

/// In order of memory addresses, which no result depends on.
template <class Row>
void sortUnique(std::vector<Row *> & rows, DeadlineWatch & watch) {
    sortList(rows, std::less<>(), watch);
    removeRepetitions(rows, std::equal_to<>(), watch);
}

} // namespace

std::optional<Vxlan::Vni> Rows::LogicalSwitch::vni() const {
    return key ? vniOfKey(*key) : std::nullopt;
}

std::optional<Vxlan::Vni> Rows::Locator::vni() const {
    return key ? vniOfKey(*key) : std::nullopt;
}

void Rows::addLogicalSwitch(Reference const & row, std::string name, Key key) {
    insertNew(logicalSwitches_, row, LogicalSwitch{std::move(name), key});
}

void Rows::addLocator(Reference const & row, std::string_view ip, Key key) {
    insertNew(locators_, row, Locator{std::string(ip), vtepIp(ip), key});
}

void Rows::addLocatorSet(Reference const & row, References const & locators,
                         DeadlineWatch & watch) {
    std::vector<Locator *> members;
    for (auto const & member : locators) {
        watch.step();
        members.push_back(&locator(member));
    }
    sortUnique(members, watch);
    insertNew(locatorSets_, row, LocatorSet{row.row, std::move(members)});
}

void Rows::addPort(Reference const & row, References const & logicalSwitches,
                   DeadlineWatch & watch) {
    std::vector<LogicalSwitch *> bound;
    for (auto const & to : logicalSwitches) {
        watch.step();
        bound.push_back(&logicalSwitch(to));
    }
    sortUnique(bound, watch);
    insertNew(ports_, row, std::move(bound));
}

Rows::LogicalSwitch & Rows::logicalSwitch(Reference const & to) {
    return rowAt(logicalSwitches_, to, Table::logicalSwitch);
}

Rows::Locator & Rows::locator(Reference const & to) {
    return rowAt(locators_, to, Table::physicalLocator);
}

Rows::LocatorSet & Rows::locatorSet(Reference const & to) {
    return rowAt(locatorSets_, to, Table::physicalLocatorSet);
}

std::vector<Rows::LogicalSwitch *> const & Rows::boundTo(Uuid const & port) const {
    static std::vector<LogicalSwitch *> const none;
    auto const found = ports_.find(port);
    return found == ports_.end() ? none : found->second;
}

} // namespace vxshow::sources::ovsdb
