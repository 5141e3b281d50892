// Runs a program once and makes one of its system calls fail, or none:
//
//     fault_injector [OPTION...] REPORT -- PROGRAM ARGUMENT...
//
//     --fail CALL NUMBER ERROR      the call of this name and number, from 1, fails: openat 3
//     EACCES
//     --shorten CALL NUMBER BYTES   it is asked for at most that many bytes; 0 as number: every one
//     --pause CALL,CALL...          every other attempt of each such call is interrupted (EINTR)
//     --no-unnamed-files            O_TMPFILE is not supported
//     --environment NAME=VALUE      a variable for the program; can be repeated
//     --list                        the report names all calls
//     --seconds SECONDS             the program is killed after that time; 60 by default
//
// The report is a file with these lines:
//
//     call NAME ARGUMENT            with --list, for each call, with its first argument
//     disturbed COUNT ARGUMENT      how many calls were, and the first argument of the last of them
//     survivor COMMAND-LINE         for each process that the program left
//     exited STATUS                 or `killed SIGNAL` or `hung 0`; always the last line
//
// It exits with 0 if the program was started, however that ended.
#include "tests/faults/Supervisor.h"
#include "tests/faults/SystemCalls.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace {

struct Settings {
    faults::Plan plan;
    bool list = false;
    unsigned seconds = 60;
    std::string report;
    std::vector<std::string> program;
    std::vector<std::string> variables;
};

class Words {
public:
    Words(int count, char ** words) : words_(words + 1, words + count) {}

    std::string next() {
        if (at_ == words_.size()) {
            throw std::invalid_argument("a word is missing at the end");
        }
        return words_[at_++];
    }

    unsigned long number() { return std::stoul(next()); }

    std::vector<std::string> rest() const {
        return {words_.begin() + static_cast<std::ptrdiff_t>(at_), words_.end()};
    }

private:
    std::vector<std::string> words_;
    std::size_t at_ = 0;
};

int errorOf(std::string const & name) {
    int const number = faults::errorNumber(name);
    if (number == 0) {
        throw std::invalid_argument("found error " + name + ", expected a name as EACCES");
    }
    return number;
}

Settings read(Words words) {
    Settings settings;
    for (auto word = words.next(); word != "--"; word = words.next()) {
        if (word == "--fail") {
            settings.plan.call = words.next();
            settings.plan.number = words.number();
            settings.plan.verdict.error = errorOf(words.next());
        } else if (word == "--shorten") {
            settings.plan.call = words.next();
            settings.plan.number = words.number();
            settings.plan.verdict.most = words.number();
        } else if (word == "--pause") {
            std::istringstream names(words.next());
            for (std::string name; std::getline(names, name, ',');) {
                settings.plan.paused.insert(name);
            }
        } else if (word == "--no-unnamed-files") {
            settings.plan.noUnnamedFiles = true;
        } else if (word == "--environment") {
            settings.variables.push_back(words.next());
        } else if (word == "--list") {
            settings.list = true;
        } else if (word == "--seconds") {
            settings.seconds = static_cast<unsigned>(words.number());
        } else {
            settings.report = word;
        }
    }
    settings.program = words.rest();
    if (settings.report.empty() || settings.program.empty()) {
        throw std::invalid_argument("expected REPORT -- PROGRAM ARGUMENT...");
    }
    return settings;
}

char const * nameOf(faults::Ending::Kind kind) {
    switch (kind) {
    case faults::Ending::Kind::exited:
        return "exited";
    case faults::Ending::Kind::killed:
        return "killed";
    case faults::Ending::Kind::hung:
        return "hung";
    case faults::Ending::Kind::notStarted:
        break;
    }
    return "not-started";
}

void write(Settings const & settings, faults::Ending const & ending) {
    std::ofstream report(settings.report);
    if (settings.list) {
        for (auto const & call : ending.calls) {
            report << "call " << call.name << ' ' << call.first << '\n';
        }
    }
    report << "disturbed " << ending.disturbed << ' ' << ending.first << '\n';
    for (auto const & survivor : ending.survivors) {
        report << "survivor " << survivor << '\n';
    }
    report << nameOf(ending.kind) << ' ' << ending.number << '\n';
    if (!report.flush()) {
        throw std::runtime_error(settings.report + " cannot be written");
    }
}

} // namespace

int main(int count, char ** words) {
    try {
        auto const settings = read(Words(count, words));
        write(settings, faults::supervise(settings.program, settings.variables, settings.plan,
                                          settings.seconds));
        return 0;
    } catch (std::exception const & error) {
        std::cerr << "fault_injector: " << error.what() << '\n';
        return 2;
    }
}
