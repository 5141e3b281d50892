#include "tests/unit/vxshow/OnTerminal.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

Finished vxshowOnTerminal(std::vector<std::string> const & arguments, unsigned short columns) {
    int const ours = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    EXPECT_EQ(grantpt(ours), 0);
    EXPECT_EQ(unlockpt(ours), 0);
    int const theirs = open(ptsname(ours), O_RDWR | O_NOCTTY | O_CLOEXEC);
    winsize const size{24, columns, 0, 0};
    EXPECT_EQ(ioctl(theirs, TIOCSWINSZ, &size), 0);
    Process process(arguments, {.outFd = theirs});
    Finished finished = process.finish();
    std::array<char, 4096> some;
    for (pollfd fd{ours, POLLIN, 0}; poll(&fd, 1, 0) > 0;) {
        auto const got = read(ours, some.data(), some.size());
        if (got <= 0) {
            break;
        }
        finished.out.append(some.data(), static_cast<std::size_t>(got));
    }
    close(theirs);
    close(ours);
    return finished;
}
