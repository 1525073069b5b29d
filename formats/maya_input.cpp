#include "formats/maya_input.h"

#include <cstring>

#include "foundation/bx_string.h"

MayaInput::MayaInput(const BXFile& file)
    : m_file(file), m_buffer(new char[kLookAhead + kLookAhead + kPiece + 1]), m_size(file.size()) {
    at = end = m_buffer.get() + kLookAhead;
    m_buffer[kLookAhead] = '\0';
    more();
}

void MayaInput::readOn() {
    const auto left = static_cast<std::size_t>(end - at);
    char* const buffer = m_buffer.get() + kLookAhead;
    std::memmove(buffer, at, left);
    const std::size_t came = m_file.readAt(m_endOffset, buffer + left, kPiece);
    m_endOffset += static_cast<std::int64_t>(came);
    m_atEnd = came < static_cast<std::size_t>(kPiece);
    m_failed = m_atEnd && m_endOffset < m_size;
    at = buffer;
    end = buffer + left + came;
    buffer[left + came] = '\0';
}

void MayaInput::skipBlanks() {
    do {
        while (isMayaBlank(*at)) ++at;
    } while (at == end && more());
}

void MayaInput::skipSeparators() {
    do {
        while (isMayaSeparator(*at)) ++at;
    } while (at == end && more());
}

void MayaInput::skipLine() {
    while (more()) {
        const auto left = static_cast<std::size_t>(end - at);
        if (const void* const lineFeed = std::memchr(at, '\n', left)) {
            at = static_cast<const char*>(lineFeed) + 1;
            return;
        }
        at = end;
    }
}

bool MayaInput::comes(const char* text) const {
    const char* p = at;
    for (; *text; ++text, ++p) {
        // The NUL behind the text differs from every character of a form.
        if (BXString::s_toUpper[static_cast<unsigned char>(*p)] !=
            BXString::s_toUpper[static_cast<unsigned char>(*text)]) {
            return false;
        }
    }
    return true;
}

bool MayaInput::take(const char* text) {
    if (!comes(text)) return false;
    at += std::strlen(text);
    return true;
}
