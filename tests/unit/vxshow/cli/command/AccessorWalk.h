#pragma once

#include <string>
#include <vector>

/// The text that `model --of` prints of the snapshot in the file `path`, made by the accessors
/// of the model's types instead of reflection.

std::string macReceivedByAccessors(std::string const & path, std::string const & vni = "",
                                   std::string const & source = "",
                                   std::vector<std::string> const & vteps = {});
std::string macAdvertisedByAccessors(std::string const & path);
std::string routerMapByAccessors(std::string const & path);
std::string routerDetailByAccessors(std::string const & path);
std::string routerRoutesByAccessors(std::string const & path);
