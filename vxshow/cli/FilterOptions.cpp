#include "vxshow/cli/FilterOptions.h"

#include "vxshow/cli/FixedValues.h"
#include "vxshow/state/SourceNames.h"

#include <CLI/Error.hpp>
#include <CLI/Option.hpp>

#include <functional>

namespace vxshow::cli {

namespace {

/// Adds the option `name` whose texts `read` puts into `into`.
template <class Filter>
CLI::Option * addFilter(CLI::App & command, std::string const & name, Filter & into,
                        Filter (*read)(filter::Texts const &), std::string const & help) {
    auto * const option = command.add_option_function<filter::Texts>(
        name,
        [name, read, &into](filter::Texts const & texts) {
            try {
                into = read(texts);
            } catch (filter::ValueError const & error) {
                throw CLI::ValidationError(name, error.what());
            }
        },
        help);
    return option->group(filterGroup);
}

/// Lets the option take one text each time it is given.
void onceEach(CLI::Option & option, std::string const & type) {
    option.type_name(type)->expected(1)->take_all()->allow_extra_args(false);
}

} // namespace

void addVniFilter(CLI::App & command, filter::VniFilter & vnis) {
    onceEach(*addFilter(command, "--vni", vnis, filter::readVnis,
                        "Only these VNIs: decimal, 4098, or dotted, 0.16.2; or ranges, 20-30"),
             "VNI");
}

void addMacFilter(CLI::App & command, filter::MacFilter & macs) {
    onceEach(*addFilter(command, "--mac", macs, filter::readMacs,
                        "Only these MAC addresses: 00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c, "
                        "001c.730a.0b0c or 001c730a0b0c; or those with this prefix: 00:1c:73/24 "
                        "or 00:1c:73:*; the all-zero address matches every address"),
             "MAC");
}

void addIpFilter(CLI::App & command, filter::IpFilter & ips) {
    onceEach(*addFilter(command, "--ip", ips, filter::readIps,
                        "Only these IP addresses: IPv4, or IPv6 in any of its forms; or those of "
                        "this subnet: 10.0.0.0/24, 2001:db8::/64"),
             "IP");
}

void addPrefixFilter(CLI::App & command, filter::PrefixFilter & prefixes) {
    onceEach(*addFilter(command, "--prefix", prefixes, filter::readPrefixes,
                        "Only routes that one of these prefixes contains or that contain one of "
                        "them, IPv4 or IPv6: 10.1.0.0/16, 2001:db8::/32"),
             "PREFIX");
}

void addVtepFilter(CLI::App & command, filter::VtepFilter & vteps, std::string const & help) {
    addFilter(command, "--vtep", vteps, filter::readVteps, help)->type_name("IP");
}

void addNameFilter(CLI::App & command, std::string const & name, filter::NameFilter & names,
                   std::string const & type, std::string const & help) {
    onceEach(*addFilter(command, name, names, filter::readNames, help), type);
}

void addSourceFilter(CLI::App & command, filter::SourceFilter & sources) {
    auto * const option =
        addFilter(command, "--source", sources, filter::readSources,
                  "Only these switches by name or pattern, leaf*; all: every switch; hsc, "
                  "qvx, evpn: that source; name:all: the switch of that name");
    onceEach(*option, "NAME");
    declareValues(*option, {state::sourceWords.begin(), state::sourceWords.end()});
}

} // namespace vxshow::cli
