#include "VxlanController/arp/ArpTableRenderer.h"

#include "VxlanController/arp/Changes.h"
#include "VxlanController/arp/Columns.h"
#include "VxlanController/mac/Row.h"

namespace VxlanController::Cli {

ArpTableRenderer::~ArpTableRenderer() = default;

void AdvertisedArpTableRenderer::renderIpToMac(Vex::Ptr<VxlanArpEntry const> const & entry,
                                               Vex::String const & vni) {
    printer().addFrills(advertisedArpTable.row, vni, entry->ipAddress(),
                        DisplayMac(entry->macAddress()), signedChanges(*entry));
}

void ReceivedArpTableRenderer::renderIpToMac(Vex::Ptr<VxlanArpEntry const> const & entry,
                                             Vex::String const & vni) {
    printer().addFrills(receivedArpTable.row, switchId_, vni, entry->ipAddress(),
                        DisplayMac(entry->macAddress()), signedChanges(*entry));
}

} // namespace VxlanController::Cli
