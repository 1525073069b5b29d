// The conversions of a parameter's text.

#include <climits>

#include "config/bx_generic_config_file_parser.h"
#include "foundation/c_locale.h"

namespace {

template <std::size_t count>
bool isOneOf(const char* text, const char* const (&words)[count]) {
    for (const char* word : words) {
        if (BXString::cmpNoCase(text, word) == 0) return true;
    }
    return false;
}

const char* const kNo[] = {"No", "0", "False", "#f"};
const char* const kYes[] = {"Yes", "1", "True", "#t"};

}  // namespace

BXString BXGenericConfigFileParser::paramToString(const char* text) {
    BXString string(text);
    if (!string.startsWith("\"")) return string.isEmpty() ? BXString() : string;
    const int length = string.length();
    return string.subString(1, string.endsWith("\"") ? length - 1 : length);
}

bool BXGenericConfigFileParser::paramToBool(const char* text) {
    // Required(R32): everything that is not a word for no is yes, the empty text too, so a switch
    // written without a value is on.
    return !isOneOf(text, kNo);
}

int BXGenericConfigFileParser::paramToBoolOrDefault(const char* text) {
    if (isOneOf(text, kNo)) return 0;
    return isOneOf(text, kYes) ? 1 : -1;
}

// Required(R87): by way of a float, so beyond 2^24 an integer is the float next to it.
int BXGenericConfigFileParser::paramToInt(const char* text) {
    const float number = paramToFloat(text);
    if (number != number) return 0;
    // The largest int is no float: the next one above it is the first that does not fit.
    if (number >= 2147483648.0f) return INT_MAX;
    if (number < -2147483648.0f) return INT_MIN;
    return static_cast<int>(number);
}

float BXGenericConfigFileParser::paramToFloat(const char* text) {
    return bxScanFloatInCLocale(text);
}
