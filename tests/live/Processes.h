#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

/// The processes on whose command line both texts stand.
std::vector<pid_t> processesWith(std::string const & one, std::string const & other);
