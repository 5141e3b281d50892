#pragma once

#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

/// A server with the small database and additions through `vtep-ctl`, as an operator makes them.
/// It is started once for all tests, which only read.
class Database : public testing::Test {
protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite();
    void SetUp() override;

    /// What vxshow prints for it, with the fabric file, which has its switches' identifiers.
    std::string listing(Words const & words) const;

    static std::unique_ptr<OvsdbLab> lab;
    static std::unique_ptr<Folder> folder;
    static std::string fabric; ///< the fabric file
};
