#include "tools/vek/near_words.h"

#include <gtest/gtest.h>

using Words = std::vector<std::string>;

TEST(NearWords, CountsWhatHasToBeChanged) {
    EXPECT_EQ(wordDistance("", ""), 0u);
    EXPECT_EQ(wordDistance("", "abc"), 3u);
    EXPECT_EQ(wordDistance("abc", "ABC"), 0u);
    EXPECT_EQ(wordDistance("abc", "abd"), 1u);
    EXPECT_EQ(wordDistance("abc", "ac"), 1u);
    EXPECT_EQ(wordDistance("abc", "abxc"), 1u);
    EXPECT_EQ(wordDistance("abc", "acb"), 1u);
    EXPECT_EQ(wordDistance("kitten", "sitting"), 3u);
}

TEST(NearWords, GivesTheNearestInTheirOrder) {
    const Words words = {"EXPORT_X", "EXPORT_Y", "IMPORT_X", "NAME"};
    EXPECT_EQ(nearWords("EXPORT_Z", words), (Words{"EXPORT_X", "EXPORT_Y"}));
    EXPECT_EQ(nearWords("exportx", words), Words{"EXPORT_X"});
    EXPECT_EQ(nearWords("NAEM", words), Words{"NAME"});
}

TEST(NearWords, GivesNoneThatIsFar) {
    EXPECT_EQ(nearWords("AUTHOR", {"NAME", "EXTENSION"}), Words());
    EXPECT_EQ(nearWords("x", {"a"}), Words());
    EXPECT_EQ(nearWords("", {"a"}), Words());
    EXPECT_EQ(nearWords(std::string(1000000, 'x'), {"x"}), Words());
}

TEST(NearWords, TakesAPartForTheOneWordThatHasIt) {
    EXPECT_EQ(nearWords("EXT", {"NAME", "EXTENSION"}), Words{"EXTENSION"});
    EXPECT_EQ(nearWords("FLIP", {"EXPORT_FLIP_X", "EXPORT_FLIP_Y"}), Words());
}

TEST(NearWords, AreListedWithAnOr) {
    EXPECT_EQ(orList({}), "");
    EXPECT_EQ(orList({"a"}), "a");
    EXPECT_EQ(orList({"a", "b"}), "a or b");
    EXPECT_EQ(orList({"a", "b", "c"}), "a, b or c");
}
