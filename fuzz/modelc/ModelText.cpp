#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Lines.h"
#include "modelc/Compiler.h"

/// The model compiler: any text gives three files or a report of its errors, one line each.
namespace fuzz {

namespace {

void checkReport(std::string_view report) {
    constexpr std::string_view file = "m:";
    while (!report.empty()) {
        auto const end = report.find('\n');
        check(end != std::string_view::npos, "the last line of a report does not end");
        auto const line = report.substr(0, end);
        checkLine(line);
        check(line.starts_with(file) && line.find(": ") != std::string_view::npos,
              "an error has no place");
        auto const place = line.substr(file.size());
        check(place[0] >= '1' && place[0] <= '9', "an error is in no line");
        report.remove_prefix(end + 1);
    }
}

} // namespace

void modelText(std::string_view bytes) {
    modelc::Naming const naming{.file = "m", .source = "p/m", .header = "p/m.h"};
    std::string const text(bytes);
    auto const compiled = modelc::compile(text, naming);
    if (compiled.report.empty()) {
        check(compiled.header.starts_with("//") || compiled.header.starts_with("#"),
              "there is neither a report nor a header");
        check(!compiled.source.empty() && !compiled.reflection.empty(),
              "there is a header without its sources");
    } else {
        check(compiled.header.empty() && compiled.source.empty() && compiled.reflection.empty(),
              "there are a report and generated files");
        checkReport(compiled.report);
    }
}

} // namespace fuzz
