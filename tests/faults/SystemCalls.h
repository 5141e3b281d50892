#pragma once

#include <string>

namespace faults {

/// The name of the system call with this number on x86-64, such as "openat"; "call-NUMBER" if it
/// is not one that a program like vxshow makes. Those that do different things are told apart by
/// their second argument: "fcntl-setfl", "futex-wait".
std::string systemCallName(long number, int second);

/// The error number of a name such as "EACCES"; 0 if it is unknown.
int errorNumber(std::string const & name);

} // namespace faults
