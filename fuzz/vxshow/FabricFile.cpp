#include "vxshow/sources/fabric/FabricFile.h"
#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Lines.h"
#include "fuzz/harness/Scratch.h"
#include "vxshow/sources/Access.h"

#include <algorithm>
#include <set>

/// Fabric files: refused in one line that names the file, or sources with different names.
namespace fuzz {

void fabricFile(std::string_view bytes) {
    using namespace vxshow::sources;
    static Scratch file;
    file.fill(bytes);
    auto const path = file.path();
    try {
        std::set<std::string> names;
        auto const sources = fabric::readFabricFile(path).sources;
        check(!sources.empty() && sources.size() <= 4096, "there are no sources, or too many");
        for (auto const & source : sources) {
            check(source.access != nullptr, "a source has no access");
            check(source.timeLimit.count() > 0, "a source has no time");
            check(names.insert(source.name).second, "two sources have one name");
        }
    } catch (fabric::FabricFileError const & error) {
        checkLine(error.what());
        check(std::string_view(error.what()).starts_with(path + ":"),
              "a refusal does not start with the file");
    }
}

} // namespace fuzz
