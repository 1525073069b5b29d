// The searches of BXString: for texts, for characters of a set, for tags.

#include <algorithm>
#include <cstring>
#include <iterator>

#include "foundation/bx_string.h"

namespace {

bool sameByte(char a, char b) noexcept {
    return a == b;
}

bool sameLetter(char a, char b) noexcept {
    return BXString::s_toUpper[static_cast<unsigned char>(a)] ==
           BXString::s_toUpper[static_cast<unsigned char>(b)];
}

using SameCharacter = bool (*)(char, char) noexcept;

// The comparison is a template argument so that the loops have it inline.
template <SameCharacter same>
int scanForward(const char* text, const char* pat, int patLength, int start, int last) noexcept {
    int cursor = 0;
    for (int position = start; position <= last; ++position) {
        if (same(text[position], pat[cursor])) {
            // Required(R01): the scan never goes back, so a match that overlaps a failed partial
            // one is missed, and so is one that ends beyond `last`.
            if (cursor == patLength - 1) return position - patLength + 1;
            ++cursor;
        } else {
            // Required(R04): a restart looks at the case even when the search does not.
            cursor = sameByte(text[position], pat[0]) ? 1 : 0;
        }
    }
    return -1;
}

// Walks from index `start` down to index `last`, both examined.
template <SameCharacter same>
int scanBackward(const char* text, const char* pat, int patLength, int start, int last) noexcept {
    const int patEnd = patLength - 1;
    int cursor = patEnd;
    for (int position = start; position >= last; --position) {
        if (same(text[position], pat[cursor])) {
            if (cursor == 0) return position;
            --cursor;
        } else {
            // Required(R04): as in the forward scan.
            cursor = sameByte(text[position], pat[patEnd]) ? patEnd - 1 : patEnd;
        }
    }
    return -1;
}

template <SameCharacter same>
int plainSearch(const char* text, int length, const char* pat, int patLength) noexcept {
    for (int start = 0; start <= length - patLength; ++start) {
        int matched = 0;
        while (matched < patLength && same(text[start + matched], pat[matched])) ++matched;
        if (matched == patLength) return start;
    }
    return -1;
}

// One flag per byte value: whether the character is of the set, or with `of` false, not of it.
class CharacterFlags {
public:
    CharacterFlags(const BXString& set, bool of) noexcept {
        std::fill(std::begin(m_flags), std::end(m_flags), !of);
        for (const char* c = set.c_str(); *c; ++c) m_flags[static_cast<unsigned char>(*c)] = of;
    }

    bool operator[](char c) const noexcept { return m_flags[static_cast<unsigned char>(c)]; }

    int firstFrom(const BXString& text, int start) const noexcept {
        const char* characters = text.c_str();
        const int length = text.length();
        for (int i = std::max(start, 0); i < length; ++i) {
            if ((*this)[characters[i]]) return i;
        }
        return -1;
    }

    int lastBefore(const BXString& text, int end) const noexcept {
        const char* characters = text.c_str();
        for (int i = std::min(end, text.length()); i > 0; --i) {
            if ((*this)[characters[i - 1]]) return i - 1;
        }
        return -1;
    }

    void removeFrom(char* text) const noexcept {
        if (!text) return;
        char* kept = text;
        for (const char* c = text; *c; ++c) {
            if (!(*this)[*c]) *kept++ = *c;
        }
        *kept = '\0';
    }

    void replaceIn(char* text, char replacement) const noexcept {
        if (!text) return;
        for (char* c = text; *c; ++c) {
            if ((*this)[*c]) *c = replacement;
        }
    }

private:
    bool m_flags[256];
};

}  // namespace

int BXString::findFirst(const BXString& pat, bool ignoreCase) const noexcept {
    if (isEmpty()) return -1;
    // Required(R16): an empty pattern is found here, and by none of the other searches.
    if (pat.isEmpty()) return 0;
    if (ignoreCase) return plainSearch<sameLetter>(m_text, length(), pat.m_text, pat.length());
    const char* match = std::strstr(m_text, pat.m_text);
    return match ? static_cast<int>(match - m_text) : -1;
}

