#pragma once

#include <string_view>
#include <utility>

namespace VxlanController::Cli {

/// A column that names a group of rows: the name stands on the first row that is printed of
/// the group, wherever that comes from, and the following ones are blank.
class NameColumn {
public:
    explicit NameColumn(std::string_view name) noexcept : name_(name) {}

    /// What stands on the row that is printed now.
    std::string_view next() noexcept { return std::exchange(name_, {}); }

private:
    std::string_view name_;
};

} // namespace VxlanController::Cli
