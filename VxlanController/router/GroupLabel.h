#pragma once

#include <string_view>
#include <utility>

namespace VxlanController::Cli {

/// The label of a group of rows: the first row that is printed of the group shows it, whichever
/// code prints that row, and the cells below it are blank.
class GroupLabel {
public:
    explicit GroupLabel(std::string_view label) noexcept : label_(label) {}

    /// The label on the first call, empty on later ones. To be called once per row.
    std::string_view forNextRow() noexcept { return std::exchange(label_, {}); }

private:
    std::string_view label_;
};

} // namespace VxlanController::Cli
