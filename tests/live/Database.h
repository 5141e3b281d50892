#pragma once

#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

/// A server with the small database, to which more was added through `vtep-ctl`, as an operator
/// does. Up once for all tests, which only read.
class Database : public testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;

    /// What is printed of it: with the system identifiers of its switches, from a fabric file.
    std::string listing(Words const & words) const;

    static std::unique_ptr<OvsdbLab> lab;
    static std::unique_ptr<Folder> folder;
    static std::string fabric; ///< the fabric file
};
