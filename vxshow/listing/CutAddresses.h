#pragma once

#include "VxlanController/VxlanControllerCliModel.h"

#include <cstddef>

/// How many addresses of a listing's fixed text read as another one.
///
/// The text cuts cells to the width of their column. An address or a prefix that is cut can still
/// be a valid one: of 2001:db8::1234:5678, the first 15 characters are 2001:db8::1234: and no
/// address, but those of 2001:db8::12:3456 are 2001:db8::12:34. Only such cells are counted. Names
/// are not: any cut name could be another.
namespace vxshow::listing {

std::size_t cutAddresses(VxlanController::Cli::VxlanVtepSet const & collected);
std::size_t cutAddresses(VxlanController::Cli::VxlanFdbSet const & collected);
std::size_t cutAddresses(VxlanController::Cli::VcsLRMap const & command);
std::size_t cutAddresses(VxlanController::Cli::VcsLR const & command);
std::size_t cutAddresses(VxlanController::Cli::VcsLRRoute const & command);

} // namespace vxshow::listing
