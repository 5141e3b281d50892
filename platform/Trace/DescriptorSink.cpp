#include "Trace/DescriptorSink.h"

#include "Vex/Digits.h"
#include "outfmt/Utf8.h"

#include <string>
#include <string_view>
#include <unistd.h>

namespace [[gnu::visibility("default")]] Trace {
namespace {

std::string_view baseName(std::string_view file) {
    return file.substr(file.rfind('/') + 1);
}

bool isHarmless(std::string_view sequence) {
    auto first = static_cast<unsigned char>(sequence[0]);
    if (sequence.size() == 1) {
        return first >= 0x20 && first != 0x7F;
    }
    bool isC1 = first == 0xC2 && static_cast<unsigned char>(sequence[1]) < 0xA0;
    return !isC1;
}

void appendHarmless(std::string & line, std::string_view text) {
    while (!text.empty()) {
        outfmt::Utf8Sequence sequence = outfmt::firstUtf8Sequence(text);
        std::string_view bytes = text.substr(0, sequence.length);
        if (sequence.valid && isHarmless(bytes)) {
            line += bytes;
        } else {
            for (char character : bytes) {
                auto byte = static_cast<unsigned char>(character);
                line += "\\x";
                line += Vex::hexDigits[byte >> 4];
                line += Vex::hexDigits[byte & 0xF];
            }
        }
        text.remove_prefix(sequence.length);
    }
}

void writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else {
            return; // after a signal too: a process that must end cannot wait for its trace reader
        }
    }
}

} // namespace

Sink descriptorSink(int fd) {
    return [fd](Record const & record) {
        std::string line = std::to_string(record.level);
        line += ' ';
        line += baseName(record.file);
        line += ':';
        line += std::to_string(record.line);
        line += ' ';
        line += record.function;
        line += ": ";
        appendHarmless(line, record.text);
        line += '\n';
        writeAll(fd, line);
    };
}

} // namespace Trace
