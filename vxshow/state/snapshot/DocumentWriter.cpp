#include "vxshow/state/snapshot/DocumentWriter.h"

#include "state/VniFdbStatusV2.h"
#include "vxshow/state/SourceNames.h"
#include "vxshow/state/snapshot/Directory.h"
#include "vxshow/state/snapshot/EvpnTables.h"
#include "vxshow/state/snapshot/PublishedTables.h"
#include "vxshow/state/snapshot/Routers.h"

#include <initializer_list>

namespace vxshow::state::snapshot {

namespace {

namespace Cli = VxlanController::Cli;
using VxlanController::VniFdbStatusV2;
using VxlanController::VniStatusDirV2;

class Writer {
public:
    explicit Writer(outfmt::Printer & printer) : values_(printer) {}

    void write(Mount const & mount) {
        values_.text("format", "vxlan-controller-state");
        values_.number("version", 1);
        auto const & received = mount.received;
        auto const & advertised = mount.advertised;
        auto const & routers = mount.routers;
        writePart("received", received.switches || received.sources || received.evpn, [&] {
            if (received.switches) {
                writeSwitches(*received.switches);
            }
            writeSources(received.sources, {hscName, qvxName});
            writeEvpnSources(received.evpn);
        });
        writePart("advertised", advertised.vnis || advertised.sources || advertised.evpn, [&] {
            if (advertised.vnis) {
                writeVniEntries(*advertised.vnis);
            }
            writeSources(advertised.sources, {hscName});
            writeEvpnSources(advertised.evpn);
        });
        writePart("routers", routers.switchInfoDir || routers.publishStatus || routers.lRStatusDir,
                  [&] { writeRouters(values_, routers); });
    }

private:
    template <class Fill>
    void writePart(std::string_view name, bool there, Fill && fill) {
        if (there) {
            values_.object(name, fill);
        }
    }

    void writeSwitches(Vex::Dir const & switches) {
        writeDirectory<VniStatusDirV2>(
            values_, "switches", switches,
            [&](VniStatusDirV2 const & source) { writeTables(values_, source); });
    }

    void writeVniEntries(Vex::Dir const & entries) {
        writeDirectory<VniFdbStatusV2>(values_, "vnis", entries, [&](VniFdbStatusV2 const & entry) {
            writeTables(values_, entry);
        });
    }

    /// The member `key` with a member for each of `sources`, a collection by name, whose
    /// pointers are never null.
    template <class Sources, class Write>
    void writeByName(std::string_view key, Sources const & sources,
                     std::initializer_list<std::string_view> known, Write && write) {
        values_.object(key, [&] {
            for (auto at = sources.begin(); at; ++at) {
                std::string_view const name = at.key();
                if (std::find(known.begin(), known.end(), name) == known.end()) {
                    throw Unwritable("a snapshot has no place for the source " + Vex::quoted(name));
                }
                values_.object(name, [&] { write(*at); });
            }
        });
    }

    void writeSources(Vex::Ptr<Cli::VniStatusDirList> const & list,
                      std::initializer_list<std::string_view> known) {
        if (list) {
            writeByName("sources", list->vniStatusDir(), known,
                        [&](VniStatusDirV2 const & source) { writeTables(values_, source); });
        }
    }

    void writeEvpnSources(Vex::Ptr<Cli::HostFloodTableList> const & list) {
        if (list) {
            writeByName("evpn", list->hostFloodTable(), {evpnName},
                        [&](Cli::HostFloodTable const & tables) { writeEvpn(values_, tables); });
        }
    }

    ValuesWriter values_;
};

} // namespace

void writeSnapshot(Mount const & mount, outfmt::Printer & printer) {
    printer.start();
    Writer(printer).write(mount);
    printer.end();
    printer.flush();
}

} // namespace vxshow::state::snapshot
