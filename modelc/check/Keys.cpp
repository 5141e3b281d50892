#include "modelc/check/Keys.h"

#include "modelc/check/Words.h"
#include "modelc/source/Spelling.h"

namespace modelc {

namespace {

bool isTypeName(std::string const & key) {
    return startsUpper(key) || key == "bool" || key.find("::") != std::string::npos;
}

bool hasOrder(TypeRef const & type) {
    return type.kind != TypeClass::entity && !type.declared;
}

std::string attributeNames(Type const & type, std::string const & written) {
    std::vector<std::string> known;
    for (Type const * at = &type; at; at = at->base) {
        for (auto const & attribute : at->attributes) {
            known.push_back(attribute.name);
        }
    }
    return didYouMean(written, known);
}

class KeyResolver {
public:
    KeyResolver(Scope & scope, Problems & problems) : scope_(scope), problems_(problems) {}

    void resolve(tree::Attribute const & read, Attribute & made) {
        if (made.type.name.empty()) {
            return;
        }
        switch (made.kind) {
        case AttributeKind::valueCollection:
            valueKey(read, made);
            break;
        case AttributeKind::ownedEntityCollection:
            ownedKey(read, made);
            break;
        case AttributeKind::sharedEntityCollection:
            sharedKey(read, made);
            break;
        case AttributeKind::ownedEntity:
            singleton(read, made);
            break;
        default:
            break;
        }
    }

private:
    void valueKey(tree::Attribute const & read, Attribute & made) {
        if (made.type.kind != TypeClass::value || rejectType(read, made)) {
            return;
        }
        if (made.type.declared) {
            elementAttribute(read, made);
        } else if (made.type.importedKey.empty()) {
            problems_.add(read.key->at, "no key is known of '" + made.type.name +
                                            "'; import it as '" + made.type.name + "[" +
                                            read.key->text + " : Type]'");
        } else if (made.type.importedKey != read.key->text) {
            problems_.add(read.key->at, "'" + made.type.name + "' is keyed by its '" +
                                            made.type.importedKey + "', as its import says");
        } else {
            made.keyAttribute = read.key->text;
            made.key = *scope_.type({made.type.importedKeyType, read.key->at});
        }
    }

    void ownedKey(tree::Attribute const & read, Attribute & made) {
        Type const * element = made.type.declared;
        if (!element || !element->entity || rejectType(read, made) ||
            !elementAttribute(read, made)) {
            return;
        }
        auto const & arguments = element->constructor;
        if (arguments.empty() || arguments.front()->name != read.key->text) {
            problems_.add(
                read.key->at,
                "the key of an owned entity is its first constructor "
                "argument; that of '" +
                    element->name + "' is " +
                    (arguments.empty() ? "missing" : "'" + arguments.front()->name + "'"));
            return;
        }
        for (auto const * argument : arguments) {
            if (!hasOrder(argument->type)) {
                problems_.add(read.type.at, "'" + element->name + "' takes '" + argument->name +
                                                "', which has no text form, so it cannot be found "
                                                "or created by key");
            }
        }
    }

    void sharedKey(tree::Attribute const & read, Attribute & made) {
        if (made.type.kind != TypeClass::entity) {
            return;
        }
        if (isTypeName(read.key->text)) {
            if (auto const key = scope_.type(*read.key)) {
                made.key = *key;
                rejectUnordered(read, made);
            }
        } else if (!made.type.declared) {
            problems_.add(read.key->at, "'" + made.type.name +
                                            "' is imported, so its attributes are "
                                            "not known; key it by a type");
        } else if (Attribute const * key = elementAttribute(read, made);
                   key && key->kind != AttributeKind::constructorArgument) {
            problems_.add(read.key->at, "'" + key->name + "' can change while '" + made.type.name +
                                            "' is shared; the key must be a constructor argument");
        }
    }

    void singleton(tree::Attribute const & read, Attribute const & made) {
        Type const * element = made.type.declared;
        if (element && element->entity && !element->constructor.empty()) {
            problems_.add(read.type.at, "'" + element->name +
                                            "' has constructor arguments, so it "
                                            "cannot be created on demand");
        }
    }

    bool rejectType(tree::Attribute const & read, Attribute const & made) {
        if (!isTypeName(read.key->text)) {
            return false;
        }
        problems_.add(read.key->at, "'" + made.type.name +
                                        "' is keyed by one of its attributes, "
                                        "not by a type");
        return true;
    }

    /// The element's attribute by which the collection is keyed, or null and a problem.
    Attribute const * elementAttribute(tree::Attribute const & read, Attribute & made) {
        Attribute const * key = findAttribute(*made.type.declared, read.key->text);
        if (!key) {
            problems_.add(read.key->at, "'" + made.type.name + "' has no attribute '" +
                                            read.key->text + "'" +
                                            attributeNames(*made.type.declared, read.key->text));
            return nullptr;
        }
        if (key->kind != AttributeKind::constructorArgument && key->kind != AttributeKind::plain) {
            problems_.add(read.key->at, "'" + key->name +
                                            "' is no single value, so it cannot be a "
                                            "key");
            return nullptr;
        }
        made.keyAttribute = key->name;
        made.key = key->type;
        return rejectUnordered(read, made) ? nullptr : key;
    }

    bool rejectUnordered(tree::Attribute const & read, Attribute const & made) {
        if (made.key.name.empty() || hasOrder(made.key)) {
            return false;
        }
        problems_.add(read.key->at, "'" + made.key.name + "' has no order, so it cannot be a key");
        return true;
    }

    Scope & scope_;
    Problems & problems_;
};

} // namespace

void resolveKeys(tree::Type const & read, Type & type, Scope & scope, Problems & problems) {
    KeyResolver resolver(scope, problems);
    for (std::size_t i = 0; i < type.attributes.size(); ++i) {
        resolver.resolve(read.attributes[i], type.attributes[i]);
    }
}

} // namespace modelc
