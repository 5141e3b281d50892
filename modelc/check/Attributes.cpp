#include "modelc/check/Attributes.h"

#include "modelc/check/Initial.h"
#include "modelc/check/Words.h"

#include <algorithm>
#include <set>

namespace modelc {

namespace {

// Attribute numbers in the framework's reflection, which its tools rely on.
constexpr unsigned firstOfValue = 2;
constexpr unsigned firstOfEntity = 130;
constexpr unsigned firstOfDerived = 258;

void checkName(tree::Name const & name, std::string const & what, Problems & problems) {
    if (startsUpper(name.text) || name.text.starts_with('_')) {
        problems.add(name.at, "the " + what + " name '" + name.text +
                                  "' must start with a lower-case letter");
    } else if (name.text.ends_with('_')) {
        problems.add(name.at, "the " + what + " name '" + name.text + "' must not end with '_'");
    } else if (isCppKeyword(name.text)) {
        problems.add(name.at, "the " + what + " name '" + name.text + "' is a C++ keyword");
    }
}

class Resolver {
public:
    Resolver(tree::Type const & parsed, Type & type, Scope & scope, Problems & problems)
        : parsed_(parsed), type_(type), scope_(scope), problems_(problems) {}

    void run() {
        for (auto const & attribute : parsed_.attributes) {
            checkName(attribute.name,
                      attribute.shape == tree::Shape::method ? "method" : "attribute", problems_);
            rejectDuplicate(attribute.name);
            type_.attributes.push_back(resolve(attribute));
        }
        assignNumbers();
    }

private:
    void rejectDuplicate(tree::Name const & name) {
        if (Attribute const * before = findAttribute(type_, name.text)) {
            problems_.add(name.at, "'" + name.text + "' is already declared on line " +
                                       std::to_string(before->at.line));
        }
    }

    Attribute resolve(tree::Attribute const & parsed) {
        Attribute resolved;
        resolved.name = parsed.name.text;
        resolved.at = parsed.name.at;
        resolved.doc = parsed.doc;
        resolved.settable = parsed.settable.has_value();
        resolved.fromConstructor = std::any_of(
            parsed_.constructor.begin(), parsed_.constructor.end(),
            [&](tree::Name const & argument) { return argument.text == parsed.name.text; });
        if (parsed.settable && !resolved.fromConstructor) {
            problems_.add(*parsed.settable, "'settable' applies only to constructor arguments; '" +
                                                resolved.name + "' is not one");
        }
        resolved.kind = kindOf(parsed, resolved);
        if (parsed.shape == tree::Shape::method) {
            resolveParameters(parsed, resolved);
        } else if (parsed.shape == tree::Shape::set || parsed.shape == tree::Shape::hashedSet) {
            resolveSet(parsed, resolved);
        } else if (auto const type = scope_.type(parsed.type)) {
            resolved.type = *type;
            checkType(parsed, resolved);
        }
        rejectInValue(parsed);
        resolveInitial(parsed, type_.entity, resolved, problems_);
        return resolved;
    }

    static AttributeKind kindOf(tree::Attribute const & parsed, Attribute const & resolved) {
        bool const immutable = resolved.fromConstructor && !resolved.settable;
        switch (parsed.shape) {
        case tree::Shape::plain:
            return parsed.key  ? AttributeKind::valueCollection
                   : immutable ? AttributeKind::constructorArgument
                               : AttributeKind::plain;
        case tree::Shape::constant:
            return AttributeKind::constant;
        case tree::Shape::owned:
            return parsed.key ? AttributeKind::ownedEntityCollection : AttributeKind::ownedEntity;
        case tree::Shape::shared:
            return parsed.key  ? AttributeKind::sharedEntityCollection
                   : immutable ? AttributeKind::entityPointer
                               : AttributeKind::entityPointerPlain;
        case tree::Shape::set:
            return AttributeKind::setCollection;
        case tree::Shape::hashedSet:
            return AttributeKind::hashedSetCollection;
        case tree::Shape::method:
            break;
        }
        return AttributeKind::method;
    }

