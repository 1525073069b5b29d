#include "tools/vek/near_words.h"

#include <algorithm>

#include "foundation/bx_string.h"

namespace {

constexpr std::size_t kMostWords = 3;
constexpr std::size_t kLongestWord = 100;

std::vector<std::string> partOf(const std::string& word, const std::vector<std::string>& words) {
    std::vector<std::string> found;
    if (word.size() < 3) return found;
    for (const std::string& candidate : words) {
        if (inUpperCase(candidate).find(inUpperCase(word)) != std::string::npos) {
            found.push_back(candidate);
        }
    }
    return found.size() == 1 ? found : std::vector<std::string>();
}

}  // namespace

std::string inUpperCase(const std::string& text) {
    std::string upper = text;
    for (char& c : upper) {
        c = static_cast<char>(BXString::s_toUpper[static_cast<unsigned char>(c)]);
    }
    return upper;
}

std::size_t wordDistance(const std::string& first, const std::string& second) {
    const std::string a = inUpperCase(first);
    const std::string b = inUpperCase(second);
    const std::size_t width = b.size() + 1;
    std::vector<std::size_t> before(width);  // the rows for one letter less, and for two
    std::vector<std::size_t> row(width);
    std::vector<std::size_t> next(width);
    for (std::size_t j = 0; j < width; ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        next[0] = i;
        for (std::size_t j = 1; j < width; ++j) {
            const std::size_t changed = row[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            next[j] = std::min({row[j] + 1, next[j - 1] + 1, changed});
            const bool isExchange = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isExchange) next[j] = std::min(next[j], before[j - 2] + 1);
        }
        before.swap(row);
        row.swap(next);
    }
    return row[b.size()];
}

std::vector<std::string> nearWords(const std::string& word, const std::vector<std::string>& words) {
    if (word.empty() || word.size() > kLongestWord) return {};
    std::size_t least = std::max<std::size_t>(1, word.size() / 3);
    std::vector<std::string> nearest;
    for (const std::string& candidate : words) {
        if (word.size() > candidate.size() + least || candidate.size() > word.size() + least)
            continue;
        const std::size_t distance = wordDistance(word, candidate);
        if (distance > least || distance >= candidate.size()) continue;
        if (distance < least) nearest.clear();
        least = distance;
        if (nearest.size() < kMostWords) nearest.push_back(candidate);
    }
    return nearest.empty() ? partOf(word, words) : nearest;
}

std::string orList(const std::vector<std::string>& words) {
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) list += i + 1 == words.size() ? " or " : ", ";
        list += words[i];
    }
    return list;
}
