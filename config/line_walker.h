#pragma once

#include <cstring>

// A space or a tab.
inline bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Walks the lines of a text in memory. A line runs up to the start of the next one, its breaks
// included: the next line begins after the next run of CR and LF. The last line runs to the end. A
// NUL is a character like any other, so that rewriting a file loses nothing behind one.
class BXLineWalker {
public:
    BXLineWalker(const char* begin, const char* end);

    // The next line [lineBegin, lineEnd), or false after the last.
    bool next(const char*& lineBegin, const char*& lineEnd);

private:
    const char* afterNextBreak(const char* position);

    const char* m_position;
    // The next of each kind of break, looked for once: a text may hold only one of them.
    const char* m_lineFeed;
    const char* m_carriageReturn;
    const char* m_end;
};

// Narrows [begin, end) by spaces, tabs, CR and LF at its end and spaces and tabs at its start;
// whether anything is left.
bool trimLine(const char*& begin, const char*& end);
