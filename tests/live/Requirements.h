#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

/// What the labs need of the machine.
///
/// Where something is missing, the tests that need it are skipped and say so. Not on the system
/// that this project is built for: there root has all of it, so what is missing is a failure.
enum class Lab {
    fake,     ///< programs that only look like a peer
    database, ///< ovsdb-server
    evpn,     ///< FRR in network namespaces
};

/// What is missing for a lab, and how to get it; nothing when all is there.
std::optional<std::string> missingFor(Lab lab);

/// Whether what is missing is to be a failure: this is Debian 12, and we are root.
bool mustBeComplete();

/// The start of a test, or of its `SetUp`, that needs a lab.
#define VXSHOW_NEEDS_LAB(lab)                                                                      \
    if (auto const missing = missingFor(lab)) {                                                    \
        if (mustBeComplete()) {                                                                    \
            FAIL() << *missing;                                                                    \
        }                                                                                          \
        GTEST_SKIP() << *missing;                                                                  \
    }                                                                                              \
    static_cast<void>(0)
