#pragma once

#include "vxshow/sources/frr/VtyshCommand.h"

#include <string>
#include <string_view>
#include <vector>

namespace vxshow::sources::frr {

/// The words that run `commands` in one `vtysh`, connected only to zebra. It prints a line before
/// each answer, which ends in the command. For a remote shell every word but the operator's own is
/// in single quotes, so that the shell passes it on unchanged.
std::vector<std::string> vtyshWords(VtyshCommand const & vtysh,
                                    std::vector<std::string> const & commands);

/// Whether the answer to the last command can be that the daemon does not know it.
enum class LastComplaint : bool { isRefused, isAccepted };

/// Splits what such a `vtysh` printed into the answer to each command, which can be empty. Each is
/// a part of `printed`. In the line of a command, the host name before it can be any text. Raises
/// `AnswerError` if the line of a command is missing or out of order, or if the daemon does not
/// know a command, and `Failure` if the daemon ended while it answered.
std::vector<std::string_view> vtyshAnswers(std::string_view printed,
                                           std::vector<std::string> const & commands,
                                           LastComplaint lastComplaint = LastComplaint::isRefused);

/// Whether the answer is that the daemon does not know the command, such as "% Unknown command: …".
bool isComplaint(std::string_view answer);

} // namespace vxshow::sources::frr
