#include "tests/unit/vxshow/sources/ovsdb/ScriptedServers.h"

#include <cstdlib>

namespace vxshow::test {

ScriptedServers::ScriptedServers() : pathBefore_(std::getenv("PATH")) {
    // Its words are an option, "query" or "get-schema", the remote and the transaction.
    folder_.put("ovsdb-client", "#!/bin/sh\nexec \"${3#unix:}\"\n", 0700);
    setenv("PATH", (folder_.path() + ":" + pathBefore_).c_str(), 1);
}

ScriptedServers::~ScriptedServers() {
    setenv("PATH", pathBefore_.c_str(), 1);
}

std::string ScriptedServers::server(std::string const & name, std::string const & script) const {
    folder_.put(name, "#!/bin/sh\n" + script + "\n", 0700);
    return remoteOf(name);
}

std::string ScriptedServers::server(std::string const & name, std::string const & first,
                                    std::string const & then) const {
    return server(name,
                  "if [ -e $0.asked ]; then\n" + then + "\nelse\n> $0.asked\n" + first + "\nfi");
}

} // namespace vxshow::test
