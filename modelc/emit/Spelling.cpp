#include "modelc/emit/Spelling.h"

#include "modelc/emit/Layout.h"

namespace modelc::spelling {

namespace {

bool isByValue(TypeRef const & type) {
    return type.kind == TypeClass::boolean || type.kind == TypeClass::number ||
           type.kind == TypeClass::scalar;
}

} // namespace

std::string memberType(TypeRef const & type) {
    return type.kind == TypeClass::entity ? "Vex::Ptr<" + type.name + " const>" : type.name;
}

std::string getterType(TypeRef const & type) {
    return lookupParameter(type);
}

std::string lookupParameter(TypeRef const & type) {
    return isByValue(type) ? type.name : memberType(type) + " const &";
}

std::string storedParameter(TypeRef const & type) {
    return type.kind == TypeClass::text ? type.name : lookupParameter(type);
}

std::string methodParameter(TypeRef const & type) {
    return type.kind == TypeClass::entity ? lookupParameter(type) : type.name;
}

std::string storedValue(TypeRef const & type, std::string const & name) {
    return type.kind == TypeClass::text ? "std::move(" + name + ")" : name;
}

std::string capitalized(std::string const & name) {
    std::string changed = name;
    if (changed[0] >= 'a' && changed[0] <= 'z') {
        changed[0] = static_cast<char>(changed[0] - 'a' + 'A');
    }
    return changed;
}

std::string factoryName(Type const & type) {
    std::string changed = type.name;
    changed[0] = static_cast<char>(changed[0] - 'A' + 'a');
    return changed + "Factory";
}

std::string creationCall(Type const & type, std::vector<std::string> const & arguments) {
    std::string const maker =
        type.creator ? type.name + "::" + type.name + "Is" : "newActive<" + type.name + ">";
    return maker + "(" + joined(arguments, ", ") + ")";
}

} // namespace modelc::spelling
