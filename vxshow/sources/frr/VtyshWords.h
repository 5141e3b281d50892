#pragma once

#include "vxshow/sources/frr/VtyshCommand.h"

#include <string>
#include <string_view>
#include <vector>

namespace vxshow::sources::frr {

/// The words that run `commands` in one `vtysh`, connected to zebra alone, which prints a line
/// before each answer that ends in the command. Behind a remote shell every word but the
/// operator's own is in single quotes, so that the shell takes it as it is.
std::vector<std::string> vtyshWords(VtyshCommand const & vtysh,
                                    std::vector<std::string> const & commands);

/// Takes apart what such a `vtysh` printed: the answer to each command, which may be empty.
/// Each is part of `printed`. The name of the host, before the command in its line, may be
/// anything on one line. Raises `AnswerError` when a command's line is not in its turn or the
/// daemon knows a command not.
std::vector<std::string_view> vtyshAnswers(std::string_view printed,
                                           std::vector<std::string> const & commands);

} // namespace vxshow::sources::frr
