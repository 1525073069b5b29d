#include "fuzz/mutator.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <sstream>

namespace {

// Where the damage is done, and by how much.
struct Place {
    Place(Input& bytes, std::mt19937& numbers)
        : input(bytes), random(numbers), at(below(bytes.size() + 1)) {}

    std::size_t below(std::size_t limit) const { return limit == 0 ? 0 : random() % limit; }
    const Input& oneOf(const std::vector<Input>& inputs) const {
        return inputs[below(inputs.size())];
    }
    Input::iterator here() const { return input.begin() + static_cast<std::ptrdiff_t>(at); }
    // At most `count` bytes on, as far as there are any.
    Input::iterator behind(std::size_t count) const {
        return here() + static_cast<std::ptrdiff_t>(std::min(count, input.size() - at));
    }
    void insert(const Input& bytes) const { input.insert(here(), bytes.begin(), bytes.end()); }
    void overwrite(const Input& bytes) const {
        std::copy_n(bytes.begin(), std::distance(here(), behind(bytes.size())), here());
    }
    Input piece(const Input& of) const {
        const std::size_t from = below(of.size());
        const std::size_t size = std::min(of.size() - from, 1 + below(64));
        const auto begin = of.begin() + static_cast<std::ptrdiff_t>(from);
        return Input(begin, begin + static_cast<std::ptrdiff_t>(size));
    }

    Input& input;
    std::mt19937& random;
    const std::size_t at;
};

// A number of 1, 2, 4 or 8 bytes in either byte order, near an end of its range or small.
Input number(const Place& place) {
    static const std::uint64_t ends[] = {
        0, 1, 4, 16, 0x7F, 0xFF, 0x100, 0x7FFFFFFF, 0x80000000u, 0xFFFFFFFFu, ~0ull, 1ull << 63};
    const std::uint64_t value = ends[place.below(std::size(ends))] + place.below(3) - 1;
    Input bytes;
    const std::size_t size = std::size_t{1} << place.below(4);
    for (std::size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
    if (place.below(2) == 0) std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

// A digit for another one: counts, ranges and indices that do not fit.
void changeDigit(const Place& place) {
    const auto isDigit = [](std::uint8_t byte) { return byte >= '0' && byte <= '9'; };
    const auto digit = std::find_if(place.here(), place.input.end(), isDigit);
    if (digit != place.input.end()) *digit = static_cast<std::uint8_t>('0' + place.below(10));
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

// The word whose opening quote stands at `at`.
bool readWord(const std::string& line, std::size_t at, Input& word) {
    while (++at < line.size() && line[at] != '"') {
        char c = line[at];
        if (c == '\\') {
            if (++at == line.size()) return false;
            c = line[at];
            if (c == 'x') {
                if (at + 2 >= line.size()) return false;
                const int high = hexDigit(line[at + 1]), low = hexDigit(line[at + 2]);
                if (high < 0 || low < 0) return false;
                c = static_cast<char>(16 * high + low);
                at += 2;
            } else if (c != '\\' && c != '"') {
                return false;
            }
        }
        word.push_back(static_cast<std::uint8_t>(c));
    }
    return at + 1 == line.size() && !word.empty();
}

}  // namespace

void Mutator::damage(Input& input, std::mt19937& random) const {
    const Place place(input, random);
    switch (place.below(12)) {
        case 0:
            if (place.at < input.size()) input[place.at] = static_cast<std::uint8_t>(random());
            return;
        case 1:
            if (place.at < input.size())
                input[place.at] ^= static_cast<std::uint8_t>(1u << place.below(8));
            return;
        case 2:
            input.erase(place.here(), place.behind(1 + place.below(20)));
            return;
        case 3:
            return place.insert(place.oneOf(m_words));
        case 4:
            return place.overwrite(place.oneOf(m_words));
        case 5:
            return place.insert(place.piece(input));
        case 6:
            return place.insert(place.piece(place.oneOf(m_others)));
        case 7:
            return place.overwrite(place.piece(place.oneOf(m_others)));
        case 8:
            return place.overwrite(number(place));
        case 9:
            return changeDigit(place);
        case 10:
            return place.insert(Input(1 + place.below(3), static_cast<std::uint8_t>(random())));
        default:
            if (place.below(4) == 0) input.resize(place.at);
            return;
    }
}

bool readDictionary(const std::string& text, std::vector<Input>& words) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.front() == '#') continue;
        const std::size_t quote = line.find('"');
        Input word;
        if (quote == line.npos || !readWord(line, quote, word)) return false;
        words.push_back(word);
    }
    return !words.empty();
}
