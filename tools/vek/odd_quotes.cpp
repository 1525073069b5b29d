#include "tools/vek/odd_quotes.h"

#include <algorithm>
#include <array>

namespace {

// In UTF-8: a no-break space, a narrow one, a wide one.
constexpr std::array<const char*, 3> kBlanks = {"\xC2\xA0", "\xE2\x80\xAF", "\xE3\x80\x80"};
constexpr std::array<const char*, 6> kDoubles = {"“", "”", "„", "‟", "«", "»"};
constexpr std::array<const char*, 4> kSingles = {"'", "‘", "’", "‚"};
constexpr std::array<const char*, 5> kPlain = {" ", "\t", "\n", "\r", "\""};

bool begins(const std::string& text, const std::string& sign) {
    return text.compare(0, sign.size(), sign) == 0;
}

bool ends(const std::string& text, const std::string& sign) {
    return text.size() >= sign.size() &&
           text.compare(text.size() - sign.size(), sign.size(), sign) == 0;
}

// The sign at the beginning or the end; empty where there is none of these.
template <class Signs>
std::string signAt(bool (*isAt)(const std::string&, const std::string&), const std::string& text,
                   const Signs& signs) {
    for (const char* sign : signs) {
        if (isAt(text, sign)) return sign;
    }
    return "";
}

template <class Signs>
bool hasOneOf(const std::string& text, const Signs& signs) {
    return std::any_of(signs.begin(), signs.end(),
                       [&](const char* sign) { return text.find(sign) != text.npos; });
}

template <class Signs>
bool takeOff(std::string& text, const Signs& signs) {
    if (const std::string first = signAt(begins, text, signs); !first.empty()) {
        text.erase(0, first.size());
        return true;
    }
    const std::string last = signAt(ends, text, signs);
    text.erase(text.size() - last.size());
    return !last.empty();
}

}  // namespace

bool hasOddBlank(const std::string& text) {
    return hasOneOf(text, kBlanks);
}

OddQuotes oddQuotesOf(const std::string& value, bool forPrograms) {
    const bool isBlankAround =
        !signAt(begins, value, kBlanks).empty() || !signAt(ends, value, kBlanks).empty();
    if (isBlankAround || (forPrograms && hasOddBlank(value))) return OddQuotes::Blank;
    const bool beginsOdd = !signAt(begins, value, kDoubles).empty();
    const bool endsOdd = begins(value, "\"") && !signAt(ends, value, kDoubles).empty();
    const bool isInSingles = value.size() > 1 && !signAt(begins, value, kSingles).empty() &&
                             !signAt(ends, value, kSingles).empty();
    const bool isAnywhere = forPrograms && hasOneOf(value, kDoubles);
    return beginsOdd || endsOdd || isInSingles || isAnywhere ? OddQuotes::Quotes : OddQuotes::None;
}

std::string withoutAnyQuotes(const std::string& text) {
    std::string rest = text;
    while (takeOff(rest, kBlanks) || takeOff(rest, kDoubles) || takeOff(rest, kSingles) ||
           takeOff(rest, kPlain)) {
    }
    return rest;
}
