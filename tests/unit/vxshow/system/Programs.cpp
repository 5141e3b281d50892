#include "tests/unit/vxshow/system/Programs.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <thread>

using namespace std::chrono_literals;

namespace vxshow::test {

namespace {

bool isDead(pid_t pid) {
    std::ifstream const file("/proc/" + std::to_string(pid) + "/stat");
    std::ostringstream text;
    text << file.rdbuf();
    auto const state = text.str().rfind(") ");
    return state == std::string::npos || text.str()[state + 2] == 'Z' ||
           text.str()[state + 2] == 'X';
}

} // namespace

system::Limits patient() {
    return {system::Clock::now() + 2min, 1'000'000'000};
}

std::vector<std::string> shell(std::string const & script,
                               std::vector<std::string> const & arguments) {
    std::vector<std::string> words{"/bin/sh", "-c", script, "sh"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

system::Exited exited(std::vector<std::string> const & words) {
    auto answer = system::run(words, patient());
    if (auto * const exited = std::get_if<system::Exited>(&answer)) {
        return std::move(*exited);
    }
    ADD_FAILURE() << "ended as alternative " << answer.index();
    return {-1, system::FileBytes::copyOf(""), ""};
}

std::string printedBeforeTheTimeLimit(std::string const & script) {
    for (auto limit = 250ms; limit < 1min; limit *= 2) {
        std::string printed;
        auto const answer = system::run(shell(script), {system::Clock::now() + limit, 1000},
                                        [&](std::string_view piece) { printed += piece; });
        EXPECT_TRUE(std::holds_alternative<system::TimeLimitReached>(answer)) << answer.index();
        if (printed.ends_with('\n')) {
            return printed;
        }
    }
    ADD_FAILURE() << "printed nothing within a minute";
    return "0\n";
}

bool soon(std::function<bool()> const & condition) {
    auto const end = system::Clock::now() + 30s;
    while (!condition()) {
        if (system::Clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

bool diesSoon(pid_t pid) {
    return pid > 0 && soon([&] { return isDead(pid); });
}

Folder::Folder() : path_(std::filesystem::temp_directory_path() / "vxshow-process-XXXXXX") {
    EXPECT_TRUE(mkdtemp(path_.data()));
}

Folder::~Folder() {
    std::filesystem::remove_all(path_);
}

std::string Folder::put(std::string const & name, std::string const & text, mode_t mode) const {
    std::ofstream(path(name)) << text;
    EXPECT_EQ(chmod(path(name).c_str(), mode), 0);
    return path(name);
}

} // namespace vxshow::test
