#pragma once

#include "modelc/model/Model.h"

#include <string>
#include <vector>

namespace modelc {

/// One generated member function: told once here, written twice, as its declaration into
/// the header and as its definition into the source.
struct Operation {
    std::string promise = {}; ///< one line for the header
    std::string result = {};  ///< empty for constructors and the destructor
    std::string name = {};
    std::vector<std::string> parameters = {}; ///< type and name
    std::string qualifiers = {};              ///< behind the parentheses: "const noexcept"
    std::vector<std::string> body = {};       ///< its lines; none when it is written by hand
    bool inHeader = false;                    ///< the header holds the body, which is one line
    bool isStatic = false;
    bool isExplicit = false;
};

/// The operations of one attribute of `owner`, in the order in which they are declared.
std::vector<Operation> operationsOf(Type const & owner, Attribute const & attribute);

/// Those of an attribute that is a collection.
std::vector<Operation> collectionOperations(Type const & owner, Attribute const & attribute);

} // namespace modelc
