#include "Vex/Reinstantiation.h"

namespace [[gnu::visibility("default")]] Vex {

void throwMutatorReinstantiating(std::string_view type, String const & key,
                                 std::string_view attribute, String const & newValue,
                                 String const & storedValue) {
    String text{type};
    text.append(" ").append(printable(key)).append(": ").append(attribute);
    text.append(" cannot change from ").append(printable(storedValue));
    text.append(" to ").append(printable(newValue));
    throw ReinstantiationError(text);
}

} // namespace Vex
