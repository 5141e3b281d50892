#include "vxshow/cli/FilterOptions.h"

#include "Vex/Errors.h"
#include "Vxlan/Vni.h"

namespace vxshow::cli {

namespace {

/// Reads the value of an option; raises the command-line library's error with the type's message.
template <class Value>
Value readValue(std::string const & option, std::string const & text) {
    try {
        return Value::fromString(text);
    } catch (Vex::Error const & error) {
        throw CLI::ValidationError(option, error.what());
    }
}

/// For types that accept the empty text: that value means "no filter".
void refuseEmpty(std::string const & option, std::string const & text, char const * expected) {
    if (text.empty()) {
        throw CLI::ValidationError(option, std::string("'': expected ") + expected);
    }
}

} // namespace

void addVniFilter(CLI::App & command, Vxlan::VniOrNone & vni) {
    command
        .add_option_function<std::string>(
            "--vni",
            [&vni](std::string const & text) { vni = readValue<Vxlan::Vni>("--vni", text); },
            "Only this VNI: decimal, 4098, or dotted, 0.16.2")
        ->type_name("VNI");
}

void addMacFilter(CLI::App & command, Nolt::EthAddr & mac) {
    command
        .add_option_function<std::string>(
            "--mac",
            [&mac](std::string const & text) { mac = readValue<Nolt::EthAddr>("--mac", text); },
            "Only this MAC address: 00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c or 001c.730a.0b0c; "
            "the all-zero address matches every address")
        ->type_name("MAC");
}

void addIpFilter(CLI::App & command, Nolt::IpGenAddr & ip) {
    command
        .add_option_function<std::string>(
            "--ip",
            [&ip](std::string const & text) {
                refuseEmpty("--ip", text,
                            "an IPv4 or IPv6 address such as 10.0.0.1 or 2001:db8::1");
                ip = readValue<Nolt::IpGenAddr>("--ip", text);
            },
            "Only this IP address: IPv4, or IPv6 in any of its forms")
        ->type_name("IP");
}

void addPrefixFilter(CLI::App & command, Nolt::IpGenPrefix & prefix) {
    command
        .add_option_function<std::string>(
            "--prefix",
            [&prefix](std::string const & text) {
                refuseEmpty("--prefix", text, "a prefix such as 10.1.0.0/16 or 2001:db8::/32");
                prefix = readValue<Nolt::IpGenPrefix>("--prefix", text);
            },
            "Only routes that this prefix contains or that contain it, IPv4 or IPv6: "
            "10.1.0.0/16, 2001:db8::/32")
        ->type_name("PREFIX");
}

void addVtepFilter(CLI::App & command, VxlanController::Cli::VtepList & vteps,
                   std::string const & help) {
    command
        .add_option_function<std::vector<std::string>>(
            "--vtep",
            [&vteps](std::vector<std::string> const & texts) {
                for (std::string const & text : texts) {
                    vteps.vtepIs(readValue<Nolt::IpAddr>("--vtep", text), true);
                }
            },
            help)
        ->type_name("IP");
}

} // namespace vxshow::cli
