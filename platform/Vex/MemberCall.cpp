#include "Vex/MemberCall.h"

namespace [[gnu::visibility("default")]] Vex {

void expectCount(std::size_t found, std::initializer_list<std::type_info const *> expected) {
    if (found == expected.size()) {
        return;
    }
    String text("expected ");
    if (expected.size() == 0) {
        text.append("no arguments");
    } else {
        text.append(std::to_string(expected.size()));
        text.append(expected.size() == 1 ? " argument (" : " arguments (");
        char const * separator = "";
        for (auto const * type : expected) {
            text.append(separator).append(typeText(*type));
            separator = ", ";
        }
        text.append(")");
    }
    throw OperandError(text.append(", found ").append(std::to_string(found)));
}

void expectObject(AnyValue const & object) {
    if (object.isNull()) {
        throw OperandError("object: expected an object, found a null pointer");
    }
}

} // namespace Vex
