#include "VxlanController/router/DetailJson.h"

#include "VxlanController/command/ValueText.h"
#include "outfmt/AttrInfo.h"

namespace VxlanController::Cli {

namespace {

void renderIpPorts(outfmt::Printer & printer, LRDetail const & router) {
    outfmt::Attr32Info vni(printer, "vni");
    outfmt::StringAttrInfo mac(printer, "mac");
    outfmt::StringAttrInfo vtepIp(printer, "vtepIp");

    printer.startDict("ipPort");
    for (LRIpPortV2 const & port : router.ipPort()) {
        vni.setValue(static_cast<int>(port.vni().value()));
        mac.setValue(port.mac());
        vtepIp.setValue(port.vtep());
        printer.startDict(ValueText(port.ip()).view());
        printer.addAttributesJson(3, vni.getArg(), mac.getArg(), vtepIp.getArg());
        printer.endDict();
    }
    printer.endDict();
}

void renderUplinkPorts(outfmt::Printer & printer, LRDetail const & router) {
    outfmt::Attr32Info vlan(printer, "vlan");
    outfmt::StringAttrInfo mac(printer, "mac");
    outfmt::StringAttrInfo switchId(printer, "switchId");
    outfmt::StringAttrInfo vtepIp(printer, "vtepIp");
    outfmt::StringAttrInfo port(printer, "");

    printer.startDict("uplinkPort");
    for (LRIpUplinkPortAddress const & uplink : router.ipUplinkPort()) {
        vlan.setValue(uplink.vlanId().value());
        mac.setValue(uplink.mac());
        switchId.setValue(uplink.switchId());
        vtepIp.setValue(uplink.vtep());
        printer.startDict(ValueText(uplink.ip()).view());
        printer.addAttributesJson(4, vlan.getArg(), mac.getArg(), switchId.getArg(),
                                  vtepIp.getArg());
        printer.startList("ports");
        for (Vex::String const & name : uplink.port()) {
            port.setValue(name);
            printer.addAttributesJson(1, port.getArg());
        }
        printer.endList();
        printer.endDict();
    }
    printer.endDict();
}

} // namespace

void renderLRJson(outfmt::Printer & printer, VcsLR const * vcsLR) {
    printer.start();
    printer.startDict("router");
    for (LRDetail const & router : vcsLR->lRDetail()) {
        printer.startDict(router.lRName());
        renderIpPorts(printer, router);
        renderUplinkPorts(printer, router);
        printer.endDict();
    }
    printer.endDict();
    printer.end();
}

} // namespace VxlanController::Cli
