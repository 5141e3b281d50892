#include "VxlanController/mac/AdvertisedJson.h"

#include "VxlanController/mac/VniTablesJson.h"

namespace VxlanController::Cli {

void renderFdbJson(outfmt::Printer & printer, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis, Vex::U32 revision) {
    printer.start();
    renderVniList(printer, dotted, vnis, revision);
    printer.end();
}

} // namespace VxlanController::Cli
