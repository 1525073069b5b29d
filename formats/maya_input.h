#pragma once

#include <cstdint>
#include <memory>

#include "os/bx_file.h"

// The text of a Maya scene, read a piece at a time. Between `at` and `end` lies what has been read
// and not been used; *end is a NUL of the reader's own. A scan moves `at` forward and calls more()
// where it comes near the end.
class MayaInput {
public:
    // What a scan may look at beyond `at` after a call of more(), where the file goes on as long.
    // Numbers, words and forms that are longer are taken for damage. As much memory lies in front
    // of the text, so that end - kLookAhead is a pointer like any other.
    static constexpr int kLookAhead = 4096;

    // Reads `file`, which stays the caller's, from its beginning.
    explicit MayaInput(const BXFile& file);

    // Reads on if less than kLookAhead is left. False where nothing is left.
    bool more() {
        if (end - at < kLookAhead && !m_atEnd) readOn();
        return at < end;
    }
    // Whether a word that ends at `wordEnd` may be cut off by the end of what has been read.
    bool isCutOff(const char* wordEnd) const { return wordEnd == end && !m_atEnd; }

    // The place of `at` in the file.
    std::int64_t offset() const { return m_endOffset - (end - at); }
    std::int64_t bytesLeft() const { return m_size - offset(); }
    // Whether a read failed: what came then looks like the end of the file.
    bool failed() const { return m_failed; }

    // Blanks and tabs, and in the second case line ends too.
    void skipBlanks();
    void skipSeparators();
    // To behind the next line feed, or to the end.
    void skipLine();
    // Moves behind `text`, in any letter case, if it comes next.
    bool take(const char* text);
    // Whether `text`, in any letter case, comes next.
    bool comes(const char* text) const;

    const char* at;
    const char* end;

private:
    void readOn();

    static constexpr int kPiece = 256 << 10;

    const BXFile& m_file;
    std::unique_ptr<char[]> m_buffer;
    std::int64_t m_size;
    std::int64_t m_endOffset = 0;
    bool m_atEnd = false;
    bool m_failed = false;
};

inline bool isMayaBlank(char c) {
    return c == ' ' || c == '\t';
}
inline bool isMayaSeparator(char c) {
    // Blank, tab, LF and CR: bits 32, 9, 10 and 13.
    return static_cast<unsigned char>(c) <= ' ' &&
           (std::uint64_t{0x100002600} >> static_cast<unsigned char>(c) & 1u);
}
