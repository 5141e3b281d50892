#include "vxshow/cli/completion/NamesCache.h"

#include "vxshow/system/AtomicFile.h"
#include "vxshow/system/DescriptorIo.h"
#include "vxshow/system/FileBytes.h"
#include "vxshow/text/ControlCharacters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vxshow::cli::completion {

namespace {

using system::OwnedDescriptor;

constexpr std::string_view firstLine = "vxshow names 1\n";
constexpr std::string_view lastLine = "end\n";
constexpr std::size_t longestName = 256;
constexpr std::array<std::string_view, 4> options{"--source", "--vni", "--router", "--switch"};

/// FNV-1a, from any start.
std::uint64_t hashOf(std::string_view text, std::uint64_t hash) {
    constexpr std::uint64_t prime = 0x100000001b3;
    for (char const c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * prime;
    }
    return hash;
}

/// 32 hexadecimal digits. The key is the user's own, so nobody looks for two with the same.
std::string digestOf(std::string_view key) {
    constexpr std::array<std::uint64_t, 2> starts{0xcbf29ce484222325, 0x84222325cbf29ce4};
    std::string digits;
    for (std::uint64_t const start : starts) {
        auto const hash = hashOf(key, start);
        for (int shift = 60; shift >= 0; shift -= 4) {
            digits += "0123456789abcdef"[hash >> shift & 0xF];
        }
    }
    return digits;
}

/// The file that the descriptor is of, if only this user can read and write it.
std::optional<struct stat> ownStatus(int file, mode_t type) {
    struct stat found {};

    bool const isOwn = file >= 0 && ::fstat(file, &found) == 0 &&
                       (found.st_mode & S_IFMT) == type && found.st_uid == ::geteuid() &&
                       (found.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isOwn ? std::optional(found) : std::nullopt;
}

/// How long ago the file was written; nullopt if its time is yet to come.
std::optional<std::chrono::nanoseconds> ageOf(struct stat const & file) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    auto const age = std::chrono::seconds(now.tv_sec - file.st_mtim.tv_sec) +
                     std::chrono::nanoseconds(now.tv_nsec - file.st_mtim.tv_nsec);
    return age >= std::chrono::nanoseconds(0) ? std::optional(age) : std::nullopt;
}

std::string cacheFolder() {
    char const * const cache = std::getenv("XDG_CACHE_HOME");
    if (cache && cache[0] == '/') {
        return cache;
    }
    char const * const home = std::getenv("HOME");
    return home && home[0] == '/' ? std::string(home) + "/.cache" : "";
}

/// The folder with a slash at its end, created if it is absent; empty if it cannot be used.
std::string openFolder() {
    constexpr mode_t onlyForUser = 0700;
    auto const cache = cacheFolder();
    if (cache.empty()) {
        return "";
    }
    auto const folder = cache + "/vxshow";
    ::mkdir(cache.c_str(), onlyForUser);
    ::mkdir(folder.c_str(), onlyForUser);
    OwnedDescriptor const opened(
        ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return ownStatus(opened.number(), S_IFDIR) ? folder + "/" : "";
}

OwnedDescriptor openFile(std::string const & path, int flags) {
    constexpr mode_t onlyForUser = 0600;
    return OwnedDescriptor(
        ::open(path.c_str(), flags | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, onlyForUser));
}

bool isName(std::string_view name) {
    return !name.empty() && name.size() <= longestName && !text::hasControls(name);
}

/// The names in the text of a file; nullopt if it is invalid, or that of another state.
std::optional<NamesByOption> readNames(std::string_view text, std::string_view digest) {
    std::string const head = std::string(firstLine).append(digest).append("\n");
    if (!text.starts_with(head) || !text.ends_with(lastLine)) {
        return std::nullopt;
    }
    text.remove_prefix(head.size());
    text.remove_suffix(lastLine.size());
    NamesByOption names;
    while (!text.empty()) {
        auto const end = text.find('\n');
        auto const line = text.substr(0, end);
        auto const blank = line.find(' ');
        if (end == std::string_view::npos || blank == std::string_view::npos ||
            std::find(options.begin(), options.end(), line.substr(0, blank)) == options.end() ||
            !isName(line.substr(blank + 1))) {
            return std::nullopt;
        }
        names[std::string(line.substr(0, blank))].emplace_back(line.substr(blank + 1));
        text.remove_prefix(end + 1);
    }
    return names;
}

} // namespace

NamesCache::NamesCache(std::string_view key)
    : digest_(digestOf(key)), folder_(openFolder()), names_(folder_ + "names-" + digest_),
      lock_(folder_ + "lock-" + digest_) {}

std::optional<NamesCache::Kept> NamesCache::read() const {
    auto const file = openFile(names_, O_RDONLY);
    auto const status = ownStatus(file.number(), S_IFREG);
    auto const age = status ? ageOf(*status) : std::nullopt;
    if (!age || *age > longestTime) {
        return std::nullopt;
    }
    try {
        auto const bytes = system::FileBytes::read(file.number(), mostBytes);
        auto names = readNames(bytes.text(), digest_);
        return names ? std::optional(Kept{*std::move(names), *age < freshTime}) : std::nullopt;
    } catch (std::exception const &) {
        return std::nullopt;
    }
}

OwnedDescriptor NamesCache::beginReading() const {
    auto file = openFile(lock_, O_RDWR | O_CREAT);
    auto const locked = ownStatus(file.number(), S_IFREG);
    if (!locked || ::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        return {};
    }

    // Since it was opened, another process can have read the state, or removed the file.
    struct stat named {};

    auto const now = ownStatus(file.number(), S_IFREG);
    if (!now || ::stat(lock_.c_str(), &named) != 0 || named.st_ino != now->st_ino) {
        return {};
    }
    auto const age = ageOf(*now);
    // A file that was just created is empty: no reading has begun yet.
    if (now->st_size > 0 && age && *age < freshTime) {
        return {};
    }
    bool const begins =
        ::ftruncate(file.number(), 1) == 0 && ::futimens(file.number(), nullptr) == 0;
    return begins ? std::move(file) : OwnedDescriptor();
}

bool NamesCache::isBeingRead() const {
    auto const file = openFile(lock_, O_RDONLY);
    return file.isOpen() && ::flock(file.number(), LOCK_SH | LOCK_NB) != 0;
}

void NamesCache::write(NamesByOption const & names) const {
    std::string text = std::string(firstLine).append(digest_).append("\n");
    for (auto const & [option, list] : names) {
        for (std::string const & name : list) {
            auto const more = option.size() + name.size() + 2;
            if (isName(name) && text.size() + more + lastLine.size() <= mostBytes) {
                text.append(option).append(" ").append(name).append("\n");
            }
        }
    }
    text.append(lastLine);
    // The new file gets the permissions of the old one, which must not be those of another file.
    if (!ownStatus(openFile(names_, O_RDONLY).number(), S_IFREG)) {
        ::unlink(names_.c_str());
    }
    auto const before = ::umask(S_IRWXG | S_IRWXO);
    system::AtomicFile file(names_);
    ::umask(before);
    if (auto const error = system::writeAll(file.descriptor(), text)) {
        throw std::system_error(error);
    }
    file.commit();
    removeOldFiles();
}

void NamesCache::removeOldFiles() const {
    std::error_code error;
    for (auto const & entry : std::filesystem::directory_iterator(folder_, error)) {
        std::string const name = entry.path().filename();
        if (!name.starts_with("names-") && !name.starts_with("lock-")) {
            continue;
        }
        auto const file = openFile(entry.path(), O_RDONLY);
        auto const status = ownStatus(file.number(), S_IFREG);
        auto const age = status ? ageOf(*status) : std::nullopt;
        // A lock that is held stays.
        if (age && *age > longestTime && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0) {
            ::unlink(entry.path().c_str());
        }
    }
}

} // namespace vxshow::cli::completion
