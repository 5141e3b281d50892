#include "outfmt/Printer.h"

#include <stdexcept>
#include <string>

namespace [[gnu::visibility("default")]] outfmt {
namespace {

constexpr unsigned indentedJsonFormat = 3;

} // namespace

Printer::Printer(int fd, unsigned format, bool, bool, bool, unsigned)
    : Renderer(fd, format),
      json_(buffer(), format == indentedJsonFormat ? JsonWriter::Layout::indented
                                                   : JsonWriter::Layout::compact) {}

bool Printer::printsJson() const {
    checkInterrupt();
    return mode() == jsonMode;
}

void Printer::start() {
    if (printsJson()) {
        json_.start();
    }
}

void Printer::end() {
    if (printsJson()) {
        json_.end();
    }
}

void Printer::startDict(std::string_view key) {
    if (printsJson()) {
        json_.startDict(key);
    }
}

void Printer::endDict() {
    if (printsJson()) {
        json_.endDict();
    }
}

void Printer::startList(std::string_view key) {
    if (printsJson()) {
        json_.startList(key);
    }
}

void Printer::endList() {
    if (printsJson()) {
        json_.endList();
    }
}

void Printer::startListEntry() {
    if (printsJson()) {
        json_.startListEntry();
    }
}

void Printer::endListEntry() {
    if (printsJson()) {
        json_.endListEntry();
    }
}

void Printer::refuse(char const * reason) {
    throw std::logic_error(std::string("outfmt: addAttributesJson(): ") + reason);
}

void Printer::addAttributes(std::span<AttrArg const * const> attributes) {
    if (printsJson()) {
        json_.addAttributes(attributes);
    }
}

} // namespace outfmt
