#pragma once

#include "vxshow/system/OwnedDescriptor.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vxshow::cli::completion {

/// Names in a state by the filter that takes them, "--source".
using NamesByOption = std::map<std::string, std::vector<std::string>, std::less<>>;

/// Names that were read from a live state, kept in a file for later completions, and the lock that
/// lets only one process read the state at a time.
///
/// The files are in `vxshow` in XDG_CACHE_HOME, or in `$HOME/.cache` if that is no absolute path;
/// there are two for each state. Only the user can read them. Files of others and invalid ones
/// are ignored.
class NamesCache {
public:
    /// How long names count as what the state has, and the least time between two readings of one
    /// state.
    static constexpr std::chrono::seconds freshTime{10};

    /// How long names are offered at all.
    static constexpr std::chrono::minutes longestTime{10};

    /// The most bytes of a file; of more names the first are kept.
    static constexpr std::size_t mostBytes = std::size_t{256} << 10;

    /// Names, and whether they are fresh.
    struct Kept {
        NamesByOption names;
        bool isFresh = false;
    };

    /// `key` says everything that decides what the state is.
    explicit NamesCache(std::string_view key);

    /// Whether there is a folder that only this user can read. It is created if it is absent.
    bool isUsable() const noexcept { return !folder_.empty(); }

    /// The names that were kept; nullopt without any, or if they are too old.
    std::optional<Kept> read() const;

    /// The lock, held until the descriptor and all its copies are closed, if the state can be read
    /// now: nobody does, and the last reading began long enough ago. This counts as the beginning
    /// of a reading. Otherwise a descriptor that is not open.
    system::OwnedDescriptor beginReading() const;

    /// Whether another process is reading the state.
    bool isBeingRead() const;

    /// Keeps the names and removes files of states that were not read for `longestTime`. Names
    /// that are longer than 256 bytes or have control characters are left out. Raises
    /// `std::system_error`.
    void write(NamesByOption const & names) const;

private:
    void removeOldFiles() const;

    std::string digest_;
    std::string folder_; ///< with a slash at its end; empty if it cannot be used
    std::string names_;  ///< paths of the two files
    std::string lock_;
};

} // namespace vxshow::cli::completion
