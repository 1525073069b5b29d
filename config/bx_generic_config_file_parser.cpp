#include "config/bx_generic_config_file_parser.h"

#include <cstring>
#include <string>
#include <utility>

#include "config/config_line.h"
#include "config/line_walker.h"
#include "os/bx_file.h"

namespace {

// Required(R34): only the dispatcher separates at these; a lookup separates at '=' alone, so that
// its keys can have blanks in them.
bool isSeparator(char c) {
    return isBlank(c) || c == ':' || c == '=';
}

unsigned char upper(char c) {
    return BXString::s_toUpper[static_cast<unsigned char>(c)];
}

void offer(const BXGenericConfigFileToken* token, const char* line, void* userData) {
    while (token && !token->parseLine(line, userData)) token = token->next;
}

}  // namespace

BXGenericConfigFileToken::BXGenericConfigFileToken(const BXString& tokenName,
                                                   Callback tokenCallback,
                                                   BXGenericConfigFileToken* nextToken)
    : name(tokenName), callback(tokenCallback), next(nextToken) {}

bool BXGenericConfigFileToken::parseLine(const char* line, void* userData) const {
    if (!line) return false;
    for (const char* key = name.c_str(); *key; ++key, ++line) {
        if (upper(*key) != upper(*line)) return false;
    }
    // Required(R30): a key alone calls with the empty parameter, a key followed by separators
    // alone does not call, and no separator at all is needed: a longer key has to be tried first.
    if (!*line) {
        callback("", userData);
        return true;
    }
    while (isSeparator(*line)) ++line;
    if (*line) callback(line, userData);
    return true;
}

// Delegates, so that what is copied already goes again when an allocation fails.
BXGenericConfigFileParser::BXGenericConfigFileParser(const BXGenericConfigFileParser& other)
    : BXGenericConfigFileParser() {
    BXGenericConfigFileToken** end = &m_head;
    for (const auto* token = other.m_head; token; token = token->next) {
        *end = new BXGenericConfigFileToken(token->name, token->callback, nullptr);
        end = &(*end)->next;
    }
}

BXGenericConfigFileParser& BXGenericConfigFileParser::operator=(
    const BXGenericConfigFileParser& other) {
    BXGenericConfigFileParser copy(other);
    std::swap(m_head, copy.m_head);
    return *this;
}

BXGenericConfigFileParser::~BXGenericConfigFileParser() {
    while (m_head) {
        const auto* const token = m_head;
        m_head = token->next;
        delete token;
    }
}

void BXGenericConfigFileParser::addToken(const BXString& name,
                                         BXGenericConfigFileToken::Callback callback) {
    m_head = new BXGenericConfigFileToken(name, callback, m_head);
}

bool BXGenericConfigFileParser::parseFile(const BXString& path, void* userData) const {
    std::string text;
    if (!BXFile::readWhole(path.getValidFilePath(), text) || text.empty()) return false;
    std::string line;
    for (const char* begin = text.c_str(); begin; begin = findNextLine(begin)) {
        const char* end = findEndOfLine(begin);
        const char* from = begin;
        while (from < end && isBlank(*from)) ++from;
        while (end > from && isBlank(end[-1])) --end;
        line.assign(from, end);
        offer(m_head, line.c_str(), userData);
    }
    return true;
}

const char* BXGenericConfigFileParser::findEndOfLine(const char* position) {
    return position ? position + std::strcspn(position, "\r\n") : nullptr;
}

const char* BXGenericConfigFileParser::findNextLine(const char* position) {
    if (!position) return nullptr;
    const char* next = findEndOfLine(position);
    next += std::strspn(next, "\r\n");
    return *next ? next : nullptr;
}

bool BXGenericConfigFileParser::parseALine(const char* begin, const char* end, BXString& key,
                                           BXString& value) {
    const BXConfigLine line(begin, end);
    if (!line.hasKey()) return false;
    key.create(line.keyBegin, line.keyEnd);
    value.create(line.valueBegin, line.valueEnd);
    return true;
}
