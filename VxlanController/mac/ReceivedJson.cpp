#include "VxlanController/mac/ReceivedJson.h"

#include "VxlanController/mac/VniTablesJson.h"

namespace VxlanController::Cli {

namespace {

void renderJsonDict(outfmt::Printer & printer, std::string_view key, bool dotted,
                    Vex::Ptr<SwitchDir const> const & sources, Vex::U32 revision) {
    printer.startDict(key);
    if (sources) {
        for (Switch const & source : sources->switchList()) {
            printer.startDict(source.switchId());
            renderVniList(printer, dotted, source.vniStatusList(), revision);
            printer.endDict();
        }
    }
    printer.endDict();
}

} // namespace

void renderJson(outfmt::Printer & printer, bool dotted, Vex::Ptr<SwitchDir const> const & switches,
                Vex::Ptr<SwitchDir const> const & nonSwitchSources, Vex::U32 revision) {
    printer.start();
    renderJsonDict(printer, "switches", dotted, switches, revision);
    renderJsonDict(printer, "nonSwitchSources", dotted, nonSwitchSources, revision);
    printer.end();
}

} // namespace VxlanController::Cli
