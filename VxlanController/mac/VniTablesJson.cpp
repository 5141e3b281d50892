#include "VxlanController/mac/VniTablesJson.h"

#include "VxlanController/mac/Row.h"
#include "outfmt/AttrInfo.h"

namespace VxlanController::Cli {

namespace {

void renderUcastTable(outfmt::Printer & printer, VniStatus const & status, Vex::U32 revision) {
    constexpr Vex::U32 revisionWithTimeLearned = 1;
    outfmt::StringAttrInfo macAddr(printer, "macAddr");
    outfmt::StringAttrInfo vtepIp(printer, "vtepIp");
    outfmt::Attr64Info timeLearned(printer, "timeLearned");
    outfmt::Attr32Info moveCount(printer, "moveCount");
    timeLearned.setValue(0);

    printer.startList("unicastHostTable");
    for (MacVtep const & entry : status.macVtepTable()) {
        printer.startListEntry();
        macAddr.setValue(entry.macAddr());
        vtepIp.setValue(entry.vtepIp());
        moveCount.setValue(signedCount(entry.moveCount()));
        if (revision == revisionWithTimeLearned) {
            printer.addAttributesJson(4, macAddr.getArg(), vtepIp.getArg(), timeLearned.getArg(),
                                      moveCount.getArg());
        } else {
            printer.addAttributesJson(3, macAddr.getArg(), vtepIp.getArg(), moveCount.getArg());
        }
        printer.endListEntry();
    }
    printer.endList();
}

/// The attributes of an entry of "bumVtepListTable", made once for the whole list.
struct BumAttributes {
    explicit BumAttributes(outfmt::Printer const & printer)
        : vtepIpListType(printer, "vtepIpListType"), macAddr(printer, "macAddr"),
          vtepIp(printer, "") {}

    outfmt::StringAttrInfo vtepIpListType;
    outfmt::StringAttrInfo macAddr;
    outfmt::StringAttrInfo vtepIp;
};

template <class VtepIps>
void renderVtepIpList(outfmt::Printer & printer, BumAttributes & attributes,
                      Nolt::EthAddr const & mac, VtepIps const & vteps) {
    printer.startListEntry();
    attributes.macAddr.setValue(mac);
    printer.addAttributesJson(2, attributes.vtepIpListType.getArg(), attributes.macAddr.getArg());
    printer.startList("vtepIpList");
    for (Nolt::IpAddr vtep : vteps) {
        attributes.vtepIp.setValue(vtep);
        printer.addAttributesJson(1, attributes.vtepIp.getArg());
    }
    printer.endList();
    printer.endListEntry();
}

/// The type of an entry is told by its table alone; a MAC in both tables is listed twice.
void renderBumTable(outfmt::Printer & printer, VniStatus const & status) {
    BumAttributes attributes(printer);
    printer.startList("bumVtepListTable");
    attributes.vtepIpListType.setValue("sendToAny");
    for (MacVtepMultiPath const & entry : status.macVtepMultiPathTable()) {
        renderVtepIpList(printer, attributes, entry.macAddr(), entry.vtepIpList());
    }
    attributes.vtepIpListType.setValue("sendToAll");
    for (MacVtepFloodList const & entry : status.macVtepFloodListTable()) {
        renderVtepIpList(printer, attributes, entry.macAddr(), entry.vtepIpFloodList());
    }
    printer.endList();
}

} // namespace

void renderVniStatus(outfmt::Printer & printer, VniStatus const & status, Vex::U32 revision) {
    outfmt::StringAttrInfo macAddress(printer, "macAddress");
    outfmt::Attr32Info vni(printer, "vni");
    macAddress.setValue(status.macAddress());
    vni.setValue(static_cast<std::int32_t>(status.vni().value()));

    printer.startListEntry();
    printer.addAttributesJson(2, macAddress.getArg(), vni.getArg());
    renderUcastTable(printer, status, revision);
    renderBumTable(printer, status);
    printer.endListEntry();
}

} // namespace VxlanController::Cli
