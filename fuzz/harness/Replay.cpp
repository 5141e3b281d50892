#include "fuzz/Targets.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// Runs one target with each file of a folder: `fuzz_replay TARGET FOLDER`.
namespace {

struct Target {
    std::string_view name;
    void (*run)(std::string_view bytes);
};

constexpr std::array targets{
    Target{"command_line", fuzz::commandLine},
    Target{"fabric_file", fuzz::fabricFile},
    Target{"frr_answer", fuzz::frrAnswer},
    Target{"hashed_maps", fuzz::hashedMaps},
    Target{"model_text", fuzz::modelText},
    Target{"model_values", fuzz::modelValues},
    Target{"ordered_map", fuzz::orderedMap},
    Target{"ovsdb_answer", fuzz::ovsdbAnswer},
    Target{"printer", fuzz::printer},
    Target{"remotes", fuzz::remotes},
    Target{"screen", fuzz::screen},
    Target{"snapshot", fuzz::snapshot},
    Target{"string_forms", fuzz::stringForms},
    Target{"table_file", fuzz::tableFile},
    Target{"table_operations", fuzz::tableOperations},
};

std::vector<std::filesystem::path> filesIn(char const * folder) {
    std::vector<std::filesystem::path> files;
    for (auto const & entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

int main(int argc, char ** argv) {
    auto const * const found =
        argc == 3 ? std::find_if(targets.begin(), targets.end(),
                                 [&](Target const & target) { return target.name == argv[1]; })
                  : targets.end();
    if (found == targets.end()) {
        std::fputs("fuzz_replay: expected the name of a target and a folder of inputs\n", stderr);
        return 2;
    }
    auto const files = filesIn(argv[2]);
    for (auto const & path : files) {
        // The last name before a failure is the input that fails.
        std::puts(path.filename().c_str());
        std::fflush(stdout);
        std::ifstream file(path, std::ios::binary);
        std::string const bytes{std::istreambuf_iterator<char>(file), {}};
        if (!file) {
            std::fputs("fuzz_replay: the file cannot be read\n", stderr);
            return 1;
        }
        found->run(bytes);
    }
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}
