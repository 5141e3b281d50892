#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Vxlan/VniOrNone.h"
#include "VxlanController/VxlanControllerCliModel.h"

#include <CLI/App.hpp>

/// The filters that several commands share. Each function adds one option to a command. The value
/// is checked while the command line is read: an invalid one is refused with a line that names
/// the option and what it accepts.
namespace vxshow::cli {

void addVniFilter(CLI::App & command, Vxlan::VniOrNone & vni);
void addMacFilter(CLI::App & command, Nolt::EthAddr & mac);

/// Accepts IPv4 and IPv6. The empty text is refused, although the address type accepts it: that
/// address means "no filter".
void addIpFilter(CLI::App & command, Nolt::IpGenAddr & ip);

/// Accepts IPv4 and IPv6. A prefix with host bits set is refused, with the prefix that was probably
/// meant; so is the empty text, which means "no filter".
void addPrefixFilter(CLI::App & command, Nolt::IpGenPrefix & prefix);

/// Can be given several times, each with several values. Accepts only IPv4, because the list holds
/// nothing else. `help` is the help text of the option.
void addVtepFilter(CLI::App & command, VxlanController::Cli::VtepList & vteps,
                   std::string const & help);

} // namespace vxshow::cli
