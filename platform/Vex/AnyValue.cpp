#include "Vex/AnyValue.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>

namespace [[gnu::visibility("default")]] Vex {

namespace {

struct Free {
    void operator()(char * text) const noexcept { std::free(text); }
};

} // namespace

String typeText(std::type_info const & type) {
    struct Number {
        std::type_info const & info;
        char const * name;
    };

    static Number const numbers[] = {
        {typeid(U8), "U8"}, {typeid(U16), "U16"}, {typeid(U32), "U32"}, {typeid(U64), "U64"}};
    for (Number const & number : numbers) {
        if (type == number.info) {
            return number.name;
        }
    }
    int status = 0;
    std::unique_ptr<char, Free> const name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status));
    return name ? name.get() : type.name();
}

AnyValue::AnyValue(std::nullptr_t) : AnyValue(Ptr<PtrInterface>()) {}

String AnyValue::typeName() const {
    return type_ ? typeText(type_->info) : "nothing";
}

Type const * AnyValue::reflection() const {
    return type_ ? type_->reflection(value_) : nullptr;
}

std::optional<String> AnyValue::text() const {
    return type_ ? type_->text(value_) : std::nullopt;
}

bool AnyValue::isNull() const noexcept {
    Ptr<PtrInterface const> held;
    return entity(held) && !held;
}

bool AnyValue::entity(Ptr<PtrInterface const> & constant) const {
    if (auto const * held = std::any_cast<Ptr<PtrInterface const>>(&value_)) {
        constant = *held;
        return true;
    }
    Ptr<PtrInterface> changeable;
    bool const found = entity(changeable);
    constant = changeable;
    return found;
}

bool AnyValue::entity(Ptr<PtrInterface> & changeable) const {
    auto const * held = std::any_cast<Ptr<PtrInterface>>(&value_);
    if (held) {
        changeable = *held;
    }
    return held;
}

bool AnyValue::operator==(AnyValue const & other) const {
    Ptr<PtrInterface const> x;
    Ptr<PtrInterface const> y;
    if (entity(x)) {
        return other.entity(y) && x == y;
    }
    return empty() ? other.empty() : type_->equal(value_, other.value_);
}

void AnyValue::throwMismatch(std::type_info const & expected, std::string_view what) const {
    String text{what};
    text.append(text.empty() ? "" : ": ").append("expected ").append(typeText(expected));
    throw OperandError(text.append(", found ").append(typeName()));
}

} // namespace Vex
