#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "bridge/bx_vek_app.h"
#include "tools/vek/near_words.h"
#include "tools/vek/tree_checks.h"

// What the switches of a descriptor do together. A flip, and the switch of y and z, mirror once
// each; two mirrors make a turn.

namespace {

using Names = std::vector<std::string>;

// The four mirrors of one direction, the same in every group: x, y, z, then y with z.
struct Direction {
    std::array<const char*, 4> keys;
    const char* normals;  // null where the direction has no such switch
};

constexpr Direction kExport = {
    {"EXPORT_FLIP_X", "EXPORT_FLIP_Y", "EXPORT_FLIP_Z", "EXPORT_SWITCH_YZ"}, "EXPORT_FLIP_NORMALS"};
constexpr Direction kImport = {
    {"IMPORT_FLIP_X", "IMPORT_FLIP_Y", "IMPORT_FLIP_Z", "IMPORT_SWITCH_YZ"}, "IMPORT_FLIP_NORMALS"};
constexpr Direction kMoveExport = {
    {"EXPORT_MFLIP_X", "EXPORT_MFLIP_Y", "EXPORT_MFLIP_Z", "EXPORT_MSWITCH_YZ"}, nullptr};
constexpr Direction kMoveImport = {
    {"IMPORT_MFLIP_X", "IMPORT_MFLIP_Y", "IMPORT_MFLIP_Z", "IMPORT_MSWITCH_YZ"}, nullptr};

class SwitchCheck {
public:
    SwitchCheck(Findings& findings, const std::string& path, const Descriptor& descriptor)
        : m_findings(findings), m_path(path), m_descriptor(descriptor) {}

    // What import does as export does is said once.
    void checkPair(const Direction& out, const Direction& back) {
        checkMirrors(out);
        bool isUndone = true;
        for (std::size_t i = 0; i < out.keys.size(); ++i) {
            isUndone &= checkUndone(out.keys[i], back.keys[i]);
        }
        if (out.normals) {
            const bool isExportFine = checkNormals(out);
            const bool areNormalsUndone = checkUndone(out.normals, back.normals);
            if (isExportFine || !isUndone || !areNormalsUndone) checkNormals(back);
        }
        if (!isUndone) checkMirrors(back);
    }

private:
    bool isOn(const std::string& key) const {
        for (const DescriptorKey& known : descriptorKeys()) {
            if (known.name == key) return (m_descriptor.switches & known.bit) != 0;
        }
        return false;
    }

    Names mirrorsOf(const Direction& direction) const {
        Names on;
        for (const char* key : direction.keys) {
            if (isOn(key)) on.push_back(key);
        }
        return on;
    }

    int lastLineOf(const Names& keys) const {
        int last = 0;
        for (const std::string& key : keys) last = std::max(last, m_descriptor.lineOf(key));
        return last;
    }

    bool checkUndone(const std::string& out, const std::string& back) {
        if (isOn(out) == isOn(back)) return true;
        const std::string& on = isOn(out) ? out : back;
        const std::string& off = isOn(out) ? back : out;
        m_findings.add("round-trip-turns", m_path, m_descriptor.lineOf(on),
                       fmt::format("{} is on and {} is not, so what goes out and comes back "
                                   "unchanged is turned.",
                                   on, off),
                       fmt::format("Set {} as well, unless the application hands back something "
                                   "else than it was given.",
                                   off));
        return false;
    }

    void checkMirrors(const Direction& direction) {
        const Names on = mirrorsOf(direction);
        const std::string last = on.empty() ? "" : on.back();
        const bool switches = last == direction.keys[3];
        if (on.size() == 2 && !switches) {
            m_findings.add("mirrors-cancel", m_path, lastLineOf(on),
                           fmt::format("{} and {} cancel each other: two mirrors are half a turn, "
                                       "and nothing is mirrored.",
                                       on[0], on[1]),
                           "Take one away if the application is mirrored, and both if it is not; "
                           "keep them only if it faces the other way.");
        } else if (on.size() > 2) {
            const std::string others = on.size() == 3 ? "one" : "two or none";
            m_findings.add("mirrors-without-need", m_path, lastLineOf(on),
                           fmt::format("{} and {} mirror {} times, where {} would give the same "
                                       "handedness.",
                                       listBut(on, last), last, on.size(), others),
                           fmt::format("Find the {} that the application needs and take the others "
                                       "away; keep them only if it faces the other way.",
                                       others));
        }
    }

    static std::string listBut(const Names& names, const std::string& last) {
        std::string list;
        for (const std::string& name : names) {
            if (name != last) list += (list.empty() ? "" : ", ") + name;
        }
        return list;
    }

    // False when that was found.
    bool checkNormals(const Direction& direction) {
        if (!isOn(direction.normals) || mirrorsOf(direction).size() % 2 == 0) return true;
        m_findings.add("normals-turned-twice", m_path, m_descriptor.lineOf(direction.normals),
                       fmt::format("The mesh is mirrored and the bridge rewinds its faces, so that "
                                   "they still face outwards; {} turns them inwards.",
                                   direction.normals),
                       fmt::format("Take {} away.", direction.normals));
        return false;
    }

    Findings& m_findings;
    const std::string& m_path;
    const Descriptor& m_descriptor;
};

}  // namespace

void checkSwitches(Findings& findings, const std::string& path, const Descriptor& descriptor) {
    SwitchCheck check(findings, path, descriptor);
    check.checkPair(kExport, kImport);
    check.checkPair(kMoveExport, kMoveImport);
}
