#include "vxshow/state/tables/TableFiles.h"

#include "Vex/Errors.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "vxshow/state/tables/TableNames.h"
#include "vxshow/system/OwnedDescriptor.h"
#include "vxshow/system/Repeat.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace vxshow::state::tables {

namespace {

namespace Cli = VxlanController::Cli;

void readWhole(auto const & table) {
    for (auto at = table.begin(); at; ++at) {
    }
}

/// The table in the file, or null when there is no such file.
template <class Table>
Vex::Ptr<Table> mountTable(std::string const & path, Vex::Ptr<Table> (*copy)(int, std::string)) {
    // Without O_NONBLOCK, opening a pipe that has no writer would block.
    system::OwnedDescriptor const file(system::repeatInterrupted(
        [&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    if (file.number() < 0) {
        if (errno == ENOENT) {
            return nullptr;
        }
        throwErrnoOn(path, errno);
    }
    try {
        auto table = copy(file.number(), path);
        readWhole(*table);
        table->corruptionHandlerIs(
            [path](std::string_view words) { throw TableFileError(lineOn(path, path, words)); });
        return table;
    } catch (Vex::Error const & error) {
        throw TableFileError(lineOn(path, path, error.what()));
    }
}

/// The tables of one direction; null when neither has a file.
Vex::Ptr<Cli::HostFloodTableList> mountDirection(std::string const & hostsPath,
                                                 std::string const & floodPath) {
    auto const hosts = mountTable<VcsEvpn::HostTable>(hostsPath, VcsEvpn::copyHostTable);
    auto const flood = mountTable<VcsEvpn::FloodTable>(floodPath, VcsEvpn::copyFloodTable);
    if (!hosts && !flood) {
        return nullptr;
    }
    auto tables = Cli::hostFloodTableFactory();
    tables->hostTableIs(hosts);
    tables->floodTableIs(flood);
    auto list = Cli::hostFloodTableListFactory();
    list->hostFloodTableIs(Vex::Name(evpnSource), tables);
    return list;
}

} // namespace

Mount mountTables(std::string const & directory) {
    auto const pathOf = [&](std::string_view name) {
        return std::string(directory).append("/").append(name);
    };
    Mount mount;
    mount.received.evpn = mountDirection(pathOf(receivedHosts), pathOf(receivedFlood));
    mount.advertised.evpn = mountDirection(pathOf(advertisedHosts), pathOf(advertisedFlood));
    if (!mount.received.evpn && !mount.advertised.evpn) {
        struct stat status {};

        if (::stat(directory.c_str(), &status) != 0) {
            throwErrnoOn(directory, errno);
        }
        throw TableFileError(Vex::printable(directory) + ": holds no shared table; expected " +
                             std::string(receivedHosts) + ", " + std::string(receivedFlood) + ", " +
                             std::string(advertisedHosts) + " or " + std::string(advertisedFlood));
    }
    return mount;
}

} // namespace vxshow::state::tables
