#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <sys/resource.h>

// The sanitizers themselves need more memory than these limits leave.
#ifndef __SANITIZE_ADDRESS__

namespace {

/// A state of one VNI with `count` MAC addresses.
std::string stateOf(int count) {
    std::string text =
        R"({"format":"vxlan-controller-state","version":1,"received":{"switches":{"s1":{"10":{"unicast":{)";
    for (int number = 0; number < count; ++number) {
        char entry[64];
        std::snprintf(entry, sizeof(entry), "%s\"00:00:00:%02x:%02x:%02x\":{\"vtep\":\"10.0.0.1\"}",
                      number == 0 ? "" : ",", number >> 16 & 0xFF, number >> 8 & 0xFF,
                      number & 0xFF);
        text += entry;
    }
    return text + "}}}}}}\n";
}

Finished listedWith(std::string const & state, rlim_t mebibytes) {
    Process::Setting setting;
    setting.input = state;
    setting.inChild = [mebibytes] {
        rlimit const none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
        rlimit const limit{mebibytes << 20U, mebibytes << 20U};
        setrlimit(RLIMIT_AS, &limit);
    };
    return Process({"--state", "-", "mac", "received"}, setting).finish();
}

} // namespace

TEST(OutOfMemory, IsOneLineAndStatus1AndNothingLikeAWholeListing) {
    auto const state = stateOf(200'000);
    int whole = 0;
    int without = 0;
    for (rlim_t mebibytes = 20; mebibytes <= 140; mebibytes += 3) {
        auto const it = listedWith(state, mebibytes);
        EXPECT_EQ(it.signal, 0) << mebibytes << " MiB: " << it.err;
        bool const isWhole = it.out.find("criterion: 200000\n") != std::string::npos;
        EXPECT_EQ(it.status, isWhole ? 0 : 1) << mebibytes << " MiB: " << it.err;
        EXPECT_EQ(it.err.empty(), isWhole) << mebibytes << " MiB";
        whole += isWhole;
        without += it.err == "vxshow: out of memory\n";
    }
    EXPECT_GT(whole, 0);
    EXPECT_GT(without, 5);
}

#endif
