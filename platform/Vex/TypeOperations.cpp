#include "Vex/TypeOperations.h"

#include <algorithm>
#include <stdexcept>

namespace [[gnu::visibility("default")]] Vex {

namespace {

constexpr Operation allOperations[] = {Operation::get,    Operation::set,    Operation::insert,
                                       Operation::remove, Operation::clear,  Operation::lookup,
                                       Operation::count,  Operation::iterate};

[[noreturn]] void notOfThisKind() {
    throw std::logic_error("the attribute is not of the kind that its record says");
}

String operationsText(AttributeKind kind) {
    String text;
    for (Operation const operation : allOperations) {
        if (hasOperation(kind, operation)) {
            text.append(text.empty() ? "it has " : ", ").append(operationText(operation));
        }
    }
    return text.empty() ? "it is only listed" : text;
}

/// The numbers of all attributes, with ranges written as "130 to 134".
String numbersText(Type const & type) {
    std::vector<U32> numbers;
    for (Type const * at = &type; at; at = at->base) {
        for (Attribute const & attribute : at->attributes) {
            numbers.push_back(attribute.number);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    String text;
    for (std::size_t first = 0; first < numbers.size();) {
        std::size_t last = first;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
            ++last;
        }
        text.append(text.empty() ? "expected " : ", ").append(std::to_string(numbers[first]));
        if (last > first) {
            text.append(" to ").append(std::to_string(numbers[last]));
        }
        first = last + 1;
    }
    return text.empty() ? "the type has no attributes" : text;
}

[[noreturn]] void refuse(String text, std::string_view why) {
    throw OperandError(text.append(": ").append(why));
}

/// A type with a base accepts only objects of its own type, although the attributes of the
/// base would accept objects of every type derived from it.
void expectKin(AnyValue const & object, Type const & type) {
    Type const * const found = object.reflection();
    for (Type const * at = found; at; at = at->base) {
        if (at == &type) {
            return;
        }
    }
    if (type.base && found) {
        throw OperandError(String("object: expected ")
                               .append(type.name)
                               .append(" or what is derived from it, found ")
                               .append(found->name));
    }
}

} // namespace

std::string_view operationText(Operation operation) noexcept {
    switch (operation) {
    case Operation::get:
        return "get";
    case Operation::set:
        return "set";
    case Operation::insert:
        return "insert";
    case Operation::remove:
        return "remove";
    case Operation::clear:
        return "clear";
    case Operation::lookup:
        return "lookup";
    case Operation::count:
        return "count";
    case Operation::iterate:
        break;
    }
    return "iterate";
}

bool hasOperation(AttributeKind kind, Operation operation) noexcept {
    switch (kind) {
    case AttributeKind::constructorArgument:
    case AttributeKind::constant:
    case AttributeKind::entityPointer:
        return operation == Operation::get;
    case AttributeKind::plain:
    case AttributeKind::entityPointerPlain:
        return operation == Operation::get || operation == Operation::set;
    case AttributeKind::ownedEntity:
        return operation == Operation::get || operation == Operation::insert ||
               operation == Operation::remove;
    case AttributeKind::valueCollection:
    case AttributeKind::setCollection:
    case AttributeKind::hashedSetCollection:
    case AttributeKind::ownedEntityCollection:
    case AttributeKind::sharedEntityCollection:
        return operation != Operation::get && operation != Operation::set;
    case AttributeKind::method:
        break;
    }
    return false;
}

AnyValue AttributeOperations::get(AnyValue const &) const {
    notOfThisKind();
}

void AttributeOperations::set(AnyValue &, AnyValue const &) const {
    notOfThisKind();
}

AnyValue AttributeOperations::insert(AnyValue &, AnyValues const &) const {
    notOfThisKind();
}

AnyValue AttributeOperations::remove(AnyValue &, AnyValues const &) const {
    notOfThisKind();
}

void AttributeOperations::clear(AnyValue &) const {
    notOfThisKind();
}

AnyValue AttributeOperations::lookup(AnyValue const &, AnyValue const &) const {
    notOfThisKind();
}

std::size_t AttributeOperations::count(AnyValue const &) const {
    notOfThisKind();
}

AnyIterator AttributeOperations::iterate(AnyValue const &) const {
    notOfThisKind();
}

AttributeOperations const & TypeOperations::ownOrInherited(U32 number) const {
    for (Type const * at = &type(); at; at = at->base) {
        auto const * found = at->operations ? at->operations->attribute(number) : nullptr;
        if (found) {
            return *found;
        }
    }
    notOfThisKind();
}

template <class Ask>
auto TypeOperations::ask(AnyValue const & object, U32 number, Operation operation,
                         Ask question) const {
    String context{type().name};
    Attribute const * attribute = type().attribute(number);
    if (!attribute) {
        context.append(": ")
            .append(operationText(operation))
            .append(": no attribute has the number ");
        refuse(context.append(std::to_string(number)), numbersText(type()));
    }
    context.append(".").append(attribute->name).append(": ").append(operationText(operation));
    if (!hasOperation(attribute->kind, operation)) {
        context.append(" is no operation of this kind of attribute (");
        refuse(context.append(kindText(attribute->kind)).append(")"),
               operationsText(attribute->kind));
    }
    try {
        expectKin(object, type());
        return question(ownOrInherited(number));
    } catch (OperandError const & error) {
        refuse(context, error.what());
    }
}

AnyValue TypeOperations::construct(AnyValues const & arguments) const {
    try {
        return constructed(arguments);
    } catch (OperandError const & error) {
        refuse(String(type().name).append(": construct"), error.what());
    }
}

AnyValue TypeOperations::get(AnyValue const & object, U32 number) const {
    return ask(object, number, Operation::get,
               [&](AttributeOperations const & attribute) { return attribute.get(object); });
}

void TypeOperations::set(AnyValue & object, U32 number, AnyValue const & value) const {
    ask(object, number, Operation::set,
        [&](AttributeOperations const & attribute) { attribute.set(object, value); });
}

AnyValue TypeOperations::insert(AnyValue & object, U32 number, AnyValues const & arguments) const {
    return ask(object, number, Operation::insert, [&](AttributeOperations const & attribute) {
        return attribute.insert(object, arguments);
    });
}

AnyValue TypeOperations::remove(AnyValue & object, U32 number, AnyValues const & key) const {
    return ask(object, number, Operation::remove, [&](AttributeOperations const & attribute) {
        return attribute.remove(object, key);
    });
}

void TypeOperations::clear(AnyValue & object, U32 number) const {
    ask(object, number, Operation::clear,
        [&](AttributeOperations const & attribute) { attribute.clear(object); });
}

AnyValue TypeOperations::lookup(AnyValue const & object, U32 number, AnyValue const & key) const {
    return ask(object, number, Operation::lookup, [&](AttributeOperations const & attribute) {
        return attribute.lookup(object, key);
    });
}

std::size_t TypeOperations::count(AnyValue const & object, U32 number) const {
    return ask(object, number, Operation::count,
               [&](AttributeOperations const & attribute) { return attribute.count(object); });
}

AnyIterator TypeOperations::iterate(AnyValue const & object, U32 number) const {
    return ask(object, number, Operation::iterate,
               [&](AttributeOperations const & attribute) { return attribute.iterate(object); });
}

String TypeOperations::stringForm(AnyValue const & object) const {
    try {
        if (auto text = toText(object)) {
            return *text;
        }
    } catch (OperandError const & error) {
        refuse(String(type().name).append(": string form"), error.what());
    }
    refuse(String(type().name), "the type has no string form");
}

AnyValue TypeOperations::fromStringForm(String const & text) const {
    AnyValue value = fromText(text);
    if (value.empty()) {
        refuse(String(type().name), "the type is not read from a string form");
    }
    return value;
}

} // namespace Vex