    void checkType(tree::Attribute const & parsed, Attribute const & resolved) {
        std::string const name = "'" + parsed.type.text + "'";
        bool const entity = resolved.type.kind == TypeClass::entity;
        switch (parsed.shape) {
        case tree::Shape::plain:
            if (entity) {
                problems_.add(parsed.type.at, name + " is an entity; write 'owned " +
                                                  parsed.type.text + "' or 'shared " +
                                                  parsed.type.text + "'");
            } else if (parsed.key && resolved.type.kind != TypeClass::value) {
                problems_.add(parsed.type.at, name +
                                                  " has no attributes and so no key; write "
                                                  "'set[" +
                                                  parsed.type.text + "]' for a set");
            }
            break;
        case tree::Shape::constant:
            if (resolved.type.kind != TypeClass::text) {
                problems_.add(parsed.type.at,
                              "a constant must have a text type; " + name + " is not one");
            }
            if (parsed.key) {
                problems_.add(parsed.key->at, "a constant cannot have a key");
            }
            break;
        case tree::Shape::owned:
            if (!entity) {
                problems_.add(parsed.type.at,
                              name + " is not an entity; only entities can be owned");
            } else if (!resolved.type.declared) {
                problems_.add(parsed.type.at, name +
                                                  " is imported; only entities of this model can "
                                                  "be owned");
            }
            break;
        case tree::Shape::shared:
            if (!entity) {
                problems_.add(parsed.type.at,
                              name + " is not an entity; only entities can be shared");
            }
            break;
        default:
            break;
        }
    }

    void resolveSet(tree::Attribute const & parsed, Attribute & resolved) {
        resolved.type = {.name = "bool", .kind = TypeClass::boolean};
        if (auto const key = scope_.type(*parsed.key)) {
            resolved.key = *key;
            if (key->kind == TypeClass::entity || key->declared) {
                problems_.add(parsed.key->at,
                              "'" + key->name + "' has no ordering, so it cannot be a key");
            }
        }
    }

    void resolveParameters(tree::Attribute const & parsed, Attribute & resolved) {
        std::set<std::string> names;
        for (auto const & argument : parsed.arguments) {
            checkName(argument.name, "argument", problems_);
            if (!names.insert(argument.name.text).second) {
                problems_.add(argument.name.at, "duplicate argument '" + argument.name.text + "'");
            }
            auto const type = scope_.type(argument.type);
            if (!type) {
                continue;
            }
            bool const entity = type->kind == TypeClass::entity;
            if (entity && !argument.shared) {
                problems_.add(argument.type.at, "'" + type->name +
                                                    "' is an entity; write 'shared " + type->name +
                                                    "'");
            } else if (!entity && argument.shared) {
                problems_.add(argument.type.at,
                              "'" + type->name + "' is not an entity; only entities can be shared");
            }
            resolved.parameters.push_back({argument.name.text, *type});
        }
    }

    void rejectInValue(tree::Attribute const & parsed) {
        if (type_.entity) {
            return;
        }
        std::string const start = "the value '" + type_.name + "' cannot ";
        if (parsed.shape == tree::Shape::owned) {
            problems_.add(parsed.name.at, start + "own an entity");
        } else if (parsed.shape == tree::Shape::shared) {
            problems_.add(parsed.name.at, start + "share an entity");
        } else if (parsed.shape == tree::Shape::method) {
            problems_.add(parsed.name.at, start + "have a method");
        }
    }

    /// Methods are numbered after all other attributes, wherever the model declares them.
    void assignNumbers() {
        unsigned number = !type_.entity ? firstOfValue
                          : type_.base  ? firstOfDerived
                                        : firstOfEntity;
        for (bool const methods : {false, true}) {
            for (auto & attribute : type_.attributes) {
                if ((attribute.kind == AttributeKind::method) == methods) {
                    attribute.number = number++;
                }
            }
        }
    }

    tree::Type const & parsed_;
    Type & type_;
    Scope & scope_;
    Problems & problems_;
};

} // namespace

void resolveAttributes(tree::Type const & parsed, Type & type, Scope & scope, Problems & problems) {
    Resolver(parsed, type, scope, problems).run();
}

} // namespace modelc
