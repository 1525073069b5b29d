#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/vek/odd_quotes.h"

// A descriptor line by line, as the bridge's own parser takes it, with what that one passes over.

struct DescriptorKey {
    enum class Kind { Text, Command, Version, Switch };
    std::string name;
    Kind kind;
    unsigned int bit;  // of a switch, as in BXVekApp
};

const std::vector<DescriptorKey>& descriptorKeys();

struct DescriptorLine {
    int number = 0;
    std::string word;                    // what stands where a key should; empty in a comment
    const DescriptorKey* key = nullptr;  // the one that takes the line
    std::vector<std::string> nearKeys;   // where none does
    bool runsOn = false;                 // more letters follow the key
    bool hasValue = false;               // false: separators alone, and the line does nothing
    std::string value;                   // without enclosing quotes
    std::string rawValue;
    std::string secondKey;                  // one that stands behind the value
    OddQuotes oddQuotes = OddQuotes::None;  // of the value; of the key where none takes the line

    // Quotes are counted as they are written and as they are read: of a value that begins with one
    // and does not end with one, only the first is taken off.
    bool hasUnpairedQuote() const;
    // Whether the value is not the one that is meant.
    bool isFaulty() const;
};

struct Descriptor {
    struct Value {
        std::string text;
        std::string raw;
        int line;
        bool isFaulty;
    };

    std::vector<DescriptorLine> lines;
    std::map<std::string, Value> values;  // by key; of a key given twice the last one
    unsigned int switches = 0;

    // Empty where there is none.
    std::string text(const std::string& key) const;
    int lineOf(const std::string& key) const;  // 0 where there is none
    // Whether a line has this key, with a value or without, or one that it is probably meant to be.
    bool means(const std::string& key) const;
    // Whether every line that is, or is meant to be, a switch says clearly what it wants.
    bool hasClearSwitches() const;
};

// Whether the value of a switch says that it is on, if in words or quotes that the bridge does not
// know; all that it does not know is on.
bool isPlainlyOn(const std::string& value);

Descriptor readDescriptor(const std::string& text);
