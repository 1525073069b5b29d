// What BXString does to its own text, to file names and to paths.

#include <algorithm>

#include "foundation/bx_string.h"

namespace {

bool isSeparator(char c) {
    return c == '/' || c == '\\';
}

// What follows the last separator, up to its last '.' or else to the end of the text.
struct Stem {
    int begin;
    int end;
};

Stem stemOf(const char* text, int length) {
    int begin = length;
    int end = length;
    for (; begin > 0 && !isSeparator(text[begin - 1]); --begin) {
        if (end == length && text[begin - 1] == '.') end = begin - 1;
    }
    return {begin, end};
}

}  // namespace

BXString& BXString::toUpper() noexcept {
    for (char* c = m_text; c && *c; ++c) {
        *c = static_cast<char>(s_toUpper[static_cast<unsigned char>(*c)]);
    }
    return *this;
}

// Required(R08): the head goes and the tail stays, the reverse of what the name says.
void BXString::cutTo(int n) {
    if (n <= 0) return;
    const int textLength = length();
    create(m_text + std::min(n, textLength), m_text + textLength);
}

BXString BXString::subString(int start, int end) const {
    const int textLength = length();
    if (end == -1 || end > textLength) end = textLength;
    start = std::max(start, 0);
    BXString part;
    if (start < end) part.create(m_text + start, m_text + end);
    return part;
}

BXString BXString::unquoted() const {
    const int textLength = length();
    if (textLength == 0 || m_text[0] != '"' || m_text[textLength - 1] != '"') return *this;
    // Of a lone quote, which is both ends at once, nothing is left.
    return subString(1, textLength - 1);
}

BXString BXString::getFileName() const {
    const Stem stem = stemOf(c_str(), length());
    BXString name;
    name.create(c_str() + stem.begin, c_str() + stem.end);
    return name;
}

int BXString::convertToInt() const noexcept {
    const char* c = c_str();
    const bool negative = *c == '-';
    if (negative || *c == '+') ++c;
    unsigned int value = 0;
    for (; *c >= '0' && *c <= '9'; ++c) value = value * 10 + static_cast<unsigned int>(*c - '0');
    return static_cast<int>(negative ? 0U - value : value);
}

void BXString::makePathValid() noexcept {
    if (!m_text) return;
    std::size_t prefix = 0;
    if (cmp(m_text, "!:", 2) == 0) {
        prefix = 2;
    } else if (cmpNoCase(m_text, "file:", 5) == 0) {
        prefix = 5;
    }
    std::size_t left = std::strlen(m_text) - prefix;
    if (left > 0 && isSeparator(m_text[prefix + left - 1])) --left;
    std::memmove(m_text, m_text + prefix, left);
    m_text[left] = '\0';
}

// Required(R17): a relative path loses what stands before its first '/'.
const char* BXString::getValidFilePath() const noexcept {
    if (!m_text) return nullptr;
    const char* path = m_text;
    if (const char* colon = std::strchr(path, ':')) path = colon + 1;
    if (const char* slash = std::strchr(path, '/')) path = slash;
    return path;
}

void BXString::fileNameAdvance() {
    const int textLength = length();
    const int stemEnd = stemOf(c_str(), textLength).end;
    int nines = stemEnd;
    while (nines > 0 && m_text[nines - 1] == '9') --nines;
    if (stemEnd > nines) {
        std::memset(m_text + nines, '0', static_cast<std::size_t>(stemEnd - nines));
    }
    if (nines > 0 && m_text[nines - 1] >= '0' && m_text[nines - 1] <= '8') {
        ++m_text[nines - 1];
        return;
    }
    // No digit to count up: a new one goes in front of the zeros.
    BXString advanced;
    advanced.create(textLength + 1, '1');
    std::memcpy(advanced.m_text, c_str(), static_cast<std::size_t>(nines));
    std::memcpy(advanced.m_text + nines + 1, c_str() + nines,
                static_cast<std::size_t>(textLength - nines));
    swap(advanced);
}