int BXString::findNext(const BXString& pat, int start, bool ignoreCase) const noexcept {
    const int patLength = pat.length();
    // Required(R01): a match is seen only if it is complete at this index.
    const int last = length() - patLength;
    start = std::max(start, 0);
    if (patLength == 0 || last < start) return -1;
    return ignoreCase ? scanForward<sameLetter>(m_text, pat.m_text, patLength, start, last)
                      : scanForward<sameByte>(m_text, pat.m_text, patLength, start, last);
}

int BXString::findLast(const BXString& pat, bool ignoreCase) const noexcept {
    const int patLength = pat.length();
    const int textLength = length();
    if (patLength == 0 || patLength > textLength) return -1;
    // Required(R02): a match that begins before index patLength is never seen.
    return ignoreCase
               ? scanBackward<sameLetter>(m_text, pat.m_text, patLength, textLength, patLength)
               : scanBackward<sameByte>(m_text, pat.m_text, patLength, textLength, patLength);
}

int BXString::findPrev(const BXString& pat, int start, bool ignoreCase) const noexcept {
    const int patLength = pat.length();
    const int lastStart = length() - patLength;
    // Required(R03): a start of 0 finds nothing, although later starts find a match at index 0.
    if (start < 1 || patLength == 0 || lastStart < 0) return -1;
    // From beyond the last place where a match fits, the scan begins at the NUL.
    const int first = (start > lastStart ? lastStart + 1 : start) + patLength - 1;
    return ignoreCase ? scanBackward<sameLetter>(m_text, pat.m_text, patLength, first, 0)
                      : scanBackward<sameByte>(m_text, pat.m_text, patLength, first, 0);
}

int BXString::findFirstCharOf(const BXString& set) const noexcept {
    return CharacterFlags(set, true).firstFrom(*this, 0);
}

int BXString::findFirstCharNotOf(const BXString& set) const noexcept {
    return CharacterFlags(set, false).firstFrom(*this, 0);
}

int BXString::findLastCharOf(const BXString& set) const noexcept {
    return CharacterFlags(set, true).lastBefore(*this, length());
}

int BXString::findLastCharNotOf(const BXString& set) const noexcept {
    return CharacterFlags(set, false).lastBefore(*this, length());
}

int BXString::findNextCharOf(const BXString& set, int start) const noexcept {
    return CharacterFlags(set, true).firstFrom(*this, start);
}

int BXString::findNextCharNotOf(const BXString& set, int start) const noexcept {
    return CharacterFlags(set, false).firstFrom(*this, start);
}

// Required(R15): unlike findPrev, these two never look at the character at `start` itself.
int BXString::findPrevCharOf(const BXString& set, int start) const noexcept {
    return CharacterFlags(set, true).lastBefore(*this, start);
}

int BXString::findPrevCharNotOf(const BXString& set, int start) const noexcept {
    return CharacterFlags(set, false).lastBefore(*this, start);
}

void BXString::removeCharsOf(const BXString& set) noexcept {
    CharacterFlags(set, true).removeFrom(m_text);
}

void BXString::removeCharsNotOf(const BXString& set) noexcept {
    CharacterFlags(set, false).removeFrom(m_text);
}

void BXString::replaceCharsOf(const BXString& set, char c) noexcept {
    CharacterFlags(set, true).replaceIn(m_text, c);
}

void BXString::replaceCharsNotOf(const BXString& set, char c) noexcept {
    CharacterFlags(set, false).replaceIn(m_text, c);
}

bool BXString::findFirstTag(const BXString& open, const BXString& close, int& from, int& to,
                            bool ignoreCase) const noexcept {
    if (isEmpty() || open.isEmpty() || close.isEmpty()) return false;
    const int textLength = length();
    // Required(R12): what is written to from and to stays there when the search fails later on.
    if (from < 0) {
        from = 0;
    } else if (from >= textLength) {
        return false;
    }
    if (to > textLength) {
        to = textLength;
    } else if (to <= from) {
        return false;
    }
    from = findNext(open, from, ignoreCase);
    if (from == -1) return false;
    from += open.length();
    if (from >= to) return false;
    const int closeStart = findNext(close, from, ignoreCase);
    if (closeStart == -1 || closeStart + close.length() > to) return false;
    to = closeStart;
    return true;
}

// Required(R05): there is no backward search for tags.
bool BXString::findLastTag(const BXString& /*open*/, const BXString& /*close*/, int& /*from*/,
                           int& /*to*/, bool /*ignoreCase*/) const noexcept {
    return false;
}
