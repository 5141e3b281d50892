#include "VxlanController/router/RoutesOutput.h"

#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/ValueText.h"
#include "VxlanController/router/GroupLabel.h"
#include "VxlanController/router/TableParts.h"
#include "outfmt/AttrInfo.h"

#include <cstddef>
#include <string_view>

namespace VxlanController::Cli {

namespace {

constexpr TextTable routeTable{
    {.title = "Name", .width = 11, .cell = Cell::cutText},
    {.title = "Prefix", .width = 18, .cell = Cell::cutText},
    {.title = "Nexthop", .width = 49, .cell = Cell::cutText},
};

/// The nexthops of one row, joined as its last column shows them.
class NexthopCells {
public:
    static constexpr int perRow = 3;

    void add(Nolt::IpGenAddr const & address) noexcept {
        if (count_++ != 0) {
            *end_++ = ',';
            *end_++ = ' ';
        }
        end_ = address.writeTo(end_);
    }

    bool empty() const noexcept { return count_ == 0; }

    bool full() const noexcept { return count_ == perRow; }

    std::string_view text() const noexcept {
        return {text_, static_cast<std::size_t>(end_ - text_)};
    }

    void clear() noexcept {
        end_ = text_;
        count_ = 0;
    }

private:
    char text_[perRow * (Nolt::IpGenAddr::maxTextLength + 2)];
    char * end_ = text_;
    int count_ = 0;
};

/// Prints the routes of one router.
class RoutePrinter {
public:
    RoutePrinter(outfmt::Printer & printer, LRRouteByName const & router)
        : printer_(printer), name_(router.lRName()), nexthop_(printer, "") {}

    void print(LRRoute const & route) {
        ValueText const prefix(route.prefix());
        GroupLabel prefixLabel(prefix.view());
        printer_.startDict(prefix.view());
        printer_.startList("nexthop");
        if (route.nexthop().empty()) {
            // The list and the route's dictionary stay open: the printer closes both when the
            // next dictionary starts or the enclosing one ends.
            printRow(prefixLabel, "");
            return;
        }
        for (Nolt::IpGenAddr const & address : route.nexthop()) {
            nexthop_.setValue(address);
            printer_.addAttributesJson(1, nexthop_.getArg());
            cells_.add(address);
            if (cells_.full()) {
                printCells(prefixLabel);
            }
        }
        if (!cells_.empty()) {
            printCells(prefixLabel);
        }
        printer_.endList();
        printer_.endDict();
    }

private:
    void printCells(GroupLabel & prefix) {
        printRow(prefix, cells_.text());
        cells_.clear();
    }

    void printRow(GroupLabel & prefix, std::string_view nexthops) {
        printer_.addFrills(routeTable.row, name_.forNextRow(), prefix.forNextRow(), nexthops);
    }

    outfmt::Printer & printer_;
    GroupLabel name_;
    outfmt::StringAttrInfo nexthop_;
    NexthopCells cells_;
};

} // namespace

void renderRoute(outfmt::Printer & printer, VcsLRRoute const * vcsLRRoute) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::renderRoute(outfmt::Printer&, "
                  "const VxlanController::Cli::VcsLRRoute*)";
    }
    std::size_t routes = 0;
    printer.start();
    printHeader(printer, routeTable, routeTable.rule);
    printer.startDict("route");
    for (LRRouteByName const & router : vcsLRRoute->lRRouteByName()) {
        RoutePrinter routePrinter(printer, router);
        routes += router.lRRoute().size();
        printer.startDict(router.lRName());
        printer.startDict("prefix");
        for (LRRoute const & route : router.lRRoute()) {
            routePrinter.print(route);
        }
        printer.endDict();
        printer.endDict();
    }
    printTotal(printer, routes);
    printer.endDict();
    printer.end();
}

} // namespace VxlanController::Cli
