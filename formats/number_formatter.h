#pragma once

// Numbers as text, without a NUL, whatever locale the process has set. Each writes to `to` and
// returns the end of what it wrote.

constexpr int kMostIntChars = 11;
constexpr int kMostFixed5Chars = 46;

// As printf's "%d"; up to kMostIntChars characters.
char* formatInt(char* to, int value) noexcept;

// As printf's "%.5f"; up to kMostFixed5Chars characters.
char* formatFixed5(char* to, float value) noexcept;
