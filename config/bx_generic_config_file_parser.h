#pragma once

#include "foundation/bx_string.h"

// One registered key of a dispatching parser, in a singly linked chain.
struct BXGenericConfigFileToken {
    // Gets the rest of the line after the key, and the user data of parseFile.
    using Callback = void (*)(const char* parameter, void* userData);

    BXGenericConfigFileToken(const BXString& name, Callback callback,
                             BXGenericConfigFileToken* next);

    // Whether `line` (NUL-terminated, trimmed) begins with this key, in any letter case; calls the
    // callback with what follows the key and its separators (tabs, blanks, ':' and '='). A key
    // followed by separators only is taken without a call. No separator is needed after the key.
    bool parseLine(const char* line, void* userData) const;

    BXString name;
    Callback callback;
    BXGenericConfigFileToken* next;
};

// Key/value text files, one key a line. Two dialects, kept apart on purpose: dispatching a whole
// file to callbacks (separators tab, blank, ':' and '='; the most recently added key first), and
// looking up or rewriting one key (separator '=' alone). Paths go through
// BXString::getValidFilePath. Nothing throws but a failed allocation; nothing is logged.
class BXGenericConfigFileParser {
public:
    BXGenericConfigFileParser() = default;
    BXGenericConfigFileParser(const BXGenericConfigFileParser& other);
    BXGenericConfigFileParser& operator=(const BXGenericConfigFileParser& other);
    ~BXGenericConfigFileParser();

    // A later key is tried before an earlier one: add a longer key after a key that begins it.
    void addToken(const BXString& name, BXGenericConfigFileToken::Callback callback);
    // Offers each line to the keys. False when the file cannot be opened or is empty.
    bool parseFile(const BXString& path, void* userData) const;

    // The first NUL, LF or CR at or after `position`; null for null.
    static const char* findEndOfLine(const char* position);
    // The first character after the next run of CR and LF; null when the text ends first, or for
    // null. For texts in memory that may hold NULs see BXLineWalker.
    static const char* findNextLine(const char* position);
    // Splits [begin, end) at its first '='. False when there is no key.
    static bool parseALine(const char* begin, const char* end, BXString& key, BXString& value);

    // The value of the first line with this key in any letter case, without one pair of enclosing
    // double quotes; empty when there is none. `found` may be null.
    static BXString findTokenInConfigFile(const BXString& file, const BXString& key, bool* found);
    // Puts the line KEY = value on top of the file and drops every older line of the key; creates a
    // missing file. `found` (may be null) tells whether there was an older line. False when the
    // file could not be opened for writing, or is there and cannot be read whole; then it stays as
    // it was.
    // That a write fell short on a full disk is not reported.
    static bool replaceTokenInConfigFile(const BXString& file, const BXString& key,
                                         const BXString& value, bool* found);

    // Without a double quote in front and, where there is one, its partner at the end. A null text
    // and a lone quote give the empty string.
    static BXString paramToString(const char* text);
    // Null is taken as the empty text. False for "No", "0", "False" and "#f" in any letter case,
    // true for everything else.
    static bool paramToBool(const char* text);
    // 0 as above; 1 for "Yes", "1", "True" and "#t"; -1, take your default, for anything else.
    static int paramToBoolOrDefault(const char* text);
    // The number the text starts with, read as a float (so beyond 2^24 it is the float next to it),
    // truncated toward zero and held at the ends of the 32-bit range; 0 when it starts with none or
    // is not a number.
    static int paramToInt(const char* text);
    // The number the text starts with, with a '.' in it whatever the locale; 0 when there is none.
    static float paramToFloat(const char* text);

private:
    BXGenericConfigFileToken* m_head = nullptr;
};
