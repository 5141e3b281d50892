#include "tests/live/Requirements.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <linux/capability.h>
#include <sstream>
#include <unistd.h>
#include <utility>
#include <vector>

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
        {"setpriv", "util-linux"},
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

bool isInstalled(std::string const & program) {
    if (program[0] == '/') {
        return access(program.c_str(), X_OK) == 0;
    }
    auto const * const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (access((folder + "/" + program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

/// Whether this is Debian 12, with root as the user.
bool mustHavePrograms() {
    std::ifstream release("/etc/os-release");
    bool debian = false;
    bool twelve = false;
    for (std::string line; std::getline(release, line);) {
        debian = debian || line == "ID=debian";
        twelve = twelve || line == "VERSION_ID=\"12\"";
    }
    return debian && twelve && geteuid() == 0;
}

/// The effective capabilities of this process, one bit each.
unsigned long long capabilities() {
    std::ifstream status("/proc/self/status");
    std::string const name = "CapEff:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) {
            return std::stoull(line.substr(name.size()), nullptr, 16);
        }
    }
    return 0;
}

/// The names of the capabilities that network namespaces and their devices need and this process
/// lacks.
std::string missingCapabilities() {
    std::string names;
    for (auto const & [bit, name] :
         {std::pair(CAP_SYS_ADMIN, "CAP_SYS_ADMIN"), std::pair(CAP_NET_ADMIN, "CAP_NET_ADMIN")}) {
        if ((capabilities() >> bit & 1) == 0) {
            names.append(names.empty() ? "" : " and ").append(name);
        }
    }
    return names;
}

} // namespace

std::optional<Missing> missingFor(Lab lab) {
    for (Program const & program : programsOf(lab)) {
        if (!isInstalled(program.name)) {
            return Missing{std::string("NOT TESTED: ") + program.name +
                               " is missing; as root, run: apt-get install " + program.package,
                           mustHavePrograms()};
        }
    }
    if (lab != Lab::evpn) {
        return std::nullopt;
    }
    if (geteuid() != 0) {
        return Missing{"NOT TESTED: network namespaces need root; run the tests as root"};
    }
    if (auto const names = missingCapabilities(); !names.empty()) {
        return Missing{"NOT TESTED: network namespaces need " + names +
                       ", which root does not have here; run the tests outside the container, or "
                       "in one with more privileges"};
    }
    return std::nullopt;
}

void extendPath() {
    auto const * const path = std::getenv("PATH");
    auto const folders = std::string(path != nullptr ? path : "/usr/bin:/bin");
    setenv("PATH", (folders + ":/usr/sbin:/sbin").c_str(), 1);
}
