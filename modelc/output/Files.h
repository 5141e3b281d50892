#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace modelc {

/// A file cannot be read or written; the message names it and gives the reason.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The whole content of a file. Throws `FileError`.
std::string readFile(std::filesystem::path const & path);

/// Writes all files or none: each is first written beside its destination, and renamed only
/// when all are complete. A file that already has the same content is left alone, so that
/// nothing is rebuilt because of it. Creates missing directories. Throws `FileError`.
void writeFiles(std::vector<std::pair<std::filesystem::path, std::string>> const & files);

} // namespace modelc
