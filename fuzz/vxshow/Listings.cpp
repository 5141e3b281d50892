#include "fuzz/vxshow/Listings.h"

#include "Vex/Errors.h"
#include "Vex/Reinstantiation.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Lines.h"
#include "outfmt/Printer.h"
#include "tests/unit/platform/outfmt/JsonReader.h"
#include "vxshow/state/snapshot/Document.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/JsonRefusal.h"

#include <stdexcept>

namespace fuzz {

using namespace vxshow;

namespace {

namespace Cli = VxlanController::Cli;

constexpr unsigned textFormat = 1;
constexpr unsigned compactFormat = 2;

class Renderer {
public:
    Renderer(unsigned format, Scratch & file) : format_(format), file_(file) {}

    template <class Command>
    void render(Command const & command) {
        file_.clear();
        command->render(static_cast<Vex::U32>(file_.descriptor()), format_, revision);
        if (format_ != textFormat) {
            outfmt::test::readJson(file_.content());
        }
    }

    /// For what is advertised: the library raises errors about the names of entries.
    template <class Command>
    void renderNamed(Command const & command) {
        try {
            render(command);
        } catch (Vex::RangeError const &) {
        } catch (Vex::ReinstantiationError const &) {
        } catch (std::invalid_argument const &) { // of std::stoi
        } catch (std::out_of_range const &) {
        }
    }

private:
    static constexpr Vex::U32 revision = 2;

    unsigned format_;
    Scratch & file_;
};

} // namespace

void renderAll(state::Mount const & mount, unsigned format, Scratch & file) {
    Renderer renderer(format, file);
    auto const & [received, advertised, routers] = mount;
    auto const vteps = Cli::vtepListFactory();
    renderer.render(Cli::vcsVniReceivedFactory(received.switches, received.sources, received.evpn,
                                               false, {}, {}, "", vteps));
    renderer.render(Cli::arpReceivedFactory(received.switches, true, {}, {}, {}, ""));
    for (auto const * destination : {"", "hsc", "evpn"}) {
        renderer.renderNamed(Cli::vcsVniAdvertisedFactory(advertised.vnis, advertised.sources,
                                                          advertised.evpn, true, {}, {},
                                                          destination, vteps));
    }
    renderer.renderNamed(Cli::arpAdvertisedFactory(advertised.vnis, false, {}, {}, {}));
    renderer.render(
        Cli::vcsLRMapFactory(routers.publishStatus, routers.switchInfoDir, "", "", vteps));
    renderer.render(Cli::vcsLRFactory(routers.publishStatus, routers.switchInfoDir,
                                      routers.lRStatusDir, false, ""));
    renderer.render(Cli::vcsLRRouteFactory(routers.lRStatusDir, "", {}));
}

std::optional<std::string> snapshotOf(state::Mount const & mount, Scratch & file) {
    file.clear();
    outfmt::Printer printer(file.descriptor(), compactFormat, true, false, true, 0);
    try {
        state::snapshot::writeSnapshot(mount, printer);
    } catch (state::snapshot::Unwritable const & error) {
        checkLine(error.what());
        return std::nullopt;
    }
    return file.content();
}

std::optional<state::Mount> mountOf(std::string_view text) {
    auto const bytes = system::FileBytes::copyOf(text);
    try {
        text::JsonReader json(bytes);
        return state::snapshot::readDocument(json, {});
    } catch (text::Refusal const & refusal) {
        checkLine(text::refusalLine(refusal, bytes.text()));
    } catch (text::MalformedJson const & malformed) {
        checkLine(text::refusalLine(malformed, bytes.text()));
    } catch (Vex::Error const & error) {
        checkLine(error.what());
    }
    return std::nullopt;
}

void checkSnapshot(state::Mount const & mount, Scratch & file) {
    auto const written = snapshotOf(mount, file);
    if (!written) {
        return;
    }
    outfmt::test::readJson(*written);
    auto const again = mountOf(*written);
    check(again.has_value(), "a snapshot that was written is refused");
    check(snapshotOf(*again, file) == written, "a snapshot that is read and written differs");
}

} // namespace fuzz
