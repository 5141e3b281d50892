#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace modelc {

/// A file that cannot be read or written; the text names it and says why.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The whole content of a file.
std::string readFile(std::filesystem::path const & path);

/// Writes all files or none: each is written beside its place first, and moved there only
/// when the last one is complete. A file that holds the same text already is not touched,
/// so that nothing is compiled again for it. Makes the folders that are missing.
void writeFiles(std::vector<std::pair<std::filesystem::path, std::string>> const & files);

} // namespace modelc
