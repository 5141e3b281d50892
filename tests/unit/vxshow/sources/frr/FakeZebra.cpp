#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <simdjson.h>
#include <sstream>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

void sideLines(std::string const & name, SideFacts const & side, std::ostream & out) {
    for (auto const vni : side.vnis) {
        out << name << " vni " << vni.stringValue() << "\n";
    }
    for (auto const & mac : side.macs) {
        out << name << " mac " << mac.vni.stringValue() << " " << mac.mac.stringValue() << " "
            << mac.vtep.stringValue() << " moves " << mac.moves << "\n";
    }
    for (auto const & flood : side.floods) {
        out << name << " flood " << flood.vni.stringValue() << " " << flood.mac.stringValue() << " "
            << flood.vtep.stringValue() << "\n";
    }
    for (auto const & arp : side.bindings) {
        out << name << " arp " << arp.vni.stringValue() << " " << arp.ip.stringValue() << " "
            << arp.mac.stringValue() << " changes " << arp.changes << "\n";
    }
}

void routerLines(std::string const & name, RouterFacts const & router, std::ostream & out) {
    for (auto const & [ip, ports] : router.ports) {
        for (auto const & port : ports) {
            out << "router " << name << " port " << ip.stringValue() << " vni "
                << port.vni.stringValue() << " " << port.mac.stringValue() << " "
                << port.vtep.stringValue() << "\n";
        }
    }
    for (auto const & [prefix, nexthops] : router.routes) {
        out << "router " << name << " route " << prefix.stringValue();
        for (auto const & nexthop : nexthops) {
            out << " " << nexthop.stringValue();
        }
        out << "\n";
    }
}

/// The documents that follow each other in a text: each ends with a line of its closing brace.
std::vector<std::string> documentsOf(std::string const & text) {
    std::vector<std::string> documents;
    std::istringstream in(text);
    std::string line;
    std::string document;
    while (std::getline(in, line)) {
        document.append(line).append("\n");
        if (line == "}") {
            documents.push_back(document);
            document.clear();
        }
    }
    return documents;
}

/// Whether a real zebra knows the command.
bool isKnown(std::string const & command) {
    static std::regex const forms(
        "show version|show (evpn|evpn (vni (detail|\\d+)"
        "|mac vni (all( detail)?|\\d+( mac ([0-9a-f]{2}:){5}[0-9a-f]{2})?)"
        "|arp-cache vni (all|\\d+)"
        "|es detail)"
        "|vrf vni"
        "|interface vrf all brief|(interface|ip route|ipv6 route) vrf \\S+) json");
    return std::regex_match(command, forms);
}

} // namespace

FakeZebra::FakeZebra()
    : answers_{{"show evpn json", R"({"advertiseGatewayMacip":"No","numVnis":1})"},
               {"show evpn vni detail json", "[]"}} {}

FakeZebra::FakeZebra(std::string const & vtep) : FakeZebra() {
    auto const file = [&](std::string const & name) {
        return frrCapture(vtep + "/" + name + ".json");
    };
    auto & self = *this;
    self["show evpn vni detail json"] = file("show-evpn-vni-detail");
    self["show evpn mac vni all json"] = file("show-evpn-mac-vni-all");
    self["show evpn mac vni all detail json"] = file("show-evpn-mac-vni-all-detail");
    self["show evpn es detail json"] = file("show-evpn-es-detail");
    self["show evpn arp-cache vni all json"] = file("show-evpn-arp-cache-vni-all");
    self["show vrf vni json"] = file("show-vrf-vni");
    auto const routes = documentsOf(file("show-ip-route-vrf-all"));
    auto const routesIpv6 = documentsOf(file("show-ipv6-route-vrf-all"));
    std::vector<std::string> const vrfs{"default", "tenant1", "tenant2"};
    for (std::size_t index = 1; index < vrfs.size(); ++index) {
        auto const & vrf = vrfs[index];
        self["show ip route vrf " + vrf + " json"] = routes.at(index);
        self["show ipv6 route vrf " + vrf + " json"] = routesIpv6.at(index);
        self["show interface vrf " + vrf + " json"] = file("show-interface-vrf-" + vrf);
    }
    addOnes("show evpn mac vni all json", "show evpn mac vni ", " json");
    addOnes("show evpn arp-cache vni all json", "show evpn arp-cache vni ", " json");

    simdjson::dom::parser parser;
    simdjson::padded_string const vnis(self["show evpn vni detail json"]);
    for (simdjson::dom::element one : parser.parse(vnis).get_array()) {
        self["show evpn vni " + std::to_string(one["vni"].get_uint64().value()) + " json"] =
            simdjson::minify(one);
    }
    simdjson::padded_string const macs(self["show evpn mac vni all detail json"]);
    for (auto const vni : parser.parse(macs).get_object()) {
        for (auto const one : vni.value["macs"].get_object()) {
            std::string const mac(one.key);
            self["show evpn mac vni " + std::string(vni.key) + " mac " + mac + " json"] =
                "{\"" + mac + "\":" + simdjson::minify(one.value) + "}";
        }
    }
}

