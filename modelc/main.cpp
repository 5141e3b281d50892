#include "modelc/Compiler.h"
#include "modelc/output/Files.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int exitSuccess = 0;
constexpr int exitFailure = 1;
constexpr int exitUsage = 2;

constexpr char const * usage =
    "usage: modelc [--include-prefix FOLDER] MODEL OUTPUT-DIRECTORY\n"
    "Compiles a model file to OUTPUT-DIRECTORY/NAME.h, NAME.cpp and NAMEReflection.cpp, where\n"
    "NAME is the model file's name without its extension. The generated sources include the\n"
    "header as FOLDER/NAME.h.\n";

struct CommandLine {
    std::string includePrefix;
    std::vector<std::string> operands;
    bool help = false;
    std::string error; ///< empty if the command line is valid
};

CommandLine parseArguments(std::vector<std::string> const & arguments) {
    CommandLine line;
    bool options = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string const & argument = arguments[i];
        if (options && argument == "--") {
            options = false;
        } else if (options && argument == "--help") {
            line.help = true;
        } else if (options && argument == "--include-prefix") {
            if (i + 1 == arguments.size()) {
                line.error = "--include-prefix needs a folder";
                return line;
            }
            line.includePrefix = arguments[++i];
        } else if (options && argument.size() > 1 && argument.starts_with('-')) {
            line.error = "unknown option " + argument;
            return line;
        } else {
            line.operands.push_back(argument);
        }
    }
    if (!line.help && line.operands.size() != 2) {
        line.error = "expected a model file and an output directory";
    }
    return line;
}

int run(CommandLine const & line) {
    std::filesystem::path const model = line.operands[0];
    std::filesystem::path const folder = line.operands[1];
    std::string const name = model.stem().string();
    std::string const prefix = line.includePrefix.empty() ? "" : line.includePrefix + "/";
    auto const compiled =
        modelc::compile(modelc::readFile(model), {.file = line.operands[0],
                                                  .source = prefix + model.filename().string(),
                                                  .header = prefix + name + ".h"});
    if (!compiled.report.empty()) {
        std::fputs(compiled.report.c_str(), stderr);
        return exitFailure;
    }
    modelc::writeFiles({{folder / (name + ".h"), compiled.header},
                        {folder / (name + ".cpp"), compiled.source},
                        {folder / (name + "Reflection.cpp"), compiled.reflection}});
    return exitSuccess;
}

} // namespace

int main(int argc, char ** argv) {
    CommandLine const line = parseArguments({argv + 1, argv + argc});
    if (!line.error.empty()) {
        std::fprintf(stderr, "modelc: %s\n%s", line.error.c_str(), usage);
        return exitUsage;
    }
    if (line.help) {
        std::fputs(usage, stdout);
        return exitSuccess;
    }
    try {
        return run(line);
    } catch (std::exception const & error) {
        std::fprintf(stderr, "modelc: %s\n", error.what());
        return exitFailure;
    }
}
