#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct RouterMap {
    RouterFilter router;
    std::string switchId;
    Vex::Ptr<Cli::VtepList> vteps = Cli::vtepListFactory();
    Vex::Ptr<Cli::VcsLRMap> command;

    void addFilters(CLI::App & options) {
        router.addTo(options);
        options
            .add_option("--switch", switchId,
                        "Only the switch with this identifier, typed exactly as it is "
                        "published: the same address in another form is another identifier")
            ->type_name("ID");
        addVtepFilter(options, *vteps,
                      "Only the switches of these VTEPs, IPv4; ignored when --switch is given");
    }

    state::Selection selection() const { return selectsRouters(); }

    void build(state::Mount const & mount) {
        auto const & state = mount.routers;
        command = Cli::vcsLRMapFactory(state.publishStatus, state.switchInfoDir, router.name,
                                       switchId, vteps);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount);
        renderOn(fd, output, *command);
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & /* output */) {
        build(mount);
        command->buildLRMap(router.name, switchId, vteps);
        return {command};
    }
};

} // namespace

void addRouterMap(CLI::App & router, CommandLine & chosen) {
    addCommand<RouterMap>(router, "map",
                          "Which switches carry which logical router, and by which VTEP", chosen);
}

Collection collectRouterMap(CLI::App & options) {
    return addCollection<RouterMap>(options);
}

} // namespace vxshow::cli::command
