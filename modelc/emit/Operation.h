#pragma once

#include "modelc/model/Model.h"

#include <string>
#include <vector>

namespace modelc {

/// One generated member function, from which both its declaration in the header and its
/// definition in the source are written.
struct Operation {
    std::string comment = {}; ///< one line for the header; empty if the name says it all
    std::string result = {};  ///< empty for constructors and the destructor
    std::string name = {};
    std::vector<std::string> parameters = {}; ///< type and name
    std::string qualifiers = {};              ///< after the parameters: "const noexcept"
    std::vector<std::string> body = {};       ///< its lines; empty if it is defined elsewhere
    bool inHeader = false;                    ///< defined in the header; the body is one line
    bool isStatic = false;
    bool isExplicit = false;
};

/// The operations of one attribute of `owner`, in the order in which they are declared.
std::vector<Operation> operationsOf(Type const & owner, Attribute const & attribute);

/// The operations of an attribute that is a collection.
std::vector<Operation> collectionOperations(Type const & owner, Attribute const & attribute);

} // namespace modelc
