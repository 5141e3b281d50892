#include "modelc/check/Constructors.h"

#include "modelc/source/Spelling.h"

#include <algorithm>
#include <set>
#include <string>

namespace modelc {

namespace {

bool canBeArgument(AttributeKind kind) {
    return kind == AttributeKind::constructorArgument || kind == AttributeKind::plain ||
           kind == AttributeKind::entityPointer || kind == AttributeKind::entityPointerPlain;
}

std::vector<std::string> attributeNames(Type const & type) {
    std::vector<std::string> all;
    for (Type const * at = &type; at; at = at->base) {
        for (auto const & attribute : at->attributes) {
            all.push_back(attribute.name);
        }
    }
    return all;
}

bool isOwn(Type const & type, Attribute const * attribute) {
    return std::any_of(type.attributes.begin(), type.attributes.end(),
                       [&](Attribute const & own) { return &own == attribute; });
}

void checkBaseArguments(tree::Type const & parsed, Type & type, Problems & problems) {
    if (!type.base) {
        return;
    }
    auto const & expected = type.base->constructor;
    bool const same = type.constructor.size() >= expected.size() &&
                      std::equal(expected.begin(), expected.end(), type.constructor.begin());
    if (same) {
        type.baseArguments = expected.size();
        return;
    }
    std::string list;
    for (auto const * argument : expected) {
        list += (list.empty() ? "" : ", ") + argument->name;
    }
    problems.add(parsed.name.at, "the constructor arguments of '" + type.name +
                                     "' must start with those of its base: " + list);
}

void checkOrder(tree::Type const & parsed, Type const & type, Problems & problems) {
    Attribute const * previous = nullptr;
    for (std::size_t i = 0; i < type.constructor.size(); ++i) {
        Attribute const * argument = type.constructor[i];
        if (!isOwn(type, argument)) {
            continue;
        }
        if (previous && argument < previous) {
            problems.add(parsed.constructor[i].at,
                         "constructor arguments must be in the order of the attributes; '" +
                             argument->name + "' is declared before '" + previous->name + "'");
        }
        previous = argument;
    }
}

} // namespace

void resolveConstructor(tree::Type const & parsed, Type & type, Problems & problems) {
    std::set<std::string> seen;
    bool complete = true;
    for (auto const & name : parsed.constructor) {
        Attribute const * argument = findAttribute(type, name.text);
        if (!argument) {
            problems.add(name.at, "'" + type.name + "' has no attribute '" + name.text + "'" +
                                      didYouMean(name.text, attributeNames(type)));
        } else if (!canBeArgument(argument->kind)) {
            problems.add(name.at, "'" + name.text +
                                      "' cannot be a constructor argument; only "
                                      "single values and shared entities can");
        } else if (!seen.insert(name.text).second) {
            problems.add(name.at, "duplicate constructor argument '" + name.text + "'");
        } else if (!isOwn(type, argument) && !argument->fromConstructor) {
            problems.add(name.at, "'" + name.text +
                                      "' belongs to the base, which does not take "
                                      "it as a constructor argument");
        } else {
            type.constructor.push_back(argument);
            continue;
        }
        complete = false;
    }
    if (complete) {
        checkBaseArguments(parsed, type, problems);
        checkOrder(parsed, type, problems);
    }
}

} // namespace modelc
