#include <simdjson.h>

#include <unistd.h>

/// simdjson reading the snapshot, and nothing else: what it costs to know that a file is JSON.
int main(int /* count */, char ** arguments) {
    simdjson::dom::parser parser;
    simdjson::dom::element document;
    _exit(parser.load(arguments[1]).get(document) == simdjson::SUCCESS ? 0 : 1);
}
