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

bool hasContent(fs::path const & path, std::string const & text) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) {
        return false;
    }
    std::ifstream in(path, std::ios::binary);
    return in && std::string(std::istreambuf_iterator<char>(in), {}) == text;
}

/// A file written beside its destination; the destructor removes it unless it was published.
class Draft {
public:
    Draft(fs::path destination, std::string const & text)
        : destination_(std::move(destination)), path_(destination_.string() + ".draft") {
        errno = 0;
        std::ofstream out(path_, std::ios::binary);
        out << text;
        out.close();
        if (!out) {
            auto const why = lastError();
            remove();
            fail("write", destination_, why);
        }
    }

    Draft(Draft const &) = delete;
    Draft & operator=(Draft const &) = delete;

    Draft(Draft && other) noexcept
        : destination_(std::move(other.destination_)), path_(std::exchange(other.path_, {})) {}

    ~Draft() { remove(); }

    void publish() {
        std::error_code why;
        fs::rename(path_, destination_, why);
        if (why) {
            fail("write", destination_, why);
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

    fs::path destination_;
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
        if (hasContent(path, text)) {
            continue;
        }
        std::error_code why;
        if (fs::is_directory(path, why)) {
            fail("write", path, std::make_error_code(std::errc::is_a_directory));
        }
        fs::create_directories(path.parent_path(), why);
        if (why) {
            fail("create the directory", path.parent_path(), why);
        }
        drafts.emplace_back(path, text);
    }
    for (auto & draft : drafts) {
        draft.publish();
    }
}

} // namespace modelc
