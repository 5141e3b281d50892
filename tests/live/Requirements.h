#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

/// What the labs need of the machine.
///
/// Where something is missing, the tests that need it are skipped and say so. Not on the system
/// that this project is built for: there root has all programs, so one that is missing is a
/// failure. What root may do is another's decision there, too: where a container has not all
/// privileges, tests are skipped.
enum class Lab {
    fake,     ///< programs that only look like a peer
    database, ///< ovsdb-server
    evpn,     ///< FRR in network namespaces
};

/// What a lab lacks.
struct Missing {
    std::string text;       ///< what it is, and how to get it
    bool isFailure = false; ///< whether it should have been there
};

/// What is missing for a lab; nothing when all is there.
std::optional<Missing> missingFor(Lab lab);

/// Lets programs be found that administer the machine, whatever the caller's PATH is.
void extendPath();

/// The start of a test, or of its `SetUp`, that needs a lab.
#define VXSHOW_NEEDS_LAB(lab)                                                                      \
    if (auto const missing = missingFor(lab)) {                                                    \
        if (missing->isFailure) {                                                                  \
            FAIL() << missing->text;                                                               \
        }                                                                                          \
        GTEST_SKIP() << missing->text;                                                             \
    }                                                                                              \
    static_cast<void>(0)
