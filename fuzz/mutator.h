#pragma once

#include <random>
#include <string>
#include <vector>

#include "fuzz/make_input.h"

// Damages inputs: bytes, numbers and words changed, left out, repeated, put in, and taken over from
// other inputs.
class Mutator {
public:
    // `words` may be put in anywhere; `others` is where pieces are taken over from. Neither is
    // empty, and both outlive this object.
    Mutator(const std::vector<Input>& words, const std::vector<Input>& others)
        : m_words(words), m_others(others) {}

    void damage(Input& input, std::mt19937& random) const;

private:
    const std::vector<Input>& m_words;
    const std::vector<Input>& m_others;
};

// Reads a dictionary as libFuzzer takes it: a word in double quotes a line, with a name and '='
// before it or not, \\, \" and \xHH in it; lines that begin with # are comments. False for a line
// of another kind, and where there is no word.
bool readDictionary(const std::string& text, std::vector<Input>& words);
