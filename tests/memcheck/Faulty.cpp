#include <cstdio>
#include <cstdlib>
#include <string_view>

/// Has the fault that its only word names, for the test of memcheck.py.
int main(int argc, char ** argv) {
    std::string_view const fault = argc == 2 ? argv[1] : "";
    // Volatile, so that the compiler neither warns of the faults nor removes them.
    void * volatile memory = std::malloc(16);
    if (fault == "uninitialised" && static_cast<char volatile *>(memory)[3] != 0) {
        std::puts("not zero");
    }
    if (fault != "lost") {
        std::free(memory);
    }
    memory = nullptr;
    return fault == "refusal" ? 1 : 0;
}
