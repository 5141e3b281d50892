#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

/// The processes with both texts on their command line.
std::vector<pid_t> processesWith(std::string const & one, std::string const & other);
