#include "modelc/check/Checker.h"

#include "modelc/check/Attributes.h"
#include "modelc/check/Constructors.h"
#include "modelc/check/Keys.h"
#include "modelc/check/Members.h"
#include "modelc/check/Order.h"
#include "modelc/check/Scope.h"
#include "modelc/source/Spelling.h"

#include <algorithm>
#include <map>

namespace modelc {

namespace {

void resolveBase(tree::Type const & read, Type & type, Scope & scope, Problems & problems) {
    if (!read.base) {
        return;
    }
    if (!read.entity) {
        problems.add(read.base->at, "the value '" + type.name +
                                        "' cannot have a base; only "
                                        "entities can");
        return;
    }
    Type const * base = scope.declared(*read.base, "the base");
    if (base && !base->entity) {
        problems.add(read.base->at, "the base '" + base->name + "' is a value, not an entity");
        return;
    }
    // The base comes first in the file: so no type can be, in the end, its own base.
    if (base && !(base->at < type.at)) {
        problems.add(read.base->at,
                     "the base '" + base->name + "' must be declared before '" + type.name + "'");
        return;
    }
    type.base = base;
}

void resolveExtras(tree::Type const & read, Type & type, Problems & problems) {
    for (auto const & extra : read.extras) {
        bool * const flag = extra.text == "factory"   ? &type.factory
                            : extra.text == "creator" ? &type.creator
                                                      : nullptr;
        if (!flag) {
            problems.add(extra.at, "expected 'factory' or 'creator' behind 'with', found '" +
                                       extra.text + "'" +
                                       didYouMean(extra.text, {"factory", "creator"}));
        } else if (!read.entity) {
            problems.add(extra.at, "the value '" + type.name + "' cannot have a " + extra.text +
                                       "; only entities can");
        } else if (*flag) {
            problems.add(extra.at, "'" + extra.text + "' is given a second time");
        } else {
            *flag = true;
        }
    }
}

std::vector<Type const *> registrationOrder(tree::File const & file, Model const & model,
                                            Scope & scope, Problems & problems) {
    std::vector<Type const *> order;
    std::map<Type const *, Location> places;
    for (auto const & name : file.registration) {
        Type const * type = scope.declared(name, "the registered");
        if (!type) {
            continue;
        }
        if (auto const [place, added] = places.try_emplace(type, name.at); !added) {
            problems.add(name.at, "'" + name.text +
                                      "' is registered a second time; the first is "
                                      "in line " +
                                      std::to_string(place->second.line));
            continue;
        }
        order.push_back(type);
    }
    for (auto const & type : model.types) {
        if (!places.contains(&type)) {
            problems.add(file.registrationAt, "'" + type.name + "' is missing in the registration");
        }
    }
    return order;
}

} // namespace

Model check(tree::File const & file, Problems & problems) {
    Model model;
    model.space = file.space.text;
    for (auto const & read : file.types) {
        Type & type = model.types.emplace_back();
        type.name = read.name.text;
        type.entity = read.entity;
        type.doc = read.doc;
        type.at = read.name.at;
    }
    Scope scope(file, model.types, problems);
    model.headers = scope.headers();
    for (std::size_t i = 0; i < model.types.size(); ++i) {
        resolveBase(file.types[i], model.types[i], scope, problems);
        resolveExtras(file.types[i], model.types[i], problems);
        resolveAttributes(file.types[i], model.types[i], scope, problems);
        resolveConstructor(file.types[i], model.types[i], problems);
    }
    for (std::size_t i = 0; i < model.types.size(); ++i) {
        resolveKeys(file.types[i], model.types[i], scope, problems);
        checkMemberNames(model.types[i], problems);
    }
    if (problems.none()) {
        model.definitions = definitionOrder(model, problems);
    }
    model.registration = registrationOrder(file, model, scope, problems);
    return model;
}

} // namespace modelc
