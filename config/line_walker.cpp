#include "config/line_walker.h"

namespace {

const char* find(const char* begin, const char* end, char c) {
    if (begin == end) return end;
    const void* const found = std::memchr(begin, c, static_cast<std::size_t>(end - begin));
    return found ? static_cast<const char*>(found) : end;
}

bool isBreak(char c) {
    return c == '\n' || c == '\r';
}

}  // namespace

BXLineWalker::BXLineWalker(const char* begin, const char* end)
    : m_position(begin),
      m_lineFeed(find(begin, end, '\n')),
      m_carriageReturn(find(begin, end, '\r')),
      m_end(end) {}

bool BXLineWalker::next(const char*& lineBegin, const char*& lineEnd) {
    if (m_position == m_end) return false;
    lineBegin = m_position;
    lineEnd = m_position = afterNextBreak(m_position);
    return true;
}

const char* BXLineWalker::afterNextBreak(const char* position) {
    if (m_lineFeed < position) m_lineFeed = find(position, m_end, '\n');
    if (m_carriageReturn < position) m_carriageReturn = find(position, m_end, '\r');
    const char* next = m_lineFeed < m_carriageReturn ? m_lineFeed : m_carriageReturn;
    while (next != m_end && isBreak(*next)) ++next;
    return next;
}

bool trimLine(const char*& begin, const char*& end) {
    while (begin < end && (isBlank(end[-1]) || isBreak(end[-1]))) --end;
    while (begin < end && isBlank(*begin)) ++begin;
    return begin < end;
}
