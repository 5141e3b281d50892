#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Vxlan/VniOrNone.h"

#include <CLI/App.hpp>

#include <string>
#include <vector>

/// The filters that several commands share. Each adds one option to a command and reads
/// its value strictly while the command line is read: what is no value of the type ends
/// the program there, with a line that names the option and what it accepts.
namespace vxshow {

void addVniFilter(CLI::App & command, Vxlan::VniOrNone & vni);
void addMacFilter(CLI::App & command, Nolt::EthAddr & mac);
void addVtepFilter(CLI::App & command, std::vector<Nolt::IpAddr> & vteps);

} // namespace vxshow
