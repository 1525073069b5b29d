#include "foundation/bx_string.h"

#include <climits>
#include <new>
#include <ostream>
#include <utility>

namespace {

constexpr std::size_t kLongestText = INT_MAX - 1;

char* newText(std::size_t length) {
    if (length > kLongestText) throw std::bad_alloc();
    char* text = new char[length + 1];
    text[length] = '\0';
    return text;
}

char* copyOf(const char* text, std::size_t length) {
    char* copy = newText(length);
    std::memcpy(copy, text, length);
    return copy;
}

char* copyOf(const char* text) {
    return text ? copyOf(text, std::strlen(text)) : nullptr;
}

// The two texts one after the other, neither of them null.
char* joined(const char* head, const char* tail) {
    const std::size_t headLength = std::strlen(head);
    const std::size_t tailLength = std::strlen(tail);
    char* text = newText(headLength + tailLength);
    std::memcpy(text, head, headLength);
    std::memcpy(text + headLength, tail, tailLength);
    return text;
}

constexpr unsigned char upperOf(int byte) {
    return static_cast<unsigned char>(byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte);
}

unsigned char folded(char c) {
    return BXString::s_toUpper[static_cast<unsigned char>(c)];
}

char withOneSeparator(char c) {
    return c == '\\' ? '/' : c;
}

// The order of two texts of which at least one is null.
int orderOfNull(const char* a, const char* b) {
    if (a) return *a ? 1 : 0;
    return b && *b ? -1 : 0;
}

}  // namespace

#define UPPER_OF_4(n) upperOf(n), upperOf((n) + 1), upperOf((n) + 2), upperOf((n) + 3)
#define UPPER_OF_16(n) UPPER_OF_4(n), UPPER_OF_4((n) + 4), UPPER_OF_4((n) + 8), UPPER_OF_4((n) + 12)
#define UPPER_OF_64(n) \
    UPPER_OF_16(n), UPPER_OF_16((n) + 16), UPPER_OF_16((n) + 32), UPPER_OF_16((n) + 48)

const unsigned char BXString::s_toUpper[256] = {UPPER_OF_64(0), UPPER_OF_64(64), UPPER_OF_64(128),
                                                UPPER_OF_64(192)};

#undef UPPER_OF_64
#undef UPPER_OF_16
#undef UPPER_OF_4

BXString BXString::s_emptyString;

BXString::BXString(const char* text) : m_text(copyOf(text)) {}

BXString::BXString(const BXString& other) : m_text(copyOf(other.m_text)) {}

BXString::BXString(BXString&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}

BXString& BXString::operator=(const BXString& other) {
    // The copy is there before the old buffer goes: `other` may be this string.
    BXString copy(other);
    swap(copy);
    return *this;
}

BXString& BXString::operator=(BXString&& other) noexcept {
    char* taken = std::exchange(other.m_text, nullptr);
    delete[] m_text;
    m_text = taken;
    return *this;
}

BXString::~BXString() {
    delete[] m_text;
    m_text = nullptr;
}

void BXString::create(int count, char c) {
    char* fresh = nullptr;
    if (count > 0) {
        fresh = newText(static_cast<std::size_t>(count));
        std::memset(fresh, c, static_cast<std::size_t>(count));
    }
    delete[] m_text;
    m_text = fresh;
}

void BXString::create(const char* begin, const char* end) {
    char* fresh = nullptr;
    if (begin && end > begin) fresh = copyOf(begin, static_cast<std::size_t>(end - begin));
    delete[] m_text;
    m_text = fresh;
}

const BXString& BXString::emptyString() {
    return s_emptyString;
}

void BXString::swap(BXString& other) noexcept {
    std::swap(m_text, other.m_text);
}

std::size_t BXString::getMemoryUsed() const noexcept {
    return sizeof(*this);
}

std::size_t BXString::getDynMemoryUsed() const noexcept {
    return m_text ? std::strlen(m_text) + 1 : 0;
}

BXString BXString::operator+(const BXString& other) const {
    if (isEmpty()) return other;
    if (other.isEmpty()) return *this;
    BXString sum;
    sum.m_text = joined(m_text, other.m_text);
    return sum;
}

BXString& BXString::operator+=(const BXString& other) {
    if (isEmpty()) return *this = other;
    if (other.isEmpty()) return *this;
    char* fresh = joined(m_text, other.m_text);
    delete[] m_text;
    m_text = fresh;
    return *this;
}

BXString operator+(const char* text, const BXString& other) {
    if (!text || !*text) return other;
    if (other.isEmpty()) return text;
    BXString sum;
    sum.m_text = joined(text, other.m_text);
    return sum;
}

bool BXString::operator==(const BXString& other) const noexcept {
    return std::strcmp(c_str(), other.c_str()) == 0;
}

bool BXString::operator<(const BXString& other) const noexcept {
    return std::strcmp(c_str(), other.c_str()) < 0;
}

// Required(R18): letters beyond ASCII come before all others here and after them in cmpNoCase.
int BXString::cmp(const char* a, const char* b, int n) noexcept {
    if (!a || !b) return orderOfNull(a, b);
    for (int left = n < 1 ? INT_MAX : n; left > 0; --left, ++a, ++b) {
        if (*a != *b) {
            return static_cast<signed char>(*a) < static_cast<signed char>(*b) ? -1 : 1;
        }
        if (!*a) return 0;
    }
    return 0;
}

int BXString::cmpNoCase(const char* a, const char* b, int n) noexcept {
    if (!a || !b) return orderOfNull(a, b);
    for (int left = n < 1 ? INT_MAX : n; left > 0; --left, ++a, ++b) {
        if (folded(*a) != folded(*b)) return folded(*a) < folded(*b) ? -1 : 1;
        if (!*a) return 0;
    }
    return 0;
}

bool BXString::equalsNoCase(const BXString& other) const noexcept {
    return cmpNoCase(c_str(), other.c_str()) == 0;
}

bool BXString::startsWith(const BXString& s, bool ignoreCase) const noexcept {
    if (s.isEmpty()) return true;
    // A shorter text differs at its NUL.
    const int count = s.length();
    return (ignoreCase ? cmpNoCase(c_str(), s.m_text, count) : cmp(c_str(), s.m_text, count)) == 0;
}

bool BXString::endsWith(const BXString& s, bool ignoreCase) const noexcept {
    if (s.isEmpty()) return true;
    const int count = s.length();
    const int start = length() - count;
    if (start < 0) return false;
    const char* tail = m_text + start;
    return (ignoreCase ? cmpNoCase(tail, s.m_text, count) : cmp(tail, s.m_text, count)) == 0;
}

bool BXString::isInPath(const BXString& folder) const noexcept {
    const char* text = c_str();
    // A shorter text differs at its NUL.
    for (const char* f = folder.c_str(); *f; ++f, ++text) {
        if (folded(withOneSeparator(*text)) != folded(withOneSeparator(*f))) return false;
    }
    return true;
}

std::ostream& operator<<(std::ostream& out, const BXString& text) {
    return out << text.c_str();
}
