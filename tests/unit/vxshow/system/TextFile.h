#pragma once

#include <string>
#include <string_view>

namespace vxshow::test {

/// An unnamed file that holds `text`.
class TextFile {
public:
    explicit TextFile(std::string_view text);
    TextFile(TextFile const &) = delete;
    TextFile & operator=(TextFile const &) = delete;
    ~TextFile();

    int descriptor() const { return descriptor_; }

    /// A path to the file, valid as long as the object lives.
    std::string path() const;

private:
    int descriptor_;
};

} // namespace vxshow::test
