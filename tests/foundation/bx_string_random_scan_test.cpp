// The substring searches against slow references written from what each of them promises. Texts
// are short and of few letters, so that matches, overlaps and both ends come up often.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "foundation/bx_string.h"

namespace {

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return upper(c); });
    return text;
}

bool matches(const std::string& a, const std::string& b, bool ignoreCase) {
    return ignoreCase ? upper(a) == upper(b) : a == b;
}

std::vector<int> indexes(int first, int last) {
    std::vector<int> all;
    const int step = first <= last ? 1 : -1;
    for (int i = first; i != last + step; i += step) all.push_back(i);
    return all;
}

// Looks at the text's characters in the given order and remembers the part of the pattern that they
// have spelt. Returns the index of the character that completes it, or -1.
int referenceScan(const std::string& text, const std::vector<int>& order, const std::string& pat,
                  bool ignoreCase) {
    std::string spelt;
    for (const int index : order) {
        const char c = text.c_str()[index];
        if (matches(spelt + c, pat.substr(0, spelt.size() + 1), ignoreCase)) {
            spelt += c;
        } else {
            spelt = c == pat[0] ? std::string(1, c) : std::string();
        }
        if (spelt.size() == pat.size()) return index;
    }
    return -1;
}

int size(const std::string& text) {
    return static_cast<int>(text.size());
}

int referenceFirst(const std::string& text, const std::string& pat, bool ignoreCase) {
    if (text.empty()) return -1;
    for (int i = 0; i + size(pat) <= size(text); ++i) {
        if (matches(text.substr(static_cast<std::size_t>(i), pat.size()), pat, ignoreCase))
            return i;
    }
    return -1;
}

int referenceNext(const std::string& text, const std::string& pat, int start, bool ignoreCase) {
    const int last = size(text) - size(pat);
    if (pat.empty() || last < start) return -1;
    const int end = referenceScan(text, indexes(start, last), pat, ignoreCase);
    return end == -1 ? -1 : end - size(pat) + 1;
}

int referenceLast(const std::string& text, const std::string& pat, bool ignoreCase) {
    if (pat.empty() || size(pat) > size(text)) return -1;
    const std::string reversed(pat.rbegin(), pat.rend());
    return referenceScan(text, indexes(size(text), size(pat)), reversed, ignoreCase);
}

int referencePrev(const std::string& text, const std::string& pat, int start, bool ignoreCase) {
    if (start < 1 || pat.empty() || size(pat) > size(text)) return -1;
    const int first = std::min(start + size(pat) - 1, size(text));
    const std::string reversed(pat.rbegin(), pat.rend());
    return referenceScan(text, indexes(first, 0), reversed, ignoreCase);
}

class RandomTexts {
public:
    std::string text(int longest) {
        static const char letters[] = "aabbAB/";
        std::string made;
        for (int left = number(0, longest); left > 0; --left) {
            made += letters[number(0, static_cast<int>(sizeof letters) - 2)];
        }
        return made;
    }

    int number(int low, int high) {
        return low + static_cast<int>(m_engine() % static_cast<unsigned int>(high - low + 1));
    }

private:
    std::mt19937 m_engine{20071};
};

constexpr int kCases = 100000;

}  // namespace

TEST(BXStringRandomScan, FindsWhatTheReferencesFind) {
    RandomTexts random;
    int found = 0;
    for (int i = 0; i < kCases; ++i) {
        const std::string text = random.text(12);
        const std::string pat = random.text(4);
        const int start = random.number(0, 14);
        const bool ignoreCase = random.number(0, 1) == 1;
        SCOPED_TRACE("'" + text + "' '" + pat + "' " + std::to_string(start) +
                     (ignoreCase ? " ignoring case" : ""));
        const BXString s(text.c_str());
        const BXString p(pat.c_str());
        ASSERT_EQ(referenceFirst(text, pat, ignoreCase), s.findFirst(p, ignoreCase));
        ASSERT_EQ(referenceNext(text, pat, start, ignoreCase), s.findNext(p, start, ignoreCase));
        ASSERT_EQ(referenceLast(text, pat, ignoreCase), s.findLast(p, ignoreCase));
        ASSERT_EQ(referencePrev(text, pat, start, ignoreCase), s.findPrev(p, start, ignoreCase));
        found += s.findNext(p, start, ignoreCase) >= 0;
        found += s.findPrev(p, start, ignoreCase) >= 0;
    }
    // The comparison is worth something only if both answers come up often.
    EXPECT_GT(found, kCases / 10);
    EXPECT_LT(found, 2 * kCases - kCases / 10);
}

TEST(BXStringRandomScan, FindsOnlyRealMatches) {
    RandomTexts random;
    for (int i = 0; i < kCases; ++i) {
        const std::string text = random.text(12);
        const std::string pat = random.text(4);
        const int start = random.number(0, 14);
        const bool ignoreCase = random.number(0, 1) == 1;
        SCOPED_TRACE("'" + text + "' '" + pat + "' " + std::to_string(start));
        const BXString s(text.c_str());
        const BXString p(pat.c_str());
        for (const int match : {s.findFirst(p, ignoreCase), s.findNext(p, start, ignoreCase),
                                s.findLast(p, ignoreCase), s.findPrev(p, start, ignoreCase)}) {
            if (match == -1) continue;
            ASSERT_TRUE(
                matches(text.substr(static_cast<std::size_t>(match), pat.size()), pat, ignoreCase))
                << match;
        }
    }
}
