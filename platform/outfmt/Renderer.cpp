#include "outfmt/Renderer.h"

namespace [[gnu::visibility("default")]] outfmt {

Renderer::Renderer(int fd, unsigned format)
    : mode_(format == textMode ? textMode : jsonMode),
      buffer_(fd, mode_ == textMode ? OutputBuffer::Parting::lineEnds
                                    : OutputBuffer::Parting::anywhere) {}

void Renderer::flush() {
    checkInterrupt();
    buffer_.flush();
}

} // namespace outfmt
