#include "modelc/output/Files.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

namespace modelc {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(std::string const & what, fs::path const & path, std::error_code why) {
    throw FileError("cannot " + what + " " + path.string() + ": " + why.message());
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

bool holds(fs::path const & path, std::string const & text) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) {
        return false;
    }
    std::ifstream in(path, std::ios::binary);
    return in && std::string(std::istreambuf_iterator<char>(in), {}) == text;
}

/// A file that is not in its place yet; gone with its holder unless it was moved there.
class Draft {
public:
    Draft(fs::path place, std::string const & text)
        : place_(std::move(place)), path_(place_.string() + ".draft") {
        errno = 0;
        std::ofstream out(path_, std::ios::binary);
        out << text;
        out.close();
        if (!out) {
            auto const why = lastError();
            remove();
            fail("write", place_, why);
        }
    }

    Draft(Draft const &) = delete;
    Draft & operator=(Draft const &) = delete;

    Draft(Draft && other) noexcept
        : place_(std::move(other.place_)), path_(std::exchange(other.path_, {})) {}

    ~Draft() { remove(); }

    void publish() {
        std::error_code why;
        fs::rename(path_, place_, why);
        if (why) {
            fail("write", place_, why);
        }
        path_.clear();
    }

private:
    void remove() noexcept {
        std::error_code ignored;
        if (!path_.empty()) {
            fs::remove(path_, ignored);
        }
    }

    fs::path place_;
    fs::path path_;
};

} // namespace

std::string readFile(fs::path const & path) {
    if (fs::is_directory(path)) {
        fail("read", path, std::make_error_code(std::errc::is_a_directory));
    }
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        fail("read", path, lastError());
    }
    std::string text(std::istreambuf_iterator<char>(in), {});
    if (in.bad()) {
        fail("read", path, lastError());
    }
    return text;
}

void writeFiles(std::vector<std::pair<fs::path, std::string>> const & files) {
    std::vector<Draft> drafts;
    for (auto const & [path, text] : files) {
        if (holds(path, text)) {
            continue;
        }
        std::error_code why;
        if (fs::is_directory(path, why)) {
            fail("write", path, std::make_error_code(std::errc::is_a_directory));
        }
        fs::create_directories(path.parent_path(), why);
        if (why) {
            fail("make the folder", path.parent_path(), why);
        }
        drafts.emplace_back(path, text);
    }
    for (auto & draft : drafts) {
        draft.publish();
    }
}

} // namespace modelc
