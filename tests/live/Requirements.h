#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

/// What the labs need from the machine.
///
/// If something is missing, the tests that need it are skipped and say why. On the system that
/// this project is built for, root has all programs, so a missing one is a failure there. The
/// privileges of root are not a matter of this project: in a container without all of them, tests
/// are skipped there, too.
enum class Lab {
    fake,     ///< programs that only look like a peer
    database, ///< ovsdb-server
    evpn,     ///< FRR in network namespaces
};

/// Something that a lab lacks.
struct Missing {
    std::string text;       ///< what it is, and how to get it
    bool isFailure = false; ///< whether it has to be present
};

/// What is missing for a lab; nullopt if nothing is.
std::optional<Missing> missingFor(Lab lab);

/// Adds the folders of administrators' programs to PATH.
void extendPath();

/// Starts a test, or its `SetUp`, that needs a lab.
#define VXSHOW_NEEDS_LAB(lab)                                                                      \
    if (auto const missing = missingFor(lab)) {                                                    \
        if (missing->isFailure) {                                                                  \
            FAIL() << missing->text;                                                               \
        }                                                                                          \
        GTEST_SKIP() << missing->text;                                                             \
    }                                                                                              \
    static_cast<void>(0)
