#include "tools/validate/stated_calls.h"

#include <cmath>
#include <cstring>
#include <stdexcept>

namespace {

#define HUB "/Users/Shared/Kelvaro/VekHub/"
#define APP "/Users/Shared/Kelvaro/VekApps/Alpha/"
#define PROJECT "/Users/Shared/Kelvaro/VekProjects/Default/"
#define PREFS HUB "prefs.txt"

constexpr const char* kNone = nullptr;
constexpr Results kZero = Results::Zero;
constexpr Results kYesNo = Results::ZeroOrOne;
constexpr Results kDone = Results::ZeroOrMinusOne;

/* clang-format off */
constexpr StatedCall kCalls[] = {
    // name, text, value, in1, in2, results,                                                    ordinary, again, first, nulls, empties, missing, readOnly, full
    {"InitializeVek", "/Applications", 0, kNone, kNone, Results::Count,                         1, 1, 1, 1, 1, 0, 1, 1},
    {"VekSetExportScale", kNone, 2.5, kNone, kNone, kZero,                                      0, 0, 0, 0, 0, 0, 0, 0},
    {"VekSetExportOffsetX", kNone, 2.5, kNone, kNone, kZero,                                    0, 0, 0, 0, 0, 0, 0, 0},
    {"VekSetExportOffsetY", kNone, 2.5, kNone, kNone, kZero,                                    0, 0, 0, 0, 0, 0, 0, 0},
    {"VekSetExportOffsetZ", kNone, 2.5, kNone, kNone, kZero,                                    0, 0, 0, 0, 0, 0, 0, 0},
    {"PrintInLog", kNone, 0, kNone, kNone, kZero,                                               0, 0, 0, 0, 0, 0, 0, 0},
    {"DeclareMacroActivated", kNone, 0, kNone, kNone, kZero,                                    0, 0, 0, 0, 0, 0, 0, 0},
    {"OpenFileDialog", "Title", 0, kNone, kNone, kDone,                                         0, 0, 0, -1, 0, 0, 0, 0},
    {"AddVekObject", PROJECT "new", 0, kNone, kNone, kYesNo,                                    1, 1, 1, 1, 1, 0, 0, 0},
    {"AddVekObjectToList", PROJECT "new", 0, kNone, kNone, kZero,                               0, 0, 0, 0, 0, 0, 0, 0},
    {"ClearVekObjectList", kNone, 0, kNone, kNone, kYesNo,                                      1, 1, 1, 1, 1, 0, 0, 1},
    {"ReadVekObjectList", kNone, 0, kNone, kNone, Results::Count,                               2, 2, 2, 2, 2, 0, 2, 2},
    {"GetVekObjectPath", kNone, 0, kNone, kNone, kZero,                                         0, 0, 0, 0, 0, 0, 0, 0},
    {"ReleaseVekObjectList", kNone, 0, kNone, kNone, kZero,                                     0, 0, 0, 0, 0, 0, 0, 0},
    {"ExtractVekObject", kNone, 0, kNone, kNone, kYesNo,                                        1, 1, 1, 1, 1, 0, 1, 1},
    {"VekPostExport", PROJECT "mesh.vek", 0, kNone, kNone, kDone,                               0, 0, 0, -1, -1, -1, -1, 0},
    {"VekPreImport", PROJECT "mesh.vek", 0, kNone, kNone, kDone,                                0, 0, 0, -1, -1, -1, -1, 0},
    {"VekClearFile", PROJECT "plain.txt", 0, kNone, kNone, kYesNo,                              1, 1, 1, 0, 0, 0, 0, 1},
    {"VekDeleteFile", PROJECT "doomed.txt", 0, kNone, kNone, kYesNo,                            1, 0, 1, 0, 0, 0, 0, 1},
    {"VekCleanCaches", kNone, 0, kNone, kNone, kZero,                                           0, 0, 0, 0, 0, 0, 0, 0},
    {"GetFirstObjectTextureFileName", kNone, 2, kNone, kNone, kDone,                            0, 0, 0, 0, 0, -1, 0, 0},
    {"IsVekFilePathValid", PROJECT "plain.txt", 0, kNone, kNone, kYesNo,                        1, 1, 1, 0, 0, 0, 1, 1},
    {"ReadVekProjectPath", kNone, 0, kNone, kNone, kZero,                                       0, 0, 0, 0, 0, 0, 0, 0},
    {"VekAppIsInstalled", "/Applications/Alpha/bin", 0, kNone, kNone, kYesNo,                   1, 1, 0, 0, 0, 0, 1, 1},
    {"VekAppInstall", "/Applications/New", 0, kNone, kNone, kYesNo,                             0, 0, 1, 0, 0, 1, 0, 0},
    {"VekAppIsRunning", "/Applications/Nothing.app", 0, kNone, kNone, kYesNo,                   0, 0, 0, 0, 0, 0, 0, 0},
    {"OpenVekApplication", APP "edit.sh", 0, "words", kNone, kZero,                             0, 0, 0, 0, 0, 0, 0, 0},
    {"CallVekAppCommand", "EDIT_COMMAND", 0, kNone, kNone, kDone,                               0, 0, -1, -1, -1, -1, 0, 0},
    {"CallVekAppCommandAsAdmin", "EDIT_COMMAND", 0, kNone, kNone, kDone,                        0, 0, -1, -1, -1, -1, 0, 0},
    {"IsAppPathValid", PROJECT "plain.txt", 0, kNone, kNone, kYesNo,                            1, 1, 1, 0, 0, 0, 1, 1},
    {"ReadVekAppPath", kNone, 0, kNone, kNone, kYesNo,                                          1, 1, 0, 1, 1, 0, 1, 1},
    {"WriteVekAppPath", "/Applications/Other.app", 0, kNone, kNone, kZero,                      0, 0, 0, 0, 0, 0, 0, 0},
    {"FindVekApp", "Alpha", 0, kNone, kNone, Results::Index,                                    0, 0, -1, -1, -1, -1, 0, 0},
    {"GetVekAppIndex", kNone, 0, kNone, kNone, Results::Index,                                  0, 0, -1, 0, 0, -1, 0, 0},
    {"SetVekAppIndex", kNone, 0, kNone, kNone, kZero,                                           0, 0, 0, 0, 0, 0, 0, 0},
    {"GetVekAppId", kNone, 0, kNone, kNone, kZero,                                              0, 0, 0, 0, 0, 0, 0, 0},
    {"GetVekAppName", kNone, 0, kNone, kNone, kZero,                                            0, 0, 0, 0, 0, 0, 0, 0},
    {"GetVekAppIOPrefs", kNone, 0, kNone, kNone, kZero,                                         0, 0, 0, 0, 0, 0, 0, 0},
    {"GetVekAppTamplate", kNone, 0, kNone, kNone, kZero,                                        0, 0, 0, 0, 0, 0, 0, 0},
    {"GetVekAppExt", kNone, 0, kNone, kNone, kZero,                                             0, 0, 0, 0, 0, 0, 0, 0},
    {"ReadConfigPrefAsString", PREFS, 0, "TEXT", kNone, kYesNo,                                 1, 1, 1, 0, 0, 0, 1, 1},
    {"ReadConfigPrefAsBool", PREFS, 0, "YES", kNone, kYesNo,                                    1, 1, 1, 0, 0, 0, 1, 1},
    {"ReadConfigPrefAsInt", PREFS, 0, "WHOLE", kNone, kYesNo,                                   1, 1, 1, 0, 0, 0, 1, 1},
    {"ReadConfigPrefAsFloat", PREFS, 0, "REAL", kNone, kYesNo,                                  1, 1, 1, 0, 0, 0, 1, 1},
    {"WriteConfigPrefAsString", PREFS, 0, "TEXT", "some more words than before", kYesNo,        1, 1, 1, 0, 0, 0, 1, 1},
    {"WriteConfigPrefAsBool", PREFS, 0, "YES", "0", kYesNo,                                     1, 1, 1, 0, 0, 0, 1, 1},
    {"WriteConfigPrefAsInt", PREFS, 0, "WHOLE", "12345", kYesNo,                                1, 1, 1, 0, 0, 0, 1, 1},
    {"WriteConfigPrefAsFloat", PREFS, 0, "REAL", "2.25", kYesNo,                                1, 1, 1, 0, 0, 0, 1, 1},
    {"SetItemPos", "Tool:Last", 1, "Tool:Import", kNone, kDone,                               0, 0, 0, -1, -1, 0, 0, 0},
};

constexpr const char* kListed[] = {
#define X(name, group, textUse, valueUse, kind1, kind2, result) #name,
#include "exports/exports.def.h"
#undef X
};
/* clang-format on */

constexpr bool areEqual(const char* a, const char* b) {
    while (*a && *a == *b) ++a, ++b;
    return *a == *b;
}

constexpr std::size_t kCount = sizeof kCalls / sizeof *kCalls;
static_assert(kCount == sizeof kListed / sizeof *kListed, "one call for each export");

constexpr bool namesAgree() {
    for (std::size_t i = 0; i < kCount; ++i) {
        if (!areEqual(kCalls[i].name, kListed[i])) return false;
    }
    return true;
}
static_assert(namesAgree(), "the calls stand in the order of the list of exports");

}  // namespace

const std::vector<StatedCall>& statedCalls() {
    static const std::vector<StatedCall> calls(kCalls, kCalls + kCount);
    return calls;
}

const StatedCall& statedCall(const char* name) {
    for (const StatedCall& call : statedCalls()) {
        if (std::strcmp(call.name, name) == 0) return call;
    }
    throw std::logic_error(std::string("no export has the name ") + name);
}

const ExportEntry& entryOf(const StatedCall& call) {
    return exportTable()[static_cast<std::size_t>(&call - statedCalls().data())];
}

bool isPossible(Results results, float result) {
    switch (results) {
        case Results::Zero:
            return result == 0.0f;
        case Results::ZeroOrOne:
            return result == 0.0f || result == 1.0f;
        case Results::ZeroOrMinusOne:
            return result == 0.0f || result == -1.0f;
        case Results::Count:
            return result >= 0.0f && result == std::floor(result) && std::isfinite(result);
        case Results::Index:
            return result >= -1.0f && result == std::floor(result) && std::isfinite(result);
    }
    return false;
}
