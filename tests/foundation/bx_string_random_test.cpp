// Operations on texts against slow references written word by word from what they promise, on many
// random texts of few different characters.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "foundation/bx_string.h"

namespace {

constexpr int kCases = 100000;

class RandomTexts {
public:
    // Up to `longest` characters out of `letters`.
    std::string text(const std::string& letters, int longest) {
        std::string made(static_cast<std::size_t>(below(longest + 1)), ' ');
        for (char& c : made)
            c = letters[static_cast<std::size_t>(below(static_cast<int>(letters.size())))];
        return made;
    }

    int below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned int>(limit)); }

private:
    std::mt19937 m_engine{77};
};

bool isIn(const std::string& set, char c) {
    return set.find(c) != std::string::npos;
}

// The first, or last, index in [from, to) whose character is in the set as `wanted` says.
int firstIn(const std::string& text, const std::string& set, bool wanted, int from, int to) {
    for (int i = from; i < to; ++i) {
        if (isIn(set, text[static_cast<std::size_t>(i)]) == wanted) return i;
    }
    return -1;
}

int lastIn(const std::string& text, const std::string& set, bool wanted, int from, int to) {
    for (int i = to - 1; i >= from; --i) {
        if (isIn(set, text[static_cast<std::size_t>(i)]) == wanted) return i;
    }
    return -1;
}

int sign(int n) {
    return n < 0 ? -1 : n > 0 ? 1 : 0;
}

int upper(char c) {
    const unsigned char byte = static_cast<unsigned char>(c);
    return byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte;
}

// -1, 0 or 1 over at most n characters, or all for n < 1; a text that ends first is the lesser.
template <class Value>
int compared(const std::string& a, const std::string& b, int n, Value valueOf) {
    for (std::size_t i = 0; n < 1 || i < static_cast<std::size_t>(n); ++i) {
        const int left = i < a.size() ? valueOf(a[i]) : valueOf('\0');
        const int right = i < b.size() ? valueOf(b[i]) : valueOf('\0');
        if (left != right) return sign(left - right);
        if (i >= a.size()) return 0;
    }
    return 0;
}

// The number at the end of the stem, counted up as one counts on paper.
std::string advanced(const std::string& name) {
    const std::size_t none = std::string::npos;
    const std::size_t separator = name.find_last_of("/\\");
    const std::size_t dot = name.find_last_of('.');
    const bool dotCounts = dot != none && (separator == none || dot > separator);
    const std::size_t stemEnd = dotCounts ? dot : name.size();
    std::size_t digit = stemEnd;
    while (digit > 0 && name[digit - 1] == '9') --digit;
    std::string next = name;
    std::fill(next.begin() + static_cast<std::ptrdiff_t>(digit),
              next.begin() + static_cast<std::ptrdiff_t>(stemEnd), '0');
    const bool counts = digit > 0 && name[digit - 1] >= '0' && name[digit - 1] <= '8';
    if (counts) {
        ++next[digit - 1];
    } else {
        next.insert(digit, "1");
    }
    return next;
}

std::string shortCount(int n) {
    const auto withTenth = [&](int unit, const char* letter) {
        return std::to_string(n / unit) + "." + std::to_string(n % unit / (unit / 10)) + letter;
    };
    if (n >= 1000000) return withTenth(1000000, "m");
    if (n >= 1000) return withTenth(1000, "k");
    return std::to_string(n % 1000000 % 1000);
}

}  // namespace

TEST(BXStringRandom, FindsCharactersOfASetAsTheReferenceDoes) {
    RandomTexts random;
    for (int i = 0; i < kCases; ++i) {
        const std::string text = random.text("abc/\xE4", 10), set = random.text("abcd\xE4", 3);
        const int length = static_cast<int>(text.size());
        const int start = random.below(14);
        const int before = std::min(start, length);
        const BXString s(text.c_str()), chars(set.c_str());
        const bool same =
            s.findFirstCharOf(chars) == firstIn(text, set, true, 0, length) &&
            s.findFirstCharNotOf(chars) == firstIn(text, set, false, 0, length) &&
            s.findLastCharOf(chars) == lastIn(text, set, true, 0, length) &&
            s.findLastCharNotOf(chars) == lastIn(text, set, false, 0, length) &&
            s.findNextCharOf(chars, start) == firstIn(text, set, true, start, length) &&
            s.findNextCharNotOf(chars, start) == firstIn(text, set, false, start, length) &&
            s.findPrevCharOf(chars, start) == lastIn(text, set, true, 0, before) &&
            s.findPrevCharNotOf(chars, start) == lastIn(text, set, false, 0, before);
        ASSERT_TRUE(same) << '"' << text << "\" \"" << set << "\" " << start;
    }
}

