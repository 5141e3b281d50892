#pragma once

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

/// A folder that is removed with its contents by the destructor.
class Folder {
public:
    Folder() {
        path_ = std::filesystem::temp_directory_path() / "vxshow-test-XXXXXX";
        EXPECT_TRUE(mkdtemp(path_.data()));
    }

    Folder(Folder const &) = delete;
    Folder & operator=(Folder const &) = delete;

    ~Folder() { std::filesystem::remove_all(path_); }

    std::string file(std::string const & name) const { return path_ + "/" + name; }

    std::string const & path() const { return path_; }

    /// The names of all files in it, including hidden ones.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (auto const & entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

private:
    std::string path_;
};
