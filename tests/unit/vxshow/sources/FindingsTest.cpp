#include "vxshow/sources/Findings.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using state::Role;

TEST(Findings, HaveNoWarningIfThereAreNone) {
    EXPECT_EQ(Findings().warning(), std::nullopt);
}

TEST(Findings, StartWithTheRemarks) {
    Findings findings;
    findings.remarks = {{Subjects::every(), "nothing is there"}, {Subject::routers, "no names"}};
    EXPECT_EQ(findings.warning(), "nothing is there; no names");
    findings.leftOut.add(Subject::localMacs, "a");
    EXPECT_EQ(findings.warning(), "nothing is there; no names; 1 entry left out: a");
}

TEST(Findings, AreOneLineOfAllKinds) {
    Findings findings;
    findings.leftOut.add(Subject::localMacs, "b");
    findings.leftOut.add(Subject::remoteMacs, "a");
    findings.unplaced.add(Subject::localMacs, "c");
    findings.disputed.add(Subject::localBindings, "d");
    EXPECT_EQ(findings.warning(),
              "2 entries left out, the first: a; 1 local entry at a VTEP of no switch: c; "
              "1 IP address with several MAC addresses: d");
}

TEST(Findings, OnlyWhatIsAboutTheSubjectIsInTheWarning) {
    Findings findings;
    findings.remarks = {{Subject::routers, "no names"}};
    findings.leftOut.add(Subject::localMacs, "b");
    findings.leftOut.add(Subject::remoteMacs, "a");
    findings.leftOut.add(Subject::localMacs | Subject::localBindings, "c");
    EXPECT_EQ(findings.warning(Subject::localMacs), "2 entries left out, the first: b");
    EXPECT_EQ(findings.warning(Subject::localBindings), "1 entry left out: c");
    EXPECT_EQ(findings.warning(Subject::routers), "no names");
    EXPECT_EQ(findings.warning(Subject::remoteBindings), std::nullopt);
    EXPECT_EQ(findings.leftOut.count(), 3U);
    EXPECT_EQ(findings.leftOut.first(), "a");
}

TEST(Subjects, WhatASwitchLearnedIsReceivedFromIt) {
    state::Selection const macReceived{.advertised = false, .routers = false, .arpTables = false};
    EXPECT_EQ(subjectsShown(macReceived, Role::switches), Subjects(Subject::localMacs));
    EXPECT_EQ(subjectsShown(macReceived, Role::hsc), Subjects(Subject::remoteMacs));
    EXPECT_EQ(subjectsShown(macReceived, Role::evpn), Subjects(Subject::remoteMacs));
}

TEST(Subjects, WhatASwitchWasToldIsAdvertised) {
    state::Selection const arpAdvertised{.received = false, .routers = false, .macTables = false};
    EXPECT_EQ(subjectsShown(arpAdvertised, Role::switches), Subjects(Subject::remoteBindings));
    EXPECT_EQ(subjectsShown(arpAdvertised, Role::hsc), Subjects(Subject::localBindings));
    EXPECT_EQ(subjectsShown(arpAdvertised, Role::qvx), Subjects());
}

TEST(Subjects, ACommandOfRoutersShowsNothingElse) {
    state::Selection const routers{.received = false, .advertised = false};
    EXPECT_EQ(subjectsShown(routers, Role::switches), Subjects(Subject::routers));
    EXPECT_EQ(subjectsShown({}, Role::switches), Subjects::every());
}

} // namespace vxshow::test
