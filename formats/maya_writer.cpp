#include "formats/maya_writer.h"

MayaWriter::MayaWriter(BXFile* file, std::int64_t offset)
    : m_file(file),
      m_offset(offset),
      m_buffer(new char[kPiece + kMargin]),
      m_to(m_buffer.get()),
      m_pieceEnd(m_to + kPiece) {}

void MayaWriter::flush() {
    char* const buffer = m_buffer.get();
    const auto count = static_cast<std::size_t>(m_to - buffer);
    if (m_file && !m_failed) m_failed = !m_file->writeAt(m_offset, buffer, count);
    m_offset += static_cast<std::int64_t>(count);
    m_to = buffer;
}

bool MayaWriter::finish() {
    flush();
    return !m_failed;
}

// Leaves room for two numbers behind the text.
void MayaWriter::put(const char* text, std::size_t length) {
    while (length > 0) {
        makeRoom();
        const std::size_t part = std::min(length, static_cast<std::size_t>(m_pieceEnd - m_to));
        std::memcpy(m_to, text, part);
        m_to += part;
        text += part;
        length -= part;
    }
    makeRoom();
}

void MayaWriter::putCount(const char* head, std::int64_t count, const char* tail) {
    put(head);
    m_to = formatInt(m_to, static_cast<int>(count));
    put(tail);
}
