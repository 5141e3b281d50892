#include "outfmt/WriteError.h"

#include <string>
#include <system_error>

namespace [[gnu::visibility("default")]] outfmt {

WriteError::WriteError(int fd, int code)
    : Error("cannot write to descriptor " + std::to_string(fd) + ": " +
            std::generic_category().message(code)),
      code_(code) {}

WriteError::~WriteError() = default;

} // namespace outfmt
