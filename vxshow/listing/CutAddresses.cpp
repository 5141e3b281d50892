#include "vxshow/listing/CutAddresses.h"

#include "vxshow/listing/CellText.h"

#include <array>
#include <string_view>

namespace vxshow::listing {

namespace {

namespace Cli = VxlanController::Cli;

// The widths of the columns in the fixed text, in bytes.
constexpr std::size_t arpAddressWidth = 15;
constexpr std::size_t mapVtepWidth = 15;
constexpr std::size_t portAddressWidth = 18;
constexpr std::size_t prefixWidth = 18;
constexpr std::size_t nexthopsWidth = 49;

constexpr std::size_t nexthopsPerRow = 3;
constexpr std::size_t betweenNexthops = 2; ///< a comma and a blank

/// Whether the first `room` bytes of the text are another address or prefix.
bool readsAsAnother(Cell const & address, std::size_t room) {
    std::array<char, maxValueLength> text;
    auto const length =
        static_cast<std::size_t>(writeValue(address, text.data(), {}) - text.data());
    if (length <= room || room == 0) {
        return false;
    }
    std::string_view const shown(text.data(), room);
    return Nolt::IpGenAddr::tryFromString(shown) || Nolt::IpGenAddrWithMask::tryFromString(shown);
}

std::size_t lengthOf(Nolt::IpGenAddr const & address) {
    std::array<char, Nolt::IpGenAddr::maxTextLength> text;
    return static_cast<std::size_t>(address.writeTo(text.data()) - text.data());
}

std::size_t cutArpAddresses(Cli::VxlanFdbSet::ArpTableCollection const & tables) {
    std::size_t cut = 0;
    for (Cli::VxlanArpTable const & table : tables) {
        for (Cli::VxlanArpEntry const & entry : table.arpEntry()) {
            cut += readsAsAnother(entry.ipAddress(), arpAddressWidth);
        }
    }
    return cut;
}

std::size_t cutNexthops(Cli::LRRoute const & route) {
    std::size_t cut = 0;
    std::size_t inRow = 0;
    std::size_t used = 0;
    for (Nolt::IpGenAddr const & nexthop : route.nexthop()) {
        if (inRow++ == nexthopsPerRow) {
            inRow = 1;
            used = 0;
        }
        cut += used < nexthopsWidth && readsAsAnother(nexthop, nexthopsWidth - used);
        used += lengthOf(nexthop) + betweenNexthops;
    }
    return cut;
}

} // namespace

std::size_t cutAddresses(Cli::VxlanVtepSet const & collected) {
    std::size_t cut = 0;
    for (Cli::VxlanVtep const & vtep : collected.vtep()) {
        cut += cutArpAddresses(vtep.arpTable());
    }
    return cut;
}

std::size_t cutAddresses(Cli::VxlanFdbSet const & collected) {
    return cutArpAddresses(collected.arpTable());
}

std::size_t cutAddresses(Cli::VcsLRMap const & command) {
    std::size_t cut = 0;
    for (Cli::LRMap const & router : command.lRMap()) {
        for (Cli::SwitchMap const & member : router.switchList()) {
            cut += readsAsAnother(member.vtepAddr(), mapVtepWidth);
        }
    }
    return cut;
}

std::size_t cutAddresses(Cli::VcsLR const & command) {
    std::size_t cut = 0;
    for (Cli::LRDetail const & router : command.lRDetail()) {
        for (VxlanController::LRIpPortV2 const & port : router.ipPort()) {
            cut += readsAsAnother(port.ip(), portAddressWidth);
        }
        for (Cli::LRIpUplinkPortAddress const & uplink : router.ipUplinkPort()) {
            // Without ports the text has no row.
            cut += !uplink.port().empty() && readsAsAnother(uplink.ip(), portAddressWidth);
        }
    }
    return cut;
}

std::size_t cutAddresses(Cli::VcsLRRoute const & command) {
    std::size_t cut = 0;
    for (Cli::LRRouteByName const & router : command.lRRouteByName()) {
        for (Cli::LRRoute const & route : router.lRRoute()) {
            cut += readsAsAnother(route.prefix(), prefixWidth);
            cut += cutNexthops(route);
        }
    }
    return cut;
}

} // namespace vxshow::listing
