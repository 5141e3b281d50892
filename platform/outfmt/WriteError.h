#pragma once

#include "Vex/Errors.h"

namespace [[gnu::visibility("default")]] outfmt {

/// The output could not be written: for example, the disk is full, the reader has gone,
/// or the descriptor is not open for writing. The text names the descriptor and the
/// system's reason.
class WriteError : public Vex::Error {
public:
    WriteError(int fd, int code);
    ~WriteError() override;

    /// The system's error number, such as ENOSPC or EPIPE.
    int code() const noexcept { return code_; }

private:
    int code_;
};

} // namespace outfmt
