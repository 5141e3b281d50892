#include "modelc/Compiler.h"

#include "modelc/check/Checker.h"
#include "modelc/emit/Header.h"
#include "modelc/emit/Reflection.h"
#include "modelc/emit/Source.h"
#include "modelc/syntax/Parser.h"

namespace modelc {

Compiled compile(std::string const & text, Naming const & naming) {
    Problems problems;
    try {
        Model const model = check(parse(text), problems);
        if (problems.empty()) {
            return {.header = headerText(model, naming.source),
                    .source = sourceText(model, naming.source, naming.header),
                    .reflection = reflectionText(model, naming.source, naming.header),
                    .report = ""};
        }
    } catch (SyntaxError const & error) {
        problems.add(error.problem.at, error.problem.text);
    }
    return {.header = "", .source = "", .reflection = "", .report = problems.report(naming.file)};
}

} // namespace modelc
