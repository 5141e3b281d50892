#include <simdjson.h>

#include <unistd.h>

/// Only reads the snapshot with simdjson: the cost of checking that a file is JSON.
int main(int /* count */, char ** arguments) {
    simdjson::dom::parser parser;
    simdjson::dom::element document;
    _exit(parser.load(arguments[1]).get(document) == simdjson::SUCCESS ? 0 : 1);
}
