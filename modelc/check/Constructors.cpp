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

std::vector<std::string> names(Type const & type) {
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

void checkBaseArguments(tree::Type const & read, Type & type, Problems & problems) {
    if (!type.base) {
        return;
    }
    auto const & wanted = type.base->constructor;
    bool const same = type.constructor.size() >= wanted.size() &&
                      std::equal(wanted.begin(), wanted.end(), type.constructor.begin());
    if (same) {
        type.baseArguments = wanted.size();
        return;
    }
    std::string list;
    for (auto const * argument : wanted) {
        list += (list.empty() ? "" : ", ") + argument->name;
    }
    problems.add(read.name.at, "the constructor arguments of '" + type.name +
                                   "' must start with those of its base: " + list);
}

void checkOrder(tree::Type const & read, Type const & type, Problems & problems) {
    Attribute const * before = nullptr;
    for (std::size_t i = 0; i < type.constructor.size(); ++i) {
        Attribute const * argument = type.constructor[i];
        if (!isOwn(type, argument)) {
            continue;
        }
        if (before && argument < before) {
            problems.add(read.constructor[i].at,
                         "constructor arguments stand in the order of the attributes; '" +
                             argument->name + "' is declared before '" + before->name + "'");
        }
        before = argument;
    }
}

} // namespace

void resolveConstructor(tree::Type const & read, Type & type, Problems & problems) {
    std::set<std::string> seen;
    bool complete = true;
    for (auto const & name : read.constructor) {
        Attribute const * argument = findAttribute(type, name.text);
        if (!argument) {
            problems.add(name.at, "'" + type.name + "' has no attribute '" + name.text + "'" +
                                      didYouMean(name.text, names(type)));
        } else if (!canBeArgument(argument->kind)) {
            problems.add(name.at, "'" + name.text +
                                      "' cannot be a constructor argument; only "
                                      "single values and shared entities can");
        } else if (!seen.insert(name.text).second) {
            problems.add(name.at,
                         "the constructor argument '" + name.text + "' is given a second time");
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
        checkBaseArguments(read, type, problems);
        checkOrder(read, type, problems);
    }
}

} // namespace modelc
