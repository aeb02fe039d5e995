#include "base/words.h"

#include <gtest/gtest.h>

namespace words_test {

using namespace zarven::tool;

namespace {

const std::vector<std::string> keys = {"mac", "model", "pids", "pids_max", "outputs"};

TEST(NearestWord, IsTheWordItself) {
    EXPECT_EQ(nearest_word("pids", keys), "pids");
}

TEST(NearestWord, OneSlipOfEachKind) {
    EXPECT_EQ(nearest_word("outpts", keys), "outputs");
    EXPECT_EQ(nearest_word("outpputs", keys), "outputs");
    EXPECT_EQ(nearest_word("outpots", keys), "outputs");
    EXPECT_EQ(nearest_word("ouptuts", keys), "outputs");
}

TEST(NearestWord, TwoLettersExchangedAreOneSlip) {
    EXPECT_EQ(nearest_word("abcd", {"abxy", "abdc"}), "abdc");
    EXPECT_EQ(nearest_word("ab", {"xb", "ba"}), "xb") << "one slip each: the first";
}

TEST(NearestWord, AShortWordIsNotNearBecauseItIsShort) {
    EXPECT_EQ(nearest_word("pid_max", keys), "pids_max");
    EXPECT_EQ(nearest_word("tputs", keys), "outputs");
}

TEST(NearestWord, OfAnEmptyListThereIsNone) {
    EXPECT_EQ(nearest_word("mac", {}), "");
    EXPECT_EQ(nearest_word("", {"mac"}), "mac");
}

TEST(DidYouMean, AsksUpToHalfTheWord) {
    EXPECT_EQ(did_you_mean("modl", keys), "; did you mean \"model\"?");
    EXPECT_EQ(did_you_mean("abcd", {"abxy"}), "; did you mean \"abxy\"?");
    EXPECT_EQ(did_you_mean("abcd", {"axyz"}), "");
    EXPECT_EQ(did_you_mean("", {"run"}), "");
    EXPECT_EQ(did_you_mean("run", {}), "");
}

} // namespace

} // namespace words_test
