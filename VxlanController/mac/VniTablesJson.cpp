#include "VxlanController/mac/VniTablesJson.h"

#include "VxlanController/mac/Row.h"
#include "outfmt/AttrInfo.h"

namespace VxlanController::Cli {

namespace {

/// The attributes of all entries, created once per list of VNIs: only their values change.
struct Attributes {
    explicit Attributes(outfmt::Printer const & printer)
        : macAddress(printer, "macAddress"), vni(printer, "vni"), macAddr(printer, "macAddr"),
          vtepIp(printer, "vtepIp"), timeLearned(printer, "timeLearned"),
          moveCount(printer, "moveCount"), vtepIpListType(printer, "vtepIpListType"),
          listedVtepIp(printer, "") {
        timeLearned.setValue(0);
    }

    outfmt::StringAttrInfo macAddress;
    outfmt::Attr32Info vni;
    outfmt::StringAttrInfo macAddr;
    outfmt::StringAttrInfo vtepIp;
    outfmt::Attr64Info timeLearned;
    outfmt::Attr32Info moveCount;
    outfmt::StringAttrInfo vtepIpListType;
    outfmt::StringAttrInfo listedVtepIp;
};

void renderUcastTable(outfmt::Printer & printer, Attributes & attributes, VniStatus const & status,
                      Vex::U32 revision) {
    constexpr Vex::U32 revisionWithTimeLearned = 1;
    printer.startList("unicastHostTable");
    for (MacVtep const & entry : status.macVtepTable()) {
        printer.startListEntry();
        attributes.macAddr.setValue(entry.macAddr());
        attributes.vtepIp.setValue(entry.vtepIp());
        attributes.moveCount.setValue(signedCount(entry.moveCount()));
        if (revision == revisionWithTimeLearned) {
            printer.addAttributesJson(4, attributes.macAddr.getArg(), attributes.vtepIp.getArg(),
                                      attributes.timeLearned.getArg(),
                                      attributes.moveCount.getArg());
        } else {
            printer.addAttributesJson(3, attributes.macAddr.getArg(), attributes.vtepIp.getArg(),
                                      attributes.moveCount.getArg());
        }
        printer.endListEntry();
    }
    printer.endList();
}

template <class VtepIps>
void renderVtepIpList(outfmt::Printer & printer, Attributes & attributes, Nolt::EthAddr const & mac,
                      VtepIps const & vteps) {
    printer.startListEntry();
    attributes.macAddr.setValue(mac);
    printer.addAttributesJson(2, attributes.vtepIpListType.getArg(), attributes.macAddr.getArg());
    printer.startList("vtepIpList");
    for (Nolt::IpAddr vtep : vteps) {
        attributes.listedVtepIp.setValue(vtep);
        printer.addAttributesJson(1, attributes.listedVtepIp.getArg());
    }
    printer.endList();
    printer.endListEntry();
}

void renderFdbBumTable(outfmt::Printer & printer, Attributes & attributes,
                       VniStatus const & status) {
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

void renderVniStatus(outfmt::Printer & printer, Attributes & attributes, VniStatus const & status,
                     Vex::U32 revision) {
    attributes.macAddress.setValue(status.macAddress());
    attributes.vni.setValue(static_cast<std::int32_t>(status.vni().value()));

    printer.startListEntry();
    printer.addAttributesJson(2, attributes.macAddress.getArg(), attributes.vni.getArg());
    renderUcastTable(printer, attributes, status, revision);
    renderFdbBumTable(printer, attributes, status);
    printer.endListEntry();
}

} // namespace

void renderUcastTable(VniStatus const * status, outfmt::Printer & printer, Vex::U32 revision) {
    Attributes attributes(printer);
    renderUcastTable(printer, attributes, *status, revision);
}

void renderFdbBumTable(VniStatus const * status, outfmt::Printer & printer) {
    Attributes attributes(printer);
    renderFdbBumTable(printer, attributes, *status);
}

void renderBumTable(VniStatus const * status, outfmt::Printer & printer) {
    renderFdbBumTable(status, printer);
}

void renderVniList(outfmt::Printer & printer, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis, Vex::U32 revision) {
    outfmt::BoolAttrInfo vniInDottedNotation(printer, "vniInDottedNotation");
    vniInDottedNotation.setValue(dotted);
    printer.addAttributesJson(1, vniInDottedNotation.getArg());
    printer.startList("vnis");
    if (vnis) {
        Attributes attributes(printer);
        for (VniStatus const & status : vnis->vniEntry()) {
            renderVniStatus(printer, attributes, status, revision);
        }
    }
    printer.endList();
}

} // namespace VxlanController::Cli
