#pragma once

#include <string>

namespace modelc {

/// How the model file and the generated header are called.
struct Naming {
    std::string file;   ///< the model file as error messages name it
    std::string source; ///< the model file as the generated files name it: from the source tree
    std::string header; ///< "VxlanController/VxlanControllerCliModel.h" for example
};

/// What compiling a model yields: three texts, or the report of what is wrong with it.
struct Compiled {
    std::string header;
    std::string source;
    std::string reflection;
    std::string report; ///< one line for each error; empty when there is none
};

/// Compiles the text of a model file. Touches no file.
Compiled compile(std::string const & text, Naming const & naming);

} // namespace modelc
