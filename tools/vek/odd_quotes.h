#pragma once

#include <string>

// Signs that a word processor, or a web page, puts in the place of double quotes and blanks.

bool hasOddBlank(const std::string& text);

enum class OddQuotes { None, Quotes, Blank };

// What stands around `value`, or anywhere in it where double quotes and blanks have a meaning: in
// what is `forPrograms`. An apostrophe within it is fine.
OddQuotes oddQuotesOf(const std::string& value, bool forPrograms);

// The text without quotes and blanks of any kind around it.
std::string withoutAnyQuotes(const std::string& text);
