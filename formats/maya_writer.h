#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "formats/number_formatter.h"
#include "formats/vectors.h"
#include "os/bx_file.h"

// Text on its way into a file, written over what is there from an offset on, a piece at a time.
// Without a file it is only counted.
class MayaWriter {
public:
    MayaWriter(BXFile* file, std::int64_t offset);

    void put(const char* text, std::size_t length);
    void put(const char* text) { put(text, std::strlen(text)); }
    // Counts text that is not put. For a writer without a file.
    void pass(std::size_t length) { m_offset += static_cast<std::int64_t>(length); }
    // A blank and the number.
    void putInt(int value);
    // A blank before each of the two, with five places.
    void putUV(const BXVector2f& uv);

    // The statement that says how many entries follow: 'head', the count, 'tail'.
    void putCount(const char* head, std::int64_t count, const char* tail);
    // The statements that give entries: 'head', the range, 'tail', what `putEntry(index)` puts for
    // each entry, and ";\n"; so many entries in each statement, which is less in the last one.
    template <class PutEntry>
    void putRanges(const char* head, const char* tail, std::int64_t inRange, std::int64_t total,
                   PutEntry putEntry);

    // Writes what is left. False when any write failed.
    bool finish();
    // Where the text put so far ends in the file.
    std::int64_t offset() const { return m_offset + (m_to - m_buffer.get()); }

private:
    static constexpr std::size_t kPiece = std::size_t{256} << 10;
    // Beyond the piece, so that a number need not ask for room.
    static constexpr std::size_t kMargin = 256;

    void makeRoom() {
        if (m_to >= m_pieceEnd) flush();
    }
    void flush();

    BXFile* m_file;
    std::int64_t m_offset;  // of the buffer's first byte
    bool m_failed = false;
    std::unique_ptr<char[]> m_buffer;
    char* m_to;
    char* m_pieceEnd;
};

inline void MayaWriter::putInt(int value) {
    makeRoom();
    *m_to++ = ' ';
    m_to = formatInt(m_to, value);
}

inline void MayaWriter::putUV(const BXVector2f& uv) {
    makeRoom();
    *m_to++ = ' ';
    m_to = formatFixed5(m_to, uv.x);
    *m_to++ = ' ';
    m_to = formatFixed5(m_to, uv.y);
}

template <class PutEntry>
void MayaWriter::putRanges(const char* head, const char* tail, std::int64_t inRange,
                           std::int64_t total, PutEntry putEntry) {
    for (std::int64_t first = 0; first < total; first += inRange) {
        const std::int64_t end = std::min(first + inRange, total);
        put(head);
        m_to = formatInt(m_to, static_cast<int>(first));
        *m_to++ = ':';
        m_to = formatInt(m_to, static_cast<int>(end - 1));
        put(tail);
        for (std::int64_t entry = first; entry < end; ++entry) putEntry(entry);
        put(";\n", 2);
    }
}
