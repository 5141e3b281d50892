#pragma once

#include "vxshow/cli/filter/FilterValues.h"
#include "vxshow/cli/filter/NameFilter.h"

#include <CLI/App.hpp>

#include <string>

/// The filters that several commands share. Each function adds one option to a command. It can be
/// given several times, and each time with several values between commas. The values are checked
/// while the command line is read: an invalid one is refused with a line that names the option and
/// what it accepts.
namespace vxshow::cli {

/// The group of filters in the help of a command.
inline constexpr char const * filterGroup = "Filters";

void addVniFilter(CLI::App & command, filter::VniFilter & vnis);
void addMacFilter(CLI::App & command, filter::MacFilter & macs);

/// Accepts IPv4 and IPv6. The empty text is refused, although the address type accepts it: that
/// address means "no filter".
void addIpFilter(CLI::App & command, filter::IpFilter & ips);

/// Accepts IPv4 and IPv6. A prefix with host bits set is refused, with the prefix that was probably
/// meant; so is the empty text, which means "no filter".
void addPrefixFilter(CLI::App & command, filter::PrefixFilter & prefixes);

/// Takes several values after the option as well. Accepts only IPv4, because tables hold nothing
/// else. `help` is the help text of the option.
void addVtepFilter(CLI::App & command, filter::VtepFilter & vteps, std::string const & help);

/// The option `name`, whose values are names of what `help` says. `type` names a value.
void addNameFilter(CLI::App & command, std::string const & name, filter::NameFilter & names,
                   std::string const & type, std::string const & help);

void addSourceFilter(CLI::App & command, filter::SourceFilter & sources);

} // namespace vxshow::cli
