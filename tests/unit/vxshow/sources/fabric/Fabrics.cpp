#include "tests/unit/vxshow/sources/fabric/Fabrics.h"

#include "tests/unit/vxshow/system/TextFile.h"
#include "vxshow/sources/fabric/FabricFile.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::fabric;

std::vector<Source> fabricOf(std::string_view text) {
    return readFabricFile(TextFile(text).path()).sources;
}

Source sourceOf(std::string_view text) {
    auto const sources = fabricOf(text);
    EXPECT_EQ(sources.size(), 1U);
    return sources.at(0);
}

std::string refusalOf(std::string_view text) {
    TextFile const file(text);
    try {
        readFabricFile(file.path());
    } catch (FabricFileError const & error) {
        std::string const line = error.what();
        EXPECT_EQ(line.find_first_of("\n\r"), std::string::npos) << line;
        EXPECT_EQ(line.substr(0, file.path().size() + 1), file.path() + ":");
        return line.substr(file.path().size() + 1);
    }
    return {};
}

std::string frr(std::string_view lines) {
    return "[[source]]\nkind = \"frr\"\nname = \"leaf1\"\n" + std::string(lines);
}

std::string database(std::string_view lines) {
    return databaseAt("[\"unix:/run/ovs/db.sock\"]", lines);
}

std::string databaseAt(std::string_view remotes, std::string_view lines) {
    return "[[source]]\nkind = \"hardware_vtep\"\nname = \"leaf1\"\nremotes = " +
           std::string(remotes) + "\n" + std::string(lines);
}

} // namespace vxshow::test
