#pragma once

#include "tests/unit/vxshow/system/Programs.h"

#include <gtest/gtest.h>

#include <string>

namespace vxshow::test {

/// Database servers that are shell scripts: in place of `ovsdb-client`, the script runs that the
/// remote names.
class ScriptedServers : public testing::Test {
protected:
    ScriptedServers();
    ~ScriptedServers() override;

    /// A server that does what `script` does each time it is asked; returns its remote.
    std::string server(std::string const & name, std::string const & script) const;

    /// A server that does `first` when it is asked first, and `then` from there on.
    std::string server(std::string const & name, std::string const & first,
                       std::string const & then) const;

    std::string remoteOf(std::string const & name) const { return "unix:" + folder_.path(name); }

private:
    Folder folder_;
    std::string pathBefore_;
};

} // namespace vxshow::test
