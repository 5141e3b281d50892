#pragma once

#include <string>
#include <string_view>

namespace vxshow::test {

/// A file without a name in any directory that holds `text`.
class TextFile {
public:
    explicit TextFile(std::string_view text);
    TextFile(TextFile const &) = delete;
    TextFile & operator=(TextFile const &) = delete;
    ~TextFile();

    int descriptor() const { return descriptor_; }

    /// Leads to the file as long as this lives.
    std::string path() const;

private:
    int descriptor_;
};

} // namespace vxshow::test
