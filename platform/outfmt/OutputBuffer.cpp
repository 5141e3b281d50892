#include "outfmt/OutputBuffer.h"

#include <algorithm>

namespace [[gnu::visibility("default")]] outfmt {

OutputBuffer::OutputBuffer(int fd, Parting parting)
    : descriptor_(fd), parting_(parting),
      storage_(std::make_unique_for_overwrite<char[]>(capacity + slack)) {}

void OutputBuffer::flush() {
    write(used_);
    written_ = used_ = 0;
}

void OutputBuffer::appendInPieces(std::string_view text) {
    while (!text.empty()) {
        makeRoom();
        std::size_t count = std::min(text.size(), room());
        std::memcpy(storage_.get() + used_, text.data(), count);
        used_ += count;
        text.remove_prefix(count);
    }
}

void OutputBuffer::fillInPieces(char character, std::size_t count) {
    while (count > 0) {
        makeRoom();
        std::size_t piece = std::min(count, room());
        std::memset(storage_.get() + used_, character, piece);
        used_ += piece;
        count -= piece;
    }
}

void OutputBuffer::makeRoom(std::size_t count) {
    if (count <= room()) {
        return;
    }
    std::size_t end = lastPart();
    write(end);
    std::memmove(storage_.get(), storage_.get() + end, used_ - end);
    used_ -= end;
    written_ = 0;
    if (count > room()) {
        flush();
    }
}

std::size_t OutputBuffer::lastPart() const {
    std::string_view pending(storage_.get(), used_);
    std::size_t lineEnd =
        parting_ == Parting::lineEnds ? pending.rfind('\n') : std::string_view::npos;
    // A line end among the bytes already written would leave nothing to write.
    return lineEnd == std::string_view::npos || lineEnd < written_ ? used_ : lineEnd + 1;
}

void OutputBuffer::write(std::size_t end) {
    while (written_ < end) {
        written_ += descriptor_.writeSome({storage_.get() + written_, end - written_});
    }
}

} // namespace outfmt
