#include "tests/unit/VxlanController/command/Interrupted.h"

#include <gtest/gtest.h>

#include <thread>
#include <unistd.h>

std::string standardOutputOf(std::function<void()> const & body) {
    testing::internal::CaptureStdout();
    body();
    return testing::internal::GetCapturedStdout();
}

Interrupted interruptedWhilePrinting(std::function<void(int fd)> const & render) {
    int ends[2];
    if (pipe(ends) != 0) {
        ADD_FAILURE() << "no pipe";
        return {};
    }
    Interrupted result;
    std::thread reader([&] {
        char part[4096];
        for (ssize_t n; (n = read(ends[0], part, sizeof(part))) > 0;) {
            if (result.printed.empty()) {
                outfmt::requestInterrupt();
            }
            result.printed.append(part, static_cast<std::size_t>(n));
        }
    });
    result.standardOutput = standardOutputOf([&] { render(ends[1]); });
    close(ends[1]);
    reader.join();
    close(ends[0]);
    return result;
}