std::string & FakeZebra::operator[](std::string const & command) {
    EXPECT_TRUE(isKnown(command)) << "no command of zebra: " << command;
    return answers_[command];
}

void FakeZebra::addOnes(std::string const & all, std::string const & start,
                        std::string const & end) {
    simdjson::dom::parser parser;
    simdjson::padded_string const padded(answers_[all]);
    for (auto const vni : parser.parse(padded).get_object()) {
        answers_[start + std::string(vni.key) + end] = simdjson::minify(vni.value);
    }
}

std::string FakeZebra::answerTo(std::string const & command) const {
    auto const found = answers_.find(command);
    if (found != answers_.end()) {
        return found->second;
    }
    return isKnown(command) ? "{}\n" : "% Unknown command: " + command + "\n";
}

std::string FakeZebra::printed(std::vector<std::string> const & commands) const {
    std::string text;
    for (auto const & command : commands) {
        auto const answer = answerTo(command);
        text.append("leaf1# ").append(command).append("\n").append(answer);
        if (answer.starts_with("% ")) {
            break;
        }
        if (!answer.empty() && answer.back() != '\n') {
            text.append("\n");
        }
    }
    return text;
}

Answer FakeZebra::ask(state::Selection const & selection) {
    return converse(run(), {"leaf1", Nolt::EthAddr::fromString("00:00:5e:00:53:e1")}, selection);
}

std::string frrCapture(std::string const & name) {
    std::ifstream file(FRR_CAPTURES "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string linesOf(Facts const & state) {
    std::ostringstream out;
    for (auto const & [name, one] : state.switches) {
        out << "switch " << name << " id " << (one.systemId ? one.systemId->stringValue() : "none");
        for (auto const & vtep : one.vteps) {
            out << " vtep " << vtep.stringValue();
        }
        for (auto const & router : one.routers) {
            out << " router " << router;
        }
        out << "\n";
    }
    for (auto const & [name, side] : state.local) {
        sideLines(name, side, out);
    }
    sideLines("remote", state.remote, out);
    for (auto const & [name, router] : state.routers) {
        routerLines(name, router, out);
    }
    return out.str();
}

std::string linesOf(Facts const & state, std::string_view start) {
    std::istringstream in(linesOf(state));
    std::string lines;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(start)) {
            lines.append(line).append("\n");
        }
    }
    return lines;
}

std::string macsOf(Answer const & answer) {
    return linesOf(answer.facts, "leaf1 mac") + linesOf(answer.facts, "remote mac");
}

std::string failureOf(FakeZebra & zebra, state::Selection const & selection) {
    try {
        zebra.ask(selection);
    } catch (Failure const & failure) {
        std::string const line(failure.what());
        EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char c) {
            return c >= ' ' && c <= '~';
        })) << line;
        return line;
    }
    return "accepted";
}

std::string l2Vni(unsigned vni) {
    auto const number = std::to_string(vni);
    return R"({"vni":)" + number + R"(,"type":"L2","vrf":"red","sviInterface":"br)" + number +
           R"(","vtepIp":"10.0.0.1","numMacs":0,"numRemoteVteps":["10.0.0.2"]})";
}

std::string localMac(std::string const & mac, unsigned sequence) {
    return "\"" + mac + R"(":{"type":"local","intf":"eth1","localSequence":)" +
           std::to_string(sequence) + R"(,"remoteSequence":0})";
}

std::string remoteMac(std::string const & mac, std::string const & vtep, unsigned sequence) {
    return "\"" + mac + R"(":{"type":"remote","remoteVtep":")" + vtep +
           R"(","localSequence":0,"remoteSequence":)" + std::to_string(sequence) + "}";
}

FakeZebra zebraWithMacs(std::string const & entries) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] = "[" + l2Vni(10) + "]";
    zebra["show evpn mac vni all json"] = R"({"10":{"numMacs":1,"macs":{)" + entries + "}}}";
    return zebra;
}

} // namespace vxshow::test
