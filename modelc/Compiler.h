#pragma once

#include <string>

namespace modelc {

/// The names of the model file and of the generated header.
struct Naming {
    std::string file;   ///< the model file's name in error messages
    std::string source; ///< the model file's name in generated files: its path in the source tree
    std::string header; ///< the include path, e.g. "VxlanController/VxlanControllerCliModel.h"
};

/// The result of compiling a model: three generated files, or the report of its errors.
struct Compiled {
    std::string header;
    std::string source;
    std::string reflection;
    std::string report; ///< one line per error; empty if there is none
};

/// Compiles the text of a model file. Reads and writes no files.
Compiled compile(std::string const & text, Naming const & naming);

} // namespace modelc
