#pragma once

#include <string>
#include <vector>

// How many letters have to be put in, left out, changed, or exchanged with their neighbour to make
// one word of the other, in any letter case.
std::size_t wordDistance(const std::string& a, const std::string& b);

// Those of `words` that are nearest to `word` and near enough to be meant: at most one letter in
// three is wrong, or the word is a part of one of them alone. At most three.
std::vector<std::string> nearWords(const std::string& word, const std::vector<std::string>& words);

// "A", "A or B", "A, B or C"
std::string orList(const std::vector<std::string>& words);

std::string inUpperCase(const std::string& text);
