#include "modelc/source/Quoted.h"

namespace modelc {

std::string quotedForCpp(std::string_view text) {
    std::string quoted = "\"";
    for (char const c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (c == '\n') {
            quoted += "\\n";
        } else if (c == '\t') {
            quoted += "\\t";
        } else if ((c >= 0 && c < ' ') || c == '\x7f') {
            // Octal, since a hexadecimal escape would swallow digits that follow it.
            quoted += '\\';
            for (int shift = 6; shift >= 0; shift -= 3) {
                quoted += static_cast<char>('0' + ((c >> shift) & 7));
            }
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

} // namespace modelc
