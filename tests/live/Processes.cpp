#include "tests/live/Processes.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>

std::vector<pid_t> processesWith(std::string const & one, std::string const & other) {
    std::vector<pid_t> found;
    for (auto const & entry : std::filesystem::directory_iterator("/proc")) {
        auto const name = entry.path().filename().string();
        pid_t pid = 0;
        auto const read = std::from_chars(name.data(), name.data() + name.size(), pid);
        if (read.ec != std::errc() || read.ptr != name.data() + name.size()) {
            continue;
        }
        std::ifstream file(entry.path() / "cmdline", std::ios::binary);
        // Of a process that ends now, nothing can be read, and this throws nothing.
        std::ostringstream content;
        content << file.rdbuf();
        auto const words = content.str();
        if (words.find(one) != std::string::npos && words.find(other) != std::string::npos) {
            found.push_back(pid);
        }
    }
    return found;
}
