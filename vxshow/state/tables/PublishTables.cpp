#include "vxshow/state/tables/TableFiles.h"

#include "Vex/Errors.h"
#include "outfmt/Interrupt.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "vxshow/state/tables/TableNames.h"
#include "vxshow/system/AtomicFile.h"
#include "vxshow/system/Leftover.h"
#include "vxshow/system/Repeat.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace vxshow::state::tables {

namespace {

namespace Cli = VxlanController::Cli;

/// A new folder within the directory, in which the tables are written. The destructor removes
/// it with whatever is left in it.
class StagingFolder {
public:
    explicit StagingFolder(std::string const & directory) : path_(directory + "/.publish-XXXXXX") {
        if (!::mkdtemp(path_.data())) {
            throwErrnoOn(directory, errno);
        }
        leftover_.remember(path_.c_str());
    }

    StagingFolder(StagingFolder const &) = delete;
    StagingFolder & operator=(StagingFolder const &) = delete;

    ~StagingFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string pathOf(std::string_view name) const {
        return std::string(path_).append("/").append(name);
    }

    /// Removes the folder, which is empty. Raises `TableFileError` if it stays.
    void remove() const {
        if (::rmdir(path_.c_str()) == 0) {
            return;
        }
        std::error_code error;
        std::filesystem::remove_all(path_, error);
        if (error) {
            throwErrnoOn(path_, error.value());
        }
    }

private:
    std::string path_;
    system::Leftover leftover_; ///< that path
};

/// Writes a copy of `table`. The copy has room for all entries from the start, so it never moves.
template <class Writer, class Table>
void writeTable(Table const & table, std::string const & path) {
    auto writer = Writer::inFile(path, table.size());
    for (auto at = table.begin(); at; ++at) {
        outfmt::checkInterrupt();
        writer.insert(at.key(), at.value());
    }
    if (system::repeatInterrupted([&] { return ::fsync(writer.descriptor()); }) != 0) {
        throwErrnoOn(path, errno);
    }
}

class Publisher {
public:
    explicit Publisher(std::string const & directory)
        : directory_(directory), staging_(directory) {}

    /// Writes the tables of one direction. A null list has no tables.
    void write(Vex::Ptr<Cli::HostFloodTableList> const & list, std::string_view hostsName,
               std::string_view floodName) {
        auto const tables = list ? list->hostFloodTable(Vex::Name(evpnSource)) : nullptr;
        write<VcsEvpn::HostTableWriter>(tables ? tables->hostTable() : nullptr, hostsName);
        write<VcsEvpn::FloodTableWriter>(tables ? tables->floodTable() : nullptr, floodName);
    }

    void replace() {
        for (File const & file : files_) {
            auto const path = pathOf(file.name);
            bool const done = file.written
                                  ? ::rename(staging_.pathOf(file.name).c_str(), path.c_str()) == 0
                                  : ::unlink(path.c_str()) == 0 || errno == ENOENT;
            if (!done) {
                throwErrnoOn(path, errno);
            }
        }
        staging_.remove();
    }

private:
    struct File {
        std::string_view name;
        bool written;
    };

    template <class Writer, class Table>
    void write(Vex::Ptr<Table> const & table, std::string_view name) {
        if (table) {
            auto const path = staging_.pathOf(name);
            try {
                writeTable<Writer>(*table, path);
            } catch (Vex::Error const & error) {
                throw TableFileError(lineOn(pathOf(name), path, error.what()));
            }
        }
        files_.push_back({name, static_cast<bool>(table)});
    }

    std::string pathOf(std::string_view name) const {
        return std::string(directory_).append("/").append(name);
    }

    std::string const & directory_;
    StagingFolder staging_;
    std::vector<File> files_;
};

} // namespace

void publishTables(Mount const & mount, std::string const & directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        throwErrnoOn(directory, error.value());
    }
    // A signal that ends the process must not leave the folder behind.
    system::BlockedSignals const blocked;
    Publisher publisher(directory);
    publisher.write(mount.received.evpn, receivedHosts, receivedFlood);
    publisher.write(mount.advertised.evpn, advertisedHosts, advertisedFlood);
    outfmt::checkInterrupt();
    publisher.replace();
}

} // namespace vxshow::state::tables
