#include "Vex/Errors.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"
#include "fuzz/harness/Lines.h"
#include "models/Survey.h"

/// The string forms of the generated value types: what is read, written and read again is the same
/// value with the same form. A type with a collection has no reader.
namespace fuzz {

namespace {

namespace Cli = VxlanController::Cli;

template <class T>
void roundTrip(Vex::String const & form) {
    std::optional<T> value;
    try {
        value.emplace(Vex::strepToValue<T>(form));
    } catch (Vex::Error const & error) {
        return checkLine(error.what());
    }
    auto const written = valueToStrep(*value);
    auto const again = Vex::strepToValue<T>(written);
    check(again == *value, "a value that is written is read as another one");
    check(valueToStrep(again) == written, "equal values have different forms");
}

} // namespace

void modelValues(std::string_view bytes) {
    Input input(bytes);
    auto const type = input.below(4);
    Vex::String const form(input.rest());
    switch (type) {
    case 0:
        return roundTrip<Cli::MacVtep>(form);
    case 1:
        return roundTrip<Test::Survey::Sounding>(form);
    case 2:
        return roundTrip<Test::Survey::Sheet>(form);
    default:
        return roundTrip<Test::Survey::Folder>(form);
    }
}

} // namespace fuzz
