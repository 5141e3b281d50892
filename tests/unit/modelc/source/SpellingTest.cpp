#include "modelc/source/Spelling.h"

#include <gtest/gtest.h>

namespace modelc {

TEST(Spelling, SuggestsTheClosestName) {
    EXPECT_EQ(didYouMean("Swich", {"Switch", "SwitchDir", "VtepList"}), "; did you mean 'Switch'?");
}

TEST(Spelling, SuggestsAQualifiedNameForItsLastPart) {
    EXPECT_EQ(didYouMean("EthAddr", {"Nolt::EthAddr", "Nolt::IpAddr"}),
              "; did you mean 'Nolt::EthAddr'?");
}

TEST(Spelling, SuggestsNothingIfNoNameIsClose) {
    EXPECT_EQ(didYouMean("Harbour", {"Switch", "VtepList"}), "");
    EXPECT_EQ(didYouMean("Harbour", {}), "");
}

TEST(Spelling, SwappedLettersCountAsOneDifference) {
    EXPECT_EQ(didYouMean("Kye", {"Key", "Kind"}), "; did you mean 'Key'?");
}

TEST(Spelling, OneLetterCanDifferInAWordOfTwoButNotOfOne) {
    EXPECT_EQ(didYouMean("U9", {"U8", "bool"}), "; did you mean 'U8'?");
    EXPECT_EQ(didYouMean("V", {"W"}), "");
}

} // namespace modelc
