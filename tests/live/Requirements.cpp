#include "tests/live/Requirements.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

struct Program {
    char const * name;
    char const * package;
};

std::vector<Program> const & programsOf(Lab lab) {
    static std::vector<Program> const fake{{"python3", "python3-minimal"}};
    static std::vector<Program> const database{
        {"python3", "python3-minimal"},
        {"ovsdb-client", "openvswitch-common"},
        {"ovsdb-server", "openvswitch-common"},
        {"ovsdb-tool", "openvswitch-common"},
        {"ovs-appctl", "openvswitch-common"},
        {"vtep-ctl", "openvswitch-vtep"},
        {"openssl", "openssl"},
    };
    static std::vector<Program> const evpn{
        {"python3", "python3-minimal"}, {"vtysh", "frr"},   {"/usr/lib/frr/zebra", "frr"},
        {"/usr/lib/frr/bgpd", "frr"},   {"ip", "iproute2"}, {"bridge", "iproute2"},
        {"nsenter", "util-linux"},      {"jq", "jq"},       {"sysctl", "procps"},
    };
    switch (lab) {
    case Lab::fake:
        return fake;
    case Lab::database:
        return database;
    case Lab::evpn:
        break;
    }
    return evpn;
}

bool isThere(std::string const & program) {
    if (program[0] == '/') {
        return access(program.c_str(), X_OK) == 0;
    }
    auto const * const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/usr/sbin:/usr/bin:/sbin:/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((folder + "/" + program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<std::string> missingFor(Lab lab) {
    for (Program const & program : programsOf(lab)) {
        if (!isThere(program.name)) {
            return std::string("NOT TESTED: ") + program.name +
                   " is missing; as root, run: apt-get install " + program.package;
        }
    }
    if (lab == Lab::evpn && geteuid() != 0) {
        return "NOT TESTED: network namespaces need root; run the tests as root";
    }
    return std::nullopt;
}

bool mustBeComplete() {
    std::ifstream release("/etc/os-release");
    bool debian = false;
    bool twelve = false;
    for (std::string line; std::getline(release, line);) {
        debian = debian || line == "ID=debian";
        twelve = twelve || line == "VERSION_ID=\"12\"";
    }
    return debian && twelve && geteuid() == 0;
}
