#include "VxlanController/arp/ArpTableRenderer.h"

#include "VxlanController/arp/Changes.h"
#include "VxlanController/mac/Row.h"

namespace VxlanController::Cli {

ArpTableRenderer::~ArpTableRenderer() = default;

void AdvertisedArpTableRenderer::renderIpToMac(Vex::Ptr<VxlanArpEntry const> const & entry,
                                               Vex::String const & vni) {
    printer().addFrills("%-8s %-15.15s %-18.18s %-9d\n", vni, entry->ipAddress(),
                        DisplayMac(entry->macAddress()), signedChanges(*entry));
}

void ReceivedArpTableRenderer::renderIpToMac(Vex::Ptr<VxlanArpEntry const> const & entry,
                                             Vex::String const & vni) {
    printer().addFrills("%-19.19s %-8s %-15.15s %-18.18s %-9d\n", switchId_, vni,
                        entry->ipAddress(), DisplayMac(entry->macAddress()), signedChanges(*entry));
}

} // namespace VxlanController::Cli
