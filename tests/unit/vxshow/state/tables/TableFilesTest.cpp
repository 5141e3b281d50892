#include "vxshow/state/tables/TableFiles.h"

#include "outfmt/Interrupt.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "tests/unit/vxshow/Folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace vxshow::state::tables {

namespace {

namespace Cli = VxlanController::Cli;

VcsEvpn::HostKey hostKey(Vex::U32 vni, char const * mac) {
    return {Nolt::EthAddr::fromString(mac), Vxlan::Vni(vni)};
}

/// A state with one host and one VTEP to flood to.
class State {
public:
    explicit State(char const * vtep) {
        hosts.insert(hostKey(10, "02:00:00:00:00:01"), {Nolt::IpAddr::fromString(vtep), 5});
        flood.insert({Vxlan::Vni(10), Nolt::IpAddr::fromString(vtep)},
                     VcsEvpn::FloodEntry(VcsEvpn::FloodEntry::TunnelType::ingressReplication));
        auto tables = Cli::hostFloodTableFactory();
        tables->hostTableIs(hosts.table());
        tables->floodTableIs(flood.table());
        mount.received.evpn = Cli::hostFloodTableListFactory();
        mount.received.evpn->hostFloodTableIs("EVPN", tables);
    }

    VcsEvpn::HostTableWriter hosts{"hosts"};
    VcsEvpn::FloodTableWriter flood{"flood"};
    Mount mount;
};

Vex::Ptr<VcsEvpn::HostTable const> receivedHostsOf(Mount const & mount) {
    return mount.received.evpn->hostFloodTable("EVPN")->hostTable();
}

std::string vtepIn(Mount const & mount) {
    return receivedHostsOf(mount)->host(hostKey(10, "02:00:00:00:00:01")).vtepIp().stringValue();
}

/// Changes the first slot of a table.
void damage(int descriptor) {
    constexpr off_t firstSlot = 192;
    char byte = 0;
    EXPECT_EQ(::pread(descriptor, &byte, 1, firstSlot), 1);
    byte = static_cast<char>(byte ^ 'x');
    EXPECT_EQ(::pwrite(descriptor, &byte, 1, firstSlot), 1);
}

} // namespace

TEST(TableFiles, AreMountedAsTheyWerePublished) {
    Folder const folder;
    State state("10.0.0.1");
    auto const deadSlot = hostKey(11, "02:00:00:00:00:02");
    state.hosts.insert(deadSlot, {});
    publishTables(state.mount, folder.file("new/tables"));
    auto const mount = mountTables(folder.file("new/tables"));
    auto const hosts = receivedHostsOf(mount);
    EXPECT_EQ(hosts->size(), 2U);
    EXPECT_EQ(hosts->host(hostKey(10, "02:00:00:00:00:01")),
              VcsEvpn::Host(Nolt::IpAddr::fromString("10.0.0.1"), 5));
    EXPECT_EQ(hosts->host(deadSlot), VcsEvpn::Host());
    auto const flood = mount.received.evpn->hostFloodTable("EVPN")->floodTable();
    EXPECT_EQ(flood->size(), 1U);
    EXPECT_EQ(flood->begin().value().tunnelType(),
              VcsEvpn::FloodEntry::TunnelType::ingressReplication);
    EXPECT_FALSE(mount.advertised.evpn);
    EXPECT_FALSE(mount.received.switches);
}

TEST(TableFiles, AMountKeepsItsTableWhenTheFileIsReplaced) {
    Folder const folder;
    publishTables(State("10.0.0.1").mount, folder.path());
    auto const before = mountTables(folder.path());
    publishTables(State("10.0.0.2").mount, folder.path());
    EXPECT_EQ(vtepIn(before), "10.0.0.1");
    EXPECT_EQ(vtepIn(mountTables(folder.path())), "10.0.0.2");
}

TEST(TableFiles, NoneIsReplacedWhenATableOfTheStateIsDamaged) {
    Folder const folder;
    publishTables(State("10.0.0.1").mount, folder.path());
    State damaged("10.0.0.2");
    damage(damaged.flood.descriptor());
    try {
        publishTables(damaged.mount, folder.path());
        FAIL() << "published";
    } catch (TableFileError const & error) {
        std::string const start = folder.file("received-flood") + ": table 'flood', slot 0: ";
        EXPECT_EQ(std::string(error.what()).substr(0, start.size()), start);
    }
    EXPECT_EQ(vtepIn(mountTables(folder.path())), "10.0.0.1");
    EXPECT_EQ(folder.names().size(), 2U);
}

TEST(TableFiles, NoneIsReplacedOnAnInterrupt) {
    Folder const folder;
    publishTables(State("10.0.0.1").mount, folder.path());
    outfmt::requestInterrupt();
    EXPECT_THROW(publishTables(State("10.0.0.2").mount, folder.path()), outfmt::SigIntException);
    outfmt::clearInterrupt();
    EXPECT_EQ(vtepIn(mountTables(folder.path())), "10.0.0.1");
    EXPECT_EQ(folder.names().size(), 2U);
}

TEST(TableFiles, DamageAfterMountingDoesNotReachTheMount) {
    Folder const folder;
    publishTables(State("10.0.0.1").mount, folder.path());
    auto const mount = mountTables(folder.path());
    int const file = ::open(folder.file("received-hosts").c_str(), O_RDWR | O_CLOEXEC);
    damage(file);
    ::close(file);
    auto const command =
        Cli::vcsVniReceivedFactory(mount.received.switches, mount.received.sources,
                                   mount.received.evpn, false, {}, {}, "", Cli::vtepListFactory());
    command->initialize();
    EXPECT_EQ(vtepIn(mount), "10.0.0.1");
    EXPECT_EQ(receivedHostsOf(mount)->corruptions(), 0U);
    EXPECT_THROW(mountTables(folder.path()), TableFileError);
}

TEST(TableFiles, APathInAMessageIsPrintable) {
    try {
        mountTables("/nonexistent/\x1b[31m\n");
        FAIL() << "mounted";
    } catch (TableFileError const & error) {
        EXPECT_STREQ(error.what(), "/nonexistent/\\x1b[31m\\x0a: No such file or directory");
    }
}

TEST(TableFiles, AFileThatIsCutDuringAWalkIsShownAsItWasMounted) {
    Folder const folder;
    State state("10.0.0.1");
    constexpr Vex::U32 hosts = 20'000;
    for (Vex::U32 vni = 1000; vni < 1000 + hosts; ++vni) {
        state.hosts.insert(hostKey(vni, "02:00:00:00:00:01"), {Nolt::IpAddr(vni), 1});
    }
    publishTables(state.mount, folder.path());
    auto const mount = mountTables(folder.path());
    auto const table = receivedHostsOf(mount);
    Vex::U32 met = 0;
    for (auto at = table->begin(); at; ++at) {
        if (++met == 10) {
            std::filesystem::resize_file(folder.file("received-hosts"), 0);
        }
    }
    EXPECT_EQ(met, hosts + 1);
    EXPECT_EQ(vtepIn(mount), "10.0.0.1");
}

} // namespace vxshow::state::tables
