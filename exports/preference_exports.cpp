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

float ReadConfigPrefAsString(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2,
                              [&](const BXString& found) { textOut(buffer2, found); });
    });
}

float ReadConfigPrefAsBool(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2, [&](const BXString& found) {
            numberOut(buffer2, Parser::paramToBool(found.c_str()) ? 1 : 0);
        });
    });
}

float ReadConfigPrefAsInt(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2, [&](const BXString& found) {
            numberOut(buffer2, Parser::paramToInt(found.c_str()));
        });
    });
}

float ReadConfigPrefAsFloat(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        return readPreference(text, buffer1, buffer2, [&](const BXString& found) {
            numberOut(buffer2, Parser::paramToFloat(found.c_str()));
        });
    });
}

float WriteConfigPrefAsString(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] { return writePreference(text, buffer1, buffer2); });
}

float WriteConfigPrefAsBool(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        if (!buffer2) return 0.0f;
        return writePreference(text, buffer1, numberIn<int>(buffer2) ? "TRUE" : "FALSE");
    });
}

float WriteConfigPrefAsInt(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        if (!buffer2) return 0.0f;
        return writePreference(text, buffer1, BXString::int2String(numberIn<int>(buffer2)));
    });
}

float WriteConfigPrefAsFloat(VEK_ARGUMENTS) {
    VEK_UNUSED_ARGUMENTS;
    return guarded(0.0f, [&] {
        if (!buffer2) return 0.0f;
        const double number = static_cast<double>(numberIn<float>(buffer2));
        return writePreference(text, buffer1, BXString::format("%f", number));
    });
}
