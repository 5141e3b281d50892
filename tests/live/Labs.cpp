#include "tests/live/Labs.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <thread>
#include <unistd.h>

namespace {

using Words = std::vector<std::string>;

Words joined(Words words, Words const & more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

Words parent() {
    return {"--parent", std::to_string(getpid())};
}

/// Starts servers in a folder and returns their remotes.
Words started(std::string const & command, std::string const & folder, Words const & options) {
    return linesOf(
        outputOf(joined(joined({labProgram("ovsdb-lab"), command, folder}, parent()), options)));
}

void down(std::string const & folder) {
    outputOf({labProgram("ovsdb-lab"), "down", folder});
}

} // namespace

OvsdbLab::OvsdbLab(Words const & options)
    : remotes_(started("single", folder_.file("lab"), options)) {}

OvsdbLab::~OvsdbLab() {
    down(folder_.file("lab"));
}

void OvsdbLab::fillSmall() const {
    outputOf({labProgram("ovsdb-lab"), "small", remote()});
}

void OvsdbLab::fill(unsigned vnis, unsigned macs) const {
    outputOf({labProgram("ovsdb-lab"), "fill", remote(), "--vnis", std::to_string(vnis), "--macs",
              std::to_string(macs), "--seed", "1"});
}

void OvsdbLab::transact(std::string const & operations) const {
    outputOf(
        {labProgram("ovsdb-lab"), "transact", remote(), R"(["hardware_vtep",)" + operations + "]"});
}

void OvsdbLab::vtepCtl(Words const & words) const {
    outputOf(joined({"vtep-ctl", "-t", "30", "--db=" + remote()}, words));
}

void OvsdbLab::signal(std::string const & name) const {
    outputOf({labProgram("ovsdb-lab"), "stop", folder_.file("lab"), "n1", "--signal", name});
}

OvsdbCluster::OvsdbCluster() : remotes_(started("cluster", folder_.file("lab"), {})) {}

OvsdbCluster::~OvsdbCluster() {
    down(folder_.file("lab"));
}

std::string OvsdbCluster::remoteOf(std::string const & node) const {
    return "unix:" + folder_.file("lab/" + node + "/sock");
}

std::string OvsdbCluster::signal(std::string const & node, std::string const & name) const {
    auto const lines = linesOf(
        outputOf({labProgram("ovsdb-lab"), "stop", folder_.file("lab"), node, "--signal", name}));
    return lines.empty() ? std::string() : lines[0];
}

void OvsdbCluster::start(std::string const & node) const {
    outputOf({labProgram("ovsdb-lab"), "start", folder_.file("lab"), node});
    outputOf({"ovsdb-client", "-vconsole:off", "-t", "60", "wait", remoteOf(node), "hardware_vtep",
              "connected"});
}

void OvsdbCluster::waitForLeader() const {
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (outputOf({labProgram("ovsdb-lab"), "nodes", folder_.file("lab")}).find(" leader ") ==
           std::string::npos) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "no leader";
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}

// The shell prints the line that `Background` waits for; the server prints nothing.
OvsdbRelay::OvsdbRelay(std::string const & remotes)
    : server_(std::make_unique<Background>(
          Words{"sh", "-c", "echo; exec ovsdb-server -vconsole:off -vsyslog:off \"$@\"", "sh",
                "--remote=p" + remote(), "--unixctl=" + folder_.file("ctl"),
                "--pidfile=" + folder_.file("pid"), "relay:hardware_vtep:" + remotes})) {
    outputOf({"sh", "-c", "until [ -e \"$1\" ]; do sleep 0.01; done", "sh", folder_.file("sock")});
    outputOf({"ovsdb-client", "-vconsole:off", "-t", "60", "wait", remote(), "hardware_vtep",
              "connected"});
}

EvpnLab::EvpnLab() : prefix_("live" + std::to_string(getpid()) + "-") {
    auto const finished = lab(joined({"up"}, parent()));
    EXPECT_EQ(finished.status, 0) << finished.err;
}

EvpnLab::~EvpnLab() {
    lab({"down"});
}

EvpnLab & EvpnLab::shared() {
    static EvpnLab lab;
    return lab;
}

std::string EvpnLab::pathSpace(unsigned vtep) const {
    return prefix_ + "vtep" + std::to_string(vtep);
}

Words EvpnLab::vtysh(unsigned vtep) const {
    return {"vtysh", "--vty_socket", folder_.file("lab/run/" + pathSpace(vtep))};
}

Finished EvpnLab::lab(Words const & words) const {
    return run(joined({"env", "EVPN_LAB_PREFIX=" + prefix_, "EVPN_LAB_DIR=" + folder_.file("lab"),
                       labProgram("evpn-lab")},
                      words));
}

std::string EvpnLab::zebra(unsigned vtep) const {
    std::ifstream file(folder_.file("lab/run/" + pathSpace(vtep) + "/zebra.pid"));
    std::string pid;
    file >> pid;
    return pid;
}

FakeOvsdb::FakeOvsdb(std::string const & behaviour, std::string const & tables)
    : server_(
          std::make_unique<Background>(Words{labProgram("fake-ovsdb-server"), folder_.file("sock"),
                                             behaviour, folder_.write("tables.json", tables)})) {}

FakeVtysh::FakeVtysh(std::string const & behaviour) : behaviour_(behaviour) {}

Words FakeVtysh::words() const {
    return {labProgram("fake-vtysh"), behaviour_, folder_.path()};
}

void FakeVtysh::answers(std::string const & command, std::string const & text) const {
    auto name = command;
    for (char & c : name) {
        c = c == ' ' ? '-' : c;
    }
    folder_.write(name + ".json", text + "\n");
}
