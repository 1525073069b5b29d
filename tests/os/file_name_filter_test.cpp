#include "os/file_name_filter.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "foundation/bx_string.h"

namespace {

unsigned char folded(char c) {
    return BXString::s_toUpper[static_cast<unsigned char>(c)];
}

// The rule as it is said: one filter character at a time, a star takes first more and then less.
bool slowMatch(const char* name, const char* filter) {
    if (!*filter) return !*name;
    if (*filter == '*')
        return (*name && slowMatch(name + 1, filter)) || slowMatch(name, filter + 1);
    if (!*name) return false;
    return (*filter == '?' || folded(*name) == folded(*filter)) && slowMatch(name + 1, filter + 1);
}

std::string randomText(std::mt19937& random, const char* letters, std::size_t count,
                       std::size_t longest) {
    std::string text(random() % (longest + 1), ' ');
    for (char& c : text) c = letters[random() % count];
    return text;
}

}  // namespace

TEST(FileNameFilter, MatchesItsOwnTextInAnyLetterCase) {
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "Foo.app"));
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "fOO.APP"));
    EXPECT_FALSE(fileNameMatchFilter("Foo.app", "Foo.ap"));
    EXPECT_FALSE(fileNameMatchFilter("Foo.app", "Foo.apps"));
    EXPECT_FALSE(fileNameMatchFilter("Foo.app", "oo.app"));
}

TEST(FileNameFilter, FoldsAsciiLettersAlone) {
    EXPECT_FALSE(fileNameMatchFilter("\xC3\xA4", "\xC3\x84")) << "umlauts, small and capital";
    EXPECT_FALSE(fileNameMatchFilter("[", "{"));
    EXPECT_TRUE(fileNameMatchFilter("\xC3\xA4", "\xC3\xA4"));
}

TEST(FileNameFilter, AnEmptyNameOrFilterMatchesNothing) {
    EXPECT_FALSE(fileNameMatchFilter("", ""));
    EXPECT_FALSE(fileNameMatchFilter("", "*"));
    EXPECT_FALSE(fileNameMatchFilter("a", ""));
}

TEST(FileNameFilter, AStarTakesAnyRunOfCharacters) {
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "*"));
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "*.APP"));
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "Foo*"));
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "F*o*p"));
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "Foo.app*")) << "also none";
    EXPECT_TRUE(fileNameMatchFilter("Foo.app", "***.***"));
    EXPECT_FALSE(fileNameMatchFilter("Foo.app", "*.ap"));
    EXPECT_FALSE(fileNameMatchFilter("Foo.app", "F*x*p"));
}

TEST(FileNameFilter, AQuestionMarkTakesExactlyOneCharacter) {
    EXPECT_TRUE(fileNameMatchFilter("a.b", "a?b"));
    EXPECT_TRUE(fileNameMatchFilter("abc", "???"));
    EXPECT_FALSE(fileNameMatchFilter("abc", "??"));
    EXPECT_FALSE(fileNameMatchFilter("abc", "????"));
    EXPECT_TRUE(fileNameMatchFilter("abc", "?*"));
    EXPECT_FALSE(fileNameMatchFilter("a", "?*?"));
}

TEST(FileNameFilter, ADotIsAnOrdinaryCharacter) {
    EXPECT_FALSE(fileNameMatchFilter("Foo", "*.*"));
    EXPECT_TRUE(fileNameMatchFilter("Foo.", "*.*"));
    EXPECT_TRUE(fileNameMatchFilter(".hidden", "*"));
    EXPECT_TRUE(fileNameMatchFilter("..", "*"));
}

TEST(FileNameFilter, KnowsNoListsClassesOrEscapes) {
    EXPECT_FALSE(fileNameMatchFilter("a", "[ab]"));
    EXPECT_TRUE(fileNameMatchFilter("[ab]", "[ab]"));
    EXPECT_FALSE(fileNameMatchFilter("a", "a;b"));
    EXPECT_FALSE(fileNameMatchFilter("*", "\\*"));
    EXPECT_TRUE(fileNameMatchFilter("\\x", "\\*"));
}

TEST(FileNameFilter, MatchesWildcardsInTheNameLikeOtherCharacters) {
    EXPECT_TRUE(fileNameMatchFilter("a*b?", "A*B?"));
    EXPECT_FALSE(fileNameMatchFilter("*", "a"));
}

TEST(FileNameFilter, ManyStarsAgainstALongNameEndSoon) {
    const std::string forty(40, 'a');
    EXPECT_FALSE(fileNameMatchFilter(forty.c_str(), "*a*a*a*a*a*a*a*b"));
    EXPECT_TRUE(fileNameMatchFilter((forty + "b").c_str(), "*a*a*a*a*a*a*a*b"));
    const std::string longest(255, 'a');
    EXPECT_FALSE(fileNameMatchFilter(longest.c_str(), "*a*a*a*a*b"));
    std::string stars;
    for (int i = 0; i < 100; ++i) stars += "*a";
    EXPECT_FALSE(fileNameMatchFilter(longest.c_str(), (stars + "*b").c_str()));
    EXPECT_TRUE(fileNameMatchFilter(longest.c_str(), stars.c_str()));
}

TEST(FileNameFilter, AgreesWithTheRuleOnRandomNames) {
    std::mt19937 random(20);
    int matches = 0;
    for (int i = 0; i < 300000; ++i) {
        const std::string name = randomText(random, "abB", 3, 9);
        const std::string filter = randomText(random, "aB*?*", 5, 7);
        const bool expected =
            !name.empty() && !filter.empty() && slowMatch(name.c_str(), filter.c_str());
        matches += expected;
        ASSERT_EQ(fileNameMatchFilter(name.c_str(), filter.c_str()), expected)
            << '"' << name << "\" and \"" << filter << '"';
    }
    EXPECT_GT(matches, 30000);
    EXPECT_LT(matches, 270000);
}
