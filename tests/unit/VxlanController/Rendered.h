#pragma once

#include "Vex/Types.h"

#include <sys/types.h>

#include <string>

/// An unnamed file to render to: a real descriptor whose content can be read back.
class OutputFile {
public:
    OutputFile();
    ~OutputFile();
    OutputFile(OutputFile const &) = delete;
    OutputFile & operator=(OutputFile const &) = delete;

    int fd() const noexcept { return fd_; }

    /// Everything that has been written.
    std::string content() const;

private:
    int fd_;
};

inline constexpr Vex::U32 textFormat = 1;
inline constexpr Vex::U32 jsonFormat = 2;

/// What a command renders.
template <class CommandPtr>
std::string rendered(CommandPtr const & command, Vex::U32 format = textFormat,
                     Vex::U32 revision = 2) {
    OutputFile const file;
    command->render(static_cast<Vex::U32>(file.fd()), format, revision);
    return file.content();
}