TEST(BXStringRandom, RemovesAndReplacesCharactersOfASetAsTheReferenceDoes) {
    RandomTexts random;
    for (int i = 0; i < kCases; ++i) {
        const std::string text = random.text("abc/\xE4", 10), set = random.text("abcd\xE4", 3);
        const auto expected = [&](bool wanted, bool remove) {
            std::string made;
            for (const char c : text) {
                const bool flagged = isIn(set, c) == wanted;
                if (!flagged) made += c;
                if (flagged && !remove) made += '#';
            }
            return made;
        };
        const BXString chars(set.c_str());
        BXString removed(text.c_str()), kept(removed), replaced(removed), others(removed);
        removed.removeCharsOf(chars);
        kept.removeCharsNotOf(chars);
        replaced.replaceCharsOf(chars, '#');
        others.replaceCharsNotOf(chars, '#');
        ASSERT_EQ(removed.c_str(), expected(true, true));
        ASSERT_EQ(kept.c_str(), expected(false, true));
        ASSERT_EQ(replaced.c_str(), expected(true, false));
        ASSERT_EQ(others.c_str(), expected(false, false));
    }
}

TEST(BXStringRandom, ComparesAsTheReferenceDoes) {
    RandomTexts random;
    const auto asSigned = [](char c) { return int{static_cast<signed char>(c)}; };
    for (int i = 0; i < kCases; ++i) {
        const std::string a = random.text("aAbB\xE4", 5), b = random.text("aAbB\xE4", 5);
        const int n = random.below(8) - 1;
        const int cmp = BXString::cmp(a.c_str(), b.c_str(), n);
        const int cmpNoCase = BXString::cmpNoCase(a.c_str(), b.c_str(), n);
        ASSERT_EQ(cmp, compared(a, b, n, asSigned)) << a << ' ' << b << ' ' << n;
        ASSERT_EQ(cmpNoCase, compared(a, b, n, upper)) << a << ' ' << b << ' ' << n;
    }
}

TEST(BXStringRandom, CountsFileNamesUpAsTheReferenceDoes) {
    RandomTexts random;
    for (int i = 0; i < kCases; ++i) {
        const std::string name = random.text("a0899./\\", 9);
        BXString advancing(name.c_str());
        advancing.fileNameAdvance();
        ASSERT_EQ(advancing.c_str(), advanced(name)) << name;
    }
}

TEST(BXStringRandom, PrintsShortCountsAsTheReferenceDoes) {
    RandomTexts random;
    BXString text;
    for (int i = 0; i < kCases; ++i) {
        // As many of each number of digits.
        const int n = (random.below(2000000001) - 1000000000) >> random.below(30);
        text.printShortCount(n);
        ASSERT_EQ(text.c_str(), shortCount(n)) << n;
    }
}

TEST(BXStringRandom, FindsTagsByItsOwnSearchForTheNextText) {
    RandomTexts random;
    int found = 0;
    for (int i = 0; i < kCases; ++i) {
        const std::string text = random.text("<a>b", 14);
        const BXString s(text.c_str()), open(random.text("<a", 2).c_str()),
            close(random.text(">b", 2).c_str());
        const bool ignoreCase = random.below(2) != 0;
        const int length = s.length();
        int from = random.below(18) - 2, to = random.below(20) - 2;
        int expectedFrom = from, expectedTo = to;
        const bool expected = [&] {
            if (s.isEmpty() || open.isEmpty() || close.isEmpty()) return false;
            if (expectedFrom < 0) {
                expectedFrom = 0;
            } else if (expectedFrom >= length) {
                return false;
            }
            if (expectedTo > length) {
                expectedTo = length;
            } else if (expectedTo <= expectedFrom) {
                return false;
            }
            expectedFrom = s.findNext(open, expectedFrom, ignoreCase);
            if (expectedFrom == -1) return false;
            expectedFrom += open.length();
            if (expectedFrom >= expectedTo) return false;
            const int end = s.findNext(close, expectedFrom, ignoreCase);
            if (end == -1 || end + close.length() > expectedTo) return false;
            expectedTo = end;
            return true;
        }();
        ASSERT_EQ(s.findFirstTag(open, close, from, to, ignoreCase), expected) << text;
        ASSERT_EQ(from, expectedFrom) << text;
        ASSERT_EQ(to, expectedTo) << text;
        found += expected;
    }
    EXPECT_GT(found, 1000);
}
