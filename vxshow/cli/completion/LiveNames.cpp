#include "vxshow/cli/completion/LiveNames.h"

#include "vxshow/cli/MountState.h"
#include "vxshow/cli/completion/NamesCache.h"
#include "vxshow/cli/completion/StateNames.h"
#include "vxshow/system/FileBytes.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <thread>
#include <unistd.h>
#include <utility>

namespace vxshow::cli::completion {

namespace {

using system::OwnedDescriptor;

constexpr std::chrono::milliseconds longestWait{150};
constexpr std::chrono::milliseconds betweenLooks{5};
constexpr std::chrono::seconds longestReading{10};
/// After this long a reading is ended from outside, wherever it is.
constexpr unsigned lastSeconds = 15;

/// All that decides what the state is: the same text names the same sources. A relative path in it
/// counts from the current folder.
std::string keyOf(StateOptions const & options) {
    std::string key = std::filesystem::current_path().native() + '\n';
    for (std::string const & database : options.databases) {
        key += "--ovsdb " + database + '\n';
    }
    key += options.frr ? "--frr\n" : "";
    if (!options.fabricPath.empty()) {
        key += "--fabric " + options.fabricPath + '\n';
        key += system::FileBytes::open(options.fabricPath, longestFabricFile).text();
    }
    return key;
}

/// Leaves what belongs to the shell: its terminal and all descriptors but the lock, which becomes
/// the only one besides standard streams that lead nowhere.
void detach(int lock) {
    constexpr int kept = STDERR_FILENO + 1;
    ::setsid();
    // The end of a terminal or of a shell is none of its concern.
    std::signal(SIGPROF, SIG_DFL);
    if (lock != kept) {
        ::dup2(lock, kept);
    }
    ::fcntl(kept, F_SETFD, FD_CLOEXEC);
    for (int const number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::close(number);
        ::open("/dev/null", number == STDIN_FILENO ? O_RDONLY : O_WRONLY);
    }
    ::closefrom(kept + 1);
    // No window must open for a password either.
    ::setenv("SSH_ASKPASS_REQUIRE", "never", 1);
    ::alarm(lastSeconds);
}

/// Reads the state and keeps its names. Any failure leaves the names from before.
[[noreturn]] void fill(NamesCache const & cache, StateOptions options, int lock) noexcept {
    detach(lock);
    try {
        options.timeLimit = longestReading;
        auto const reading = stateReader(options, state::Keep::nothing)({}, {});
        cache.write(namesIn(reading.mount));
    } catch (std::exception const &) {
        ::_exit(EXIT_FAILURE); // the command itself will report what is wrong
    }
    ::_exit(EXIT_SUCCESS);
}

/// Begins a reading if it is time for one.
void beginReading(NamesCache const & cache, StateOptions const & options) {
    OwnedDescriptor const lock = cache.beginReading();
    if (lock.isOpen() && ::fork() == 0) {
        fill(cache, options, lock.number());
    }
}

void waitForReading(NamesCache const & cache) {
    auto const end = std::chrono::steady_clock::now() + longestWait;
    while (cache.isBeingRead() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(betweenLooks);
    }
}

} // namespace

std::vector<std::string> liveNames(std::string const & option, StateOptions const & options) {
    NamesCache const cache(keyOf(options));
    if (!cache.isUsable()) {
        return {};
    }
    auto kept = cache.read();
    if (!kept || !kept->isFresh) {
        beginReading(cache, options);
        waitForReading(cache);
        kept = cache.read();
    }
    auto const found = kept ? kept->names.find(option) : NamesByOption::const_iterator();
    return kept && found != kept->names.end() ? found->second : std::vector<std::string>();
}

} // namespace vxshow::cli::completion
