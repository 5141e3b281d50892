#include "modelc/check/Attributes.h"

#include "modelc/check/Initial.h"
#include "modelc/check/Words.h"

#include <algorithm>
#include <set>

namespace modelc {

namespace {

// The numbers by which the framework's tools know attributes.
constexpr unsigned firstOfValue = 2;
constexpr unsigned firstOfEntity = 130;
constexpr unsigned firstOfDerived = 258;

void checkName(tree::Name const & name, std::string const & what, Problems & problems) {
    if (startsUpper(name.text) || name.text.starts_with('_')) {
        problems.add(name.at,
                     "the " + what + " '" + name.text + "' must start with a small letter");
    } else if (name.text.ends_with('_')) {
        problems.add(name.at, "the " + what + " '" + name.text + "' must not end with '_'");
    } else if (isCppKeyword(name.text)) {
        problems.add(name.at, "the " + what + " '" + name.text + "' is a keyword of C++");
    }
}

class Resolver {
public:
    Resolver(tree::Type const & read, Type & type, Scope & scope, Problems & problems)
        : read_(read), type_(type), scope_(scope), problems_(problems) {}

    void run() {
        for (auto const & attribute : read_.attributes) {
            checkName(attribute.name,
                      attribute.shape == tree::Shape::method ? "method" : "attribute", problems_);
            rejectDuplicate(attribute.name);
            type_.attributes.push_back(resolve(attribute));
        }
        giveNumbers();
    }

private:
    void rejectDuplicate(tree::Name const & name) {
        if (Attribute const * before = findAttribute(type_, name.text)) {
            problems_.add(name.at, "'" + name.text +
                                       "' is declared a second time; the first is "
                                       "in line " +
                                       std::to_string(before->at.line));
        }
    }

    Attribute resolve(tree::Attribute const & read) {
        Attribute made;
        made.name = read.name.text;
        made.at = read.name.at;
        made.doc = read.doc;
        made.settable = read.settable.has_value();
        made.fromConstructor = std::any_of(
            read_.constructor.begin(), read_.constructor.end(),
            [&](tree::Name const & argument) { return argument.text == read.name.text; });
        if (read.settable && !made.fromConstructor) {
            problems_.add(*read.settable, "'settable' is said of constructor arguments only; '" +
                                              made.name + "' is none");
        }
        made.kind = kindOf(read, made);
        if (read.shape == tree::Shape::method) {
            resolveParameters(read, made);
        } else if (read.shape == tree::Shape::set || read.shape == tree::Shape::hashedSet) {
            resolveSet(read, made);
        } else if (auto const type = scope_.type(read.type)) {
            made.type = *type;
            checkType(read, made);
        }
        rejectInValue(read);
        resolveInitial(read, type_.entity, made, problems_);
        return made;
    }

    static AttributeKind kindOf(tree::Attribute const & read, Attribute const & made) {
        bool const immutable = made.fromConstructor && !made.settable;
        switch (read.shape) {
        case tree::Shape::plain:
            return read.key    ? AttributeKind::valueCollection
                   : immutable ? AttributeKind::constructorArgument
                               : AttributeKind::plain;
        case tree::Shape::constant:
            return AttributeKind::constant;
        case tree::Shape::owned:
            return read.key ? AttributeKind::ownedEntityCollection : AttributeKind::ownedEntity;
        case tree::Shape::shared:
            return read.key    ? AttributeKind::sharedEntityCollection
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

    void checkType(tree::Attribute const & read, Attribute const & made) {
        std::string const name = "'" + read.type.text + "'";
        bool const entity = made.type.kind == TypeClass::entity;
        switch (read.shape) {
        case tree::Shape::plain:
            if (entity) {
                problems_.add(read.type.at, name + " is an entity; write 'owned " + read.type.text +
                                                "' or 'shared " + read.type.text + "'");
            } else if (read.key && made.type.kind != TypeClass::value) {
                problems_.add(read.type.at, name +
                                                " has no attributes, so nothing keys it; write "
                                                "'set[" +
                                                read.type.text + "]' for a set");
            }
            break;
        case tree::Shape::constant:
            if (made.type.kind != TypeClass::text) {
                problems_.add(read.type.at,
                              "a constant must be of a text type; " + name + " is none");
            }
            if (read.key) {
                problems_.add(read.key->at, "a constant has no key");
            }
            break;
        case tree::Shape::owned:
            if (!entity) {
                problems_.add(read.type.at, name + " is no entity; only entities are owned");
            } else if (!made.type.declared) {
                problems_.add(read.type.at, name + " is imported; only entities of this model can "
                                                   "be owned");
            }
            break;
        case tree::Shape::shared:
            if (!entity) {
                problems_.add(read.type.at, name + " is no entity; only entities are shared");
            }
            break;
        default:
            break;
        }
    }

    void resolveSet(tree::Attribute const & read, Attribute & made) {
        made.type = {.name = "bool", .kind = TypeClass::boolean};
        if (auto const key = scope_.type(*read.key)) {
            made.key = *key;
            if (key->kind == TypeClass::entity || key->declared) {
                problems_.add(read.key->at, "'" + key->name +
                                                "' has no order, so it cannot be a "
                                                "key");
            }
        }
    }

    void resolveParameters(tree::Attribute const & read, Attribute & made) {
        std::set<std::string> names;
        for (auto const & argument : read.arguments) {
            checkName(argument.name, "argument", problems_);
            if (!names.insert(argument.name.text).second) {
                problems_.add(argument.name.at,
                              "the argument '" + argument.name.text + "' is given a second time");
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
                              "'" + type->name + "' is no entity; only entities are shared");
            }
            made.parameters.push_back({argument.name.text, *type});
        }
    }

    void rejectInValue(tree::Attribute const & read) {
        if (type_.entity) {
            return;
        }
        std::string const start = "the value '" + type_.name + "' cannot ";
        if (read.shape == tree::Shape::owned) {
            problems_.add(read.name.at, start + "own an entity");
        } else if (read.shape == tree::Shape::shared) {
            problems_.add(read.name.at, start + "share an entity");
        } else if (read.shape == tree::Shape::method) {
            problems_.add(read.name.at, start + "have a method");
        }
    }

    /// Methods come behind the attributes, wherever they stand.
    void giveNumbers() {
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

    tree::Type const & read_;
    Type & type_;
    Scope & scope_;
    Problems & problems_;
};

} // namespace

void resolveAttributes(tree::Type const & read, Type & type, Scope & scope, Problems & problems) {
    Resolver(read, type, scope, problems).run();
}

} // namespace modelc
