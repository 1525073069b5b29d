#include "config/bx_generic_config_file_parser.h"
#include "exports/call_frame.h"

namespace {

using Parser = BXGenericConfigFileParser;

// Looks the key up and hands a value that is not empty to `store`; the result of a read export.
template <class Store>
float readPreference(const char* file, const char* key, char* buffer, Store store) {
    bool found = false;
    const BXString value = Parser::findTokenInConfigFile(file, key, &found);
    if (!value.isEmpty() && buffer) store(value);
    return yesOrNo(found);
}

// The result of a write export: whether the key was there before, and nothing else.
float writePreference(const char* file, const char* key, const BXString& value) {
    bool found = false;
    Parser::replaceTokenInConfigFile(file, key, value, &found);
    return yesOrNo(found);
}

}  // namespace

VEK_DEFINE(ReadConfigPrefAsString) {
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2,
                              [&](const BXString& found) { textOut(buffer2, found); });
    });
}

VEK_DEFINE(ReadConfigPrefAsBool) {
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2, [&](const BXString& found) {
            numberOut(buffer2, Parser::paramToBool(found.c_str()) ? 1 : 0);
        });
    });
}

VEK_DEFINE(ReadConfigPrefAsInt) {
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2, [&](const BXString& found) {
            numberOut(buffer2, Parser::paramToInt(found.c_str()));
        });
    });
}

VEK_DEFINE(ReadConfigPrefAsFloat) {
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2, [&](const BXString& found) {
            numberOut(buffer2, Parser::paramToFloat(found.c_str()));
        });
    });
}

VEK_DEFINE(WriteConfigPrefAsString) {
    return guarded(0.0f, [&] { return writePreference(text, buffer1, buffer2); });
}

VEK_DEFINE(WriteConfigPrefAsBool) {
    return guarded(0.0f, [&] {
        if (!buffer2) return 0.0f;
        return writePreference(text, buffer1, numberIn<int>(buffer2) ? "TRUE" : "FALSE");
    });
}

VEK_DEFINE(WriteConfigPrefAsInt) {
    return guarded(0.0f, [&] {
        if (!buffer2) return 0.0f;
        return writePreference(text, buffer1, BXString::int2String(numberIn<int>(buffer2)));
    });
}

VEK_DEFINE(WriteConfigPrefAsFloat) {
    return guarded(0.0f, [&] {
        if (!buffer2) return 0.0f;
        const double number = static_cast<double>(numberIn<float>(buffer2));
        return writePreference(text, buffer1, BXString::format("%f", number));
    });
}
