#pragma once

#include <cstddef>
#include <cstring>
#include <iosfwd>

// The library's text type: one owned buffer of 8-bit text with its NUL, exactly length + 1 bytes,
// or null. A null buffer and a buffer that holds only the NUL are both the empty string and behave
// alike everywhere. Text is bytes; letter case is folded for ASCII letters only.
//
// Indexes and lengths are ints. Every search returns the zero-based index of what it found, or -1.
// An index or length outside the text is taken as the nearest one inside, where nothing else is
// said. Any argument may be this string itself, or point into its text. Nothing throws, except that
// an allocation that fails, or a text beyond 2^31 - 2 bytes, passes the allocator's exception on.
class BXString {
public:
    BXString() noexcept = default;
    BXString(const char* text);  // a copy; null gives the null string
    BXString(const BXString& other);
    BXString(BXString&& other) noexcept;
    BXString& operator=(const BXString& other);
    BXString& operator=(BXString&& other) noexcept;
    ~BXString();

    // `count` copies of `c`; null when count <= 0.
    void create(int count, char c);
    // The bytes [begin, end); null when begin is null or end is not after it.
    void create(const char* begin, const char* end);
    static const BXString& emptyString();

    // The text; "" for the null string, so it can go to any C function. Owned by this string.
    const char* c_str() const noexcept { return m_text ? m_text : ""; }
    // The buffer itself, null for the null string; writable for length() bytes.
    char* data() noexcept { return m_text; }
    const char* data() const noexcept { return m_text; }
    int length() const noexcept { return m_text ? static_cast<int>(std::strlen(m_text)) : 0; }
    bool isEmpty() const noexcept { return !m_text || !*m_text; }
    bool isNull() const noexcept { return !m_text; }
    void swap(BXString& other) noexcept;
    std::size_t getMemoryUsed() const noexcept;     // bytes of the object itself
    std::size_t getDynMemoryUsed() const noexcept;  // length + 1, or 0 for the null string

    // When one side is empty, a copy of the other one; when both are, of the right one.
    BXString operator+(const BXString& other) const;
    BXString& operator+=(const BXString& other);
    bool operator==(const BXString& other) const noexcept;
    bool operator!=(const BXString& other) const noexcept { return !(*this == other); }
    bool operator<(const BXString& other) const noexcept;  // bytewise, as strcmp orders
    // 0 <= index <= length(), the NUL at the end included; not checked.
    char operator[](int index) const noexcept { return c_str()[index]; }

    // -1, 0 or 1 over at most n characters, n < 1 meaning all. cmp orders characters as signed
    // values, cmpNoCase maps them to upper case and orders them as unsigned ones. A null text is
    // equal to an empty one and before any other.
    static int cmp(const char* a, const char* b, int n = 0) noexcept;
    static int cmpNoCase(const char* a, const char* b, int n = 0) noexcept;
    bool equalsNoCase(const BXString& other) const noexcept;

    bool startsWith(const BXString& s, bool ignoreCase = false) const noexcept;
    bool endsWith(const BXString& s, bool ignoreCase = false) const noexcept;
    // Whether this text begins with `folder`, ignoring case, with '\' and '/' the same.
    bool isInPath(const BXString& folder) const noexcept;

    // findFirst is a plain search; an empty pattern is at 0 of any text that is not empty. The
    // other three find no empty pattern. They scan once without going back, miss matches that
    // overlap a failed partial match, and two of them do not see the far end of the text: findNext
    // finds a match only if it is complete by index length - length(pat), findLast only if it
    // begins at or after length(pat). findPrev finds the last match that begins at or before
    // `start` >= 1.
    int findFirst(const BXString& pat, bool ignoreCase = false) const noexcept;
    int findNext(const BXString& pat, int start, bool ignoreCase = false) const noexcept;
    int findLast(const BXString& pat, bool ignoreCase = false) const noexcept;
    int findPrev(const BXString& pat, int start, bool ignoreCase = false) const noexcept;

    // Searches for a character that is, or is not, in `set`. Next starts at `start` itself, Prev
    // at the character before it.
    int findFirstCharOf(const BXString& set) const noexcept;
    int findFirstCharNotOf(const BXString& set) const noexcept;
    int findLastCharOf(const BXString& set) const noexcept;
    int findLastCharNotOf(const BXString& set) const noexcept;
    int findNextCharOf(const BXString& set, int start) const noexcept;
    int findNextCharNotOf(const BXString& set, int start) const noexcept;
    int findPrevCharOf(const BXString& set, int start) const noexcept;
    int findPrevCharNotOf(const BXString& set, int start) const noexcept;
    // In place; the buffer stays the same one.
    void removeCharsOf(const BXString& set) noexcept;
    void removeCharsNotOf(const BXString& set) noexcept;
    void replaceCharsOf(const BXString& set, char c) noexcept;
    void replaceCharsNotOf(const BXString& set, char c) noexcept;

    BXString& toUpper() noexcept;
    // Drops the first n characters, despite the name; n <= 0 does nothing.
    void cutTo(int n);
    // [start, end); end = -1 or beyond the length means to the end.
    BXString subString(int start, int end = -1) const;
    // Without one pair of enclosing double quotes; a lone quote counts as a pair.
    BXString unquoted() const;
    // The file name without folders and without what follows its last '.'.
    BXString getFileName() const;
    // Optional sign and decimal digits up to the first other character; 0 without any; wraps.
    int convertToInt() const noexcept;

    // Drops a leading "!:" or "file:" and one trailing separator, in place.
    void makePathValid() noexcept;
    // The part of this text that the system takes for a path: what follows the first ':', if there
    // is one, from its first '/' on, if there is one. Points into this string, or null for the null
    // string.
    const char* getValidFilePath() const noexcept;
    // Counts the file name up: "name.ext", "name1.ext", ... "name9.ext", "name10.ext", ...
    void fileNameAdvance();

    // printf formatting, cut at 511 characters, with numbers as in the C locale whatever locale the
    // process has set. The result is always allocated, also when it is empty.
    static BXString format(BXString fmt, ...);
    void print(BXString fmt, ...);
    static BXString int2String(int n);
    // "999", "12.3k", "1.9m": cut, never rounded.
    void printShortCount(int n);
    // Leaves an empty text, whatever the arguments.
    void printTime(unsigned int time, bool flag);

    // Finds the text [from, to) between an opening and a closing tag inside [from, to) as given.
    // from and to keep whatever the search wrote into them, also when the result is false.
    bool findFirstTag(const BXString& open, const BXString& close, int& from, int& to,
                      bool ignoreCase = false) const noexcept;
    // Always false; from and to stay as they are.
    bool findLastTag(const BXString& open, const BXString& close, int& from, int& to,
                     bool ignoreCase = false) const noexcept;

    // Upper case for each byte value: 'a'..'z' mapped, all others to themselves.
    static const unsigned char s_toUpper[256];

private:
    friend BXString operator+(const char* text, const BXString& other);

    static BXString s_emptyString;

    char* m_text = nullptr;
};

static_assert(sizeof(BXString) == sizeof(char*), "arrays of strings are arrays of pointers");

// As text followed by other; a null text counts as empty.
BXString operator+(const char* text, const BXString& other);
std::ostream& operator<<(std::ostream& out, const BXString& text);

// vsnprintf into the caller's buffer of `size` bytes, numbers as in the C locale. A size below 1 or
// a null buffer writes nothing.
void bxSprintf_s(char* buffer, int size, const char* fmt, ...);
// Leaves the buffer untouched.
void bxSprintf(char* buffer, char* fmt, ...);
