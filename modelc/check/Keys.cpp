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

std::string attributeHint(Type const & type, std::string const & written) {
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

    void resolve(tree::Attribute const & parsed, Attribute & resolved) {
        if (resolved.type.name.empty()) {
            return;
        }
        switch (resolved.kind) {
        case AttributeKind::valueCollection:
            valueKey(parsed, resolved);
            break;
        case AttributeKind::ownedEntityCollection:
            ownedKey(parsed, resolved);
            break;
        case AttributeKind::sharedEntityCollection:
            sharedKey(parsed, resolved);
            break;
        case AttributeKind::ownedEntity:
            singleton(parsed, resolved);
            break;
        default:
            break;
        }
    }

private:
    void valueKey(tree::Attribute const & parsed, Attribute & resolved) {
        if (resolved.type.kind != TypeClass::value || rejectType(parsed, resolved)) {
            return;
        }
        if (resolved.type.declared) {
            elementAttribute(parsed, resolved);
        } else if (resolved.type.importedKey.empty()) {
            problems_.add(parsed.key->at,
                          "'" + resolved.type.name + "' is imported without a key; import it as '" +
                              resolved.type.name + "[" + parsed.key->text + " : Type]'");
        } else if (resolved.type.importedKey != parsed.key->text) {
            problems_.add(parsed.key->at, "'" + resolved.type.name +
                                              "' is imported with the key '" +
                                              resolved.type.importedKey + "'");
        } else if (TypeRef const * key = scope_.find(resolved.type.importedKeyType)) {
            resolved.keyAttribute = parsed.key->text;
            resolved.key = *key;
        } // else reported where the value is imported
    }

    void ownedKey(tree::Attribute const & parsed, Attribute & resolved) {
        Type const * element = resolved.type.declared;
        if (!element || !element->entity || rejectType(parsed, resolved) ||
            !elementAttribute(parsed, resolved)) {
            return;
        }
        auto const & arguments = element->constructor;
        if (arguments.empty() || arguments.front()->name != parsed.key->text) {
            problems_.add(parsed.key->at,
                          "the key of an owned entity is its first constructor argument; " +
                              (arguments.empty() ? "'" + element->name + "' has none"
                                                 : "that of '" + element->name + "' is '" +
                                                       arguments.front()->name + "'"));
            return;
        }
        for (auto const * argument : arguments) {
            if (!hasOrder(argument->type)) {
                problems_.add(parsed.type.at,
                              "'" + element->name + "' takes '" + argument->name +
                                  "', which has no text form, so it cannot be found "
                                  "or created by key");
            }
        }
    }

    void sharedKey(tree::Attribute const & parsed, Attribute & resolved) {
        if (resolved.type.kind != TypeClass::entity) {
            return;
        }
        if (isTypeName(parsed.key->text)) {
            if (auto const key = scope_.type(*parsed.key)) {
                resolved.key = *key;
                rejectUnordered(parsed, resolved);
            }
        } else if (!resolved.type.declared) {
            problems_.add(parsed.key->at, "'" + resolved.type.name +
                                              "' is imported, so its attributes are "
                                              "not known; key it by a type");
        } else if (Attribute const * key = elementAttribute(parsed, resolved);
                   key && key->kind != AttributeKind::constructorArgument) {
            problems_.add(parsed.key->at,
                          "'" + key->name + "' can change while '" + resolved.type.name +
                              "' is shared; the key must be a constructor argument");
        }
    }

    void singleton(tree::Attribute const & parsed, Attribute const & resolved) {
        Type const * element = resolved.type.declared;
        if (element && element->entity && !element->constructor.empty()) {
            problems_.add(parsed.type.at, "'" + element->name +
                                              "' has constructor arguments, so it "
                                              "cannot be created on demand");
        }
    }

    bool rejectType(tree::Attribute const & parsed, Attribute const & resolved) {
        if (!isTypeName(parsed.key->text)) {
            return false;
        }
        problems_.add(parsed.key->at,
                      "'" + resolved.type.name +
                          "' must be keyed by one of its attributes, not by a type");
        return true;
    }

    /// The element attribute that keys the collection; null after adding a problem.
    Attribute const * elementAttribute(tree::Attribute const & parsed, Attribute & resolved) {
        Attribute const * key = findAttribute(*resolved.type.declared, parsed.key->text);
        if (!key) {
            problems_.add(parsed.key->at,
                          "'" + resolved.type.name + "' has no attribute '" + parsed.key->text +
                              "'" + attributeHint(*resolved.type.declared, parsed.key->text));
            return nullptr;
        }
        if (key->kind != AttributeKind::constructorArgument && key->kind != AttributeKind::plain) {
            problems_.add(parsed.key->at,
                          "'" + key->name + "' is not a single value, so it cannot be a key");
            return nullptr;
        }
        resolved.keyAttribute = key->name;
        resolved.key = key->type;
        return rejectUnordered(parsed, resolved) ? nullptr : key;
    }

    bool rejectUnordered(tree::Attribute const & parsed, Attribute const & resolved) {
        if (resolved.key.name.empty() || hasOrder(resolved.key)) {
            return false;
        }
        problems_.add(parsed.key->at,
                      "'" + resolved.key.name + "' has no ordering, so it cannot be a key");
        return true;
    }

    Scope & scope_;
    Problems & problems_;
};

} // namespace

void resolveKeys(tree::Type const & parsed, Type & type, Scope & scope, Problems & problems) {
    KeyResolver resolver(scope, problems);
    for (std::size_t i = 0; i < type.attributes.size(); ++i) {
        resolver.resolve(parsed.attributes[i], type.attributes[i]);
    }
}

} // namespace modelc
