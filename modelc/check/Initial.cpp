#include "modelc/check/Initial.h"

#include "modelc/source/Quoted.h"

#include <cstdint>
#include <limits>
#include <optional>

namespace modelc {

namespace {

std::uint64_t maximumOf(std::string_view number) {
    if (number == "U8") {
        return std::numeric_limits<std::uint8_t>::max();
    }
    if (number == "U16") {
        return std::numeric_limits<std::uint16_t>::max();
    }
    return number == "U32" ? std::numeric_limits<std::uint32_t>::max()
                           : std::numeric_limits<std::uint64_t>::max();
}

bool fits(std::string const & digits, std::uint64_t limit) {
    std::uint64_t value = 0;
    for (char const c : digits) {
        auto const digit = static_cast<std::uint64_t>(c - '0');
        if (value > (limit - digit) / 10) {
            return false;
        }
        value = value * 10 + digit;
    }
    return true;
}

std::string withoutLeadingZeros(std::string const & digits) {
    auto const first = digits.find_first_not_of('0');
    return first == std::string::npos ? "0" : digits.substr(first);
}

void resolveNumber(tree::Literal const & literal, Attribute & attribute, Problems & problems) {
    std::uint64_t const limit = maximumOf(attribute.type.name);
    if (literal.kind != tree::Literal::Kind::number) {
        problems.add(literal.at, "the default of '" + attribute.name +
                                     "' must be a number from 0 to " + std::to_string(limit));
    } else if (!fits(literal.text, limit)) {
        problems.add(literal.at, literal.text + " is too large for '" + attribute.name +
                                     "'; the maximum of a " + attribute.type.name + " is " +
                                     std::to_string(limit));
    } else {
        // Without the leading zeros that would make it octal.
        attribute.initial = withoutLeadingZeros(literal.text);
    }
}

void resolveByType(tree::Literal const & literal, Attribute & attribute, Problems & problems) {
    switch (attribute.type.kind) {
    case TypeClass::boolean:
        if (literal.kind == tree::Literal::Kind::boolean) {
            attribute.initial = literal.text;
        } else {
            problems.add(literal.at,
                         "the default of '" + attribute.name + "' must be 'true' or 'false'");
        }
        break;
    case TypeClass::number:
        resolveNumber(literal, attribute, problems);
        break;
    case TypeClass::text:
        if (literal.kind == tree::Literal::Kind::text) {
            attribute.initial = quotedForCpp(literal.text);
        } else {
            problems.add(literal.at, "'" + attribute.name + "' is a text; write it in quotes");
        }
        break;
    default:
        problems.add(literal.at, "'" + attribute.name + "' takes the default of '" +
                                     attribute.type.name +
                                     "'; only numbers, bool and texts can have one of their own");
    }
}

} // namespace

void resolveInitial(tree::Attribute const & parsed, bool ofEntity, Attribute & attribute,
                    Problems & problems) {
    bool const isConstant = attribute.kind == AttributeKind::constant;
    if (!parsed.initial) {
        if (isConstant) {
            problems.add(parsed.name.at,
                         "the constant '" + attribute.name + "' has no value; write '= \"...\"'");
        }
        return;
    }
    bool const single = isConstant || attribute.kind == AttributeKind::plain ||
                        attribute.kind == AttributeKind::constructorArgument;
    if (!single) {
        problems.add(parsed.initial->at,
                     "'" + attribute.name + "' is not a single value, so it cannot have a default");
    } else if (ofEntity && attribute.fromConstructor) {
        problems.add(parsed.initial->at,
                     "'" + attribute.name +
                         "' is always passed to the constructor, so it cannot have a default");
    } else if (!attribute.type.name.empty()) {
        resolveByType(*parsed.initial, attribute, problems);
    }
}

} // namespace modelc
