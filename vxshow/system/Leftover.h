#pragma once

#include <atomic>

namespace vxshow::system {

/// The path of a temporary file or folder, which has to go also if the process ends before its
/// owner can remove it. The owner registers it as soon as it exists.
///
/// There can be 8 at a time; the path of a further one is not known to `removeLeftovers`.
class Leftover {
public:
    Leftover() = default;
    Leftover(Leftover const &) = delete;
    Leftover & operator=(Leftover const &) = delete;

    ~Leftover() { forget(); }

    /// From now on `path` is removed by `removeLeftovers`, in place of the one before. The text
    /// stays with the caller and must not change until `forget`.
    void remember(char const * path) noexcept;

    /// It has been removed, or has become what it was made for.
    void forget() noexcept;

private:
    std::atomic<char const *> * place_ = nullptr;
};

/// Removes what is registered: files, and folders with the files in them, but not their subfolders.
/// Makes only system calls, so it can run when there is no memory. Errors are ignored.
void removeLeftovers() noexcept;

} // namespace vxshow::system
