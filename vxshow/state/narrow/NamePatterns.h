#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vxshow::state::narrow {

/// Whether `name` matches `pattern` as a whole: `*` stands for any text, also none, and `?` for one
/// character (of UTF-8, or one invalid byte). Every other character stands for itself. Takes at
/// most as many steps as the product of both lengths, whatever the pattern.
bool matchesPattern(std::string_view pattern, std::string_view name);

/// True if `text` holds a character with a meaning in patterns.
bool isPattern(std::string_view text);

/// Names and patterns of names. A name is in the set if it is one of the names or matches one of
/// the patterns.
class NamePatterns {
public:
    using Names = std::set<std::string, std::less<>>;

    void addName(std::string name) { names_.insert(std::move(name)); }

    void addPattern(std::string pattern) { patterns_.push_back(std::move(pattern)); }

    bool empty() const noexcept { return names_.empty() && patterns_.empty(); }

    bool contains(std::string_view name) const;

    Names const & names() const noexcept { return names_; }

    /// In the order in which they were added.
    std::vector<std::string> const & patterns() const noexcept { return patterns_; }

private:
    Names names_;
    std::vector<std::string> patterns_;
};

} // namespace vxshow::state::narrow
