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

void resolveBase(tree::Type const & parsed, Type & type, Scope & scope, Problems & problems) {
    if (!parsed.base) {
        return;
    }
    if (!parsed.entity) {
        problems.add(parsed.base->at, "the value '" + type.name +
                                          "' cannot have a base; only "
                                          "entities can");
        return;
    }
    Type const * base = scope.declared(*parsed.base, "the base");
    if (base && !base->entity) {
        problems.add(parsed.base->at, "the base '" + base->name + "' is a value, not an entity");
        return;
    }
    // A base precedes its derived types in the file, so no type can be its own base, even
    // indirectly.
    if (base && !(base->at < type.at)) {
        problems.add(parsed.base->at,
                     "the base '" + base->name + "' must be declared before '" + type.name + "'");
        return;
    }
    type.base = base;
}

void resolveExtras(tree::Type const & parsed, Type & type, Problems & problems) {
    for (auto const & extra : parsed.extras) {
        bool * const flag = extra.text == "factory"   ? &type.factory
                            : extra.text == "creator" ? &type.creator
                                                      : nullptr;
        if (!flag) {
            problems.add(extra.at, "expected 'factory' or 'creator' after 'with', found '" +
                                       extra.text + "'" +
                                       didYouMean(extra.text, {"factory", "creator"}));
        } else if (!parsed.entity) {
            problems.add(extra.at, "the value '" + type.name + "' cannot have a " + extra.text +
                                       "; only entities can");
        } else if (*flag) {
            problems.add(extra.at, "duplicate '" + extra.text + "'");
        } else {
            *flag = true;
        }
    }
}

std::vector<Type const *> registrationOrder(tree::File const & file, Model const & model,
                                            Scope & scope, Problems & problems) {
    std::vector<Type const *> order;
    std::map<Type const *, Location> locations;
    for (auto const & name : file.registration) {
        Type const * type = scope.declared(name, "the registered name");
        if (!type) {
            continue;
        }
        if (auto const [entry, added] = locations.try_emplace(type, name.at); !added) {
            problems.add(name.at, "'" + name.text + "' is already registered on line " +
                                      std::to_string(entry->second.line));
            continue;
        }
        order.push_back(type);
    }
    for (auto const & type : model.types) {
        if (!locations.contains(&type)) {
            problems.add(file.registrationAt,
                         "'" + type.name + "' is missing from the registration");
        }
    }
    return order;
}

} // namespace

Model check(tree::File const & file, Problems & problems) {
    Model model;
    model.space = file.space.text;
    for (auto const & parsed : file.types) {
        Type & type = model.types.emplace_back();
        type.name = parsed.name.text;
        type.entity = parsed.entity;
        type.doc = parsed.doc;
        type.at = parsed.name.at;
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
    if (problems.empty()) {
        model.definitions = definitionOrder(model, problems);
    }
    model.registration = registrationOrder(file, model, scope, problems);
    return model;
}

} // namespace modelc
