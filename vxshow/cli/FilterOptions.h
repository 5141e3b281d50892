#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Vxlan/VniOrNone.h"
#include "VxlanController/VxlanControllerCliModel.h"

#include <CLI/App.hpp>

/// The filters that several commands share. Each adds one option to a command and reads
/// its value strictly while the command line is read: what is no value of the type ends
/// the program there, with a line that names the option and what it accepts.
namespace vxshow::cli {

void addVniFilter(CLI::App & command, Vxlan::VniOrNone & vni);
void addMacFilter(CLI::App & command, Nolt::EthAddr & mac);
/// Takes IPv4 and IPv6. The empty text is refused, though the address type reads it: it is
/// the address that stands for no filter.
void addIpFilter(CLI::App & command, Nolt::IpGenAddr & ip);

/// Takes IPv4 and IPv6. Host bits are refused, with the prefix that was likely meant, and so
/// is the empty text, which stands for no filter.
void addPrefixFilter(CLI::App & command, Nolt::IpGenPrefix & prefix);

/// May be given several times, and several values at once. The list holds IPv4 alone, so
/// that is what is taken. `help` is the option's own.
void addVtepFilter(CLI::App & command, VxlanController::Cli::VtepList & vteps,
                   std::string const & help);

} // namespace vxshow::cli
