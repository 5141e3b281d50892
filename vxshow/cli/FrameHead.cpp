#include "vxshow/cli/FrameHead.h"

#include "outfmt/Printer.h"
#include "vxshow/cli/MemberPrinter.h"
#include "vxshow/cli/OutputOptions.h"
#include "vxshow/system/MemoryFile.h"

namespace vxshow::cli {

namespace {

void printNames(outfmt::Printer & printer, std::string_view key, state::Origin const & origin,
                bool isShown) {
    MemberPrinter members(printer);
    printer.startList(key);
    for (state::SourceOrigin const & source : origin.sources) {
        if (!source.failure.empty() && source.read.has_value() == isShown) {
            members.text("", source.name);
        }
    }
    printer.endList();
}

} // namespace

std::string frameHead(system::UtcTime time, std::optional<state::Origin> const & origin,
                      std::string const & failure) {
    system::MemoryFile output;
    outfmt::Printer printer(output.descriptor(), static_cast<unsigned>(Format::compactJson), true,
                            false, true, 0);
    MemberPrinter members(printer);
    printer.start();
    printer.startDict("frame");
    members.text("time", time.stringValue());
    if (origin) {
        printNames(printer, "stale", *origin, true);
        printNames(printer, "failed", *origin, false);
    }
    if (!failure.empty()) {
        members.text("failure", failure);
    }
    printer.endDict();
    printer.end();
    printer.flush();
    return std::string(output.bytes().text());
}

} // namespace vxshow::cli
