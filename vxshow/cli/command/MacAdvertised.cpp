#include "Vex/Errors.h"
#include "vxshow/cli/FixedValues.h"
#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/EntryNames.h"
#include "vxshow/cli/command/Filters.h"
#include "vxshow/listing/MacRows.h"

#include <CLI/Error.hpp>
#include <CLI/Option.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

/// The words for the destinations, the last two as the library takes them.
constexpr std::array<std::string_view, 3> destinations{"switches", "hsc", "evpn"};

struct MacAdvertised {
    MacFilters typed;
    std::string destination; ///< for the library; empty: the switches
    Vex::Ptr<Cli::VcsVniAdvertised> command;

    void addFilters(CLI::App & options) {
        typed.addTo(options);
        addDestination(options);
    }

    state::Selection selection() const {
        return {.received = false,
                .routers = false,
                .arpTables = false,
                .vni = typed.vnis.one,
                .mac = typed.macs.one};
    }

    std::vector<std::string> unknown(state::Reading const & /* state */) const { return {}; }

    state::Mount::Advertised narrowed(state::Mount::Advertised const & advertised) const {
        auto const tables = typed.narrowing();
        if (tables.keepsAll()) {
            return advertised;
        }
        auto const vniOf = [](std::string_view name) {
            return vniOfEntryName(std::string(name), NoNumber::isZero);
        };
        state::Mount::Advertised result = advertised;
        if (destination == "hsc") {
            result.sources = state::narrow::narrowedSources(advertised.sources, {}, tables);
        } else if (destination == "evpn") {
            result.evpn = state::narrow::narrowedEvpn(advertised.evpn, {}, tables);
        } else {
            result.vnis = state::narrow::narrowedEntries(advertised.vnis, vniOf, tables);
        }
        return result;
    }

    void build(state::Mount const & mount, Output const & output) {
        auto const state = narrowed(mount.advertised);
        command = Cli::vcsVniAdvertisedFactory(
            state.vnis, state.sources, state.evpn, output.vniDotted, typed.vnis.one, typed.macs.one,
            destination, vtepListOf(typed.vteps, state.vnis, state.sources, state.evpn));
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount, output);
        renderNamingInvalidEntry(mount.advertised.vnis, NoNumber::isZero,
                                 [&] { renderOn(fd, output, *command); });
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        renderNamingInvalidEntry(mount.advertised.vnis, NoNumber::isZero,
                                 [&] { command->initialize(); });
        return {command};
    }

    static listing::Tables tables() { return listing::macAdvertisedTables; }

    void walkTable(state::Mount const & mount, std::size_t table, listing::RowSink & sink) const {
        listing::walk(*command, mount.counters, table, sink);
    }

private:
    void addDestination(CLI::App & options) {
        auto * const option = options.add_option_function<std::string>(
            "--dest", [this](std::string const & word) { destination = checkedDestination(word); },
            "hsc, evpn: what that destination is told; switches, as without it: what the "
            "switches are told, which is the same for all of them");
        option->type_name("NAME")->group(filterGroup);
        declareValues(*option, {destinations.begin(), destinations.end()});
    }

    static std::string checkedDestination(std::string const & word) {
        if (!word.empty() &&
            std::find(destinations.begin(), destinations.end(), word) == destinations.end()) {
            throw CLI::ValidationError("--dest",
                                       Vex::quoted(word) + ": expected switches, hsc or evpn");
        }
        return word == destinations.front() ? "" : word;
    }
};

} // namespace

void addMacAdvertised(CLI::App & mac, CommandLine & chosen) {
    addCommand<MacAdvertised>(
        mac, "advertised", "The MAC tables advertised to switches or another destination", chosen);
}

Collection collectMacAdvertised(CLI::App & options) {
    return addCollection<MacAdvertised>(options);
}

} // namespace vxshow::cli::command
