// Whatever bytes as an exchange file: turned to the other side, held against a slow transform, and
// searched for the name of a map, held against a slow search. The first byte says which way it is
// turned, the size which map is looked for.

#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "bridge/bx_vek.h"
#include "bridge/bx_vek_app.h"
#include "exports/vek.h"
#include "fuzz/support.h"
#include "tests/formats/reference_transform.h"

namespace {

const char kObject[] = "/Users/Shared/Kelvaro/mesh";
const char kPath[] = "/Users/Shared/Kelvaro/mesh.vek";

void makeTree() {
    for (const char* folder : {"/Users/Shared/Kelvaro", "/Users/Shared/Kelvaro/VekHub"}) {
        mkdir(folder, 0777);
    }
    FuzzFile("/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt").write(kObject);
}

float call(VekExport name, char* text, double value, char* out, char* number) {
    return name(text, value, out, 0, number, 0, nullptr);
}

// Sets the library so, and tells which centre it then has.
ReferenceSettings apply(unsigned int bits) {
    ReferenceSettings settings;
    settings.afterExport = bits & 1;
    for (unsigned int axis = 0; axis < 3; ++axis) settings.flip[axis] = bits >> (1 + axis) & 1;
    settings.switchYZ = bits & 0x10;
    settings.reverse = bits & 0x20;
    using App = BXVekApp;
    const unsigned int out[] = {App::EXPORT_FLIP_X, App::EXPORT_FLIP_Y, App::EXPORT_FLIP_Z};
    const unsigned int in[] = {App::IMPORT_FLIP_X, App::IMPORT_FLIP_Y, App::IMPORT_FLIP_Z};
    BXVek::s_ioPref = 0;
    if (settings.switchYZ) {
        BXVek::s_ioPref = settings.afterExport ? App::EXPORT_SWITCH_YZ : App::IMPORT_SWITCH_YZ;
    }
    for (int axis = 0; axis < 3; ++axis) {
        if (settings.flip[axis]) BXVek::s_ioPref |= (settings.afterExport ? out : in)[axis];
    }
    BXVek::s_exportReverse = settings.afterExport && settings.reverse;
    BXVek::s_importReverse = !settings.afterExport && settings.reverse;
    BXVek::s_scale = bits & 0x40 ? 3.0 : 0.0;
    BXVek::s_offsetX = 0.3;
    BXVek::s_offsetY = -7.0;
    BXVek::s_offsetZ = 1e6;
    settings.centre[0] = BXVek::s_scale * BXVek::s_offsetX;
    settings.centre[1] = BXVek::s_scale * BXVek::s_offsetY;
    settings.centre[2] = BXVek::s_scale * BXVek::s_offsetZ;
    return settings;
}

void turn(const FuzzFile& file, const std::string& bytes, unsigned int bits) {
    const ReferenceSettings settings = apply(bits);
    std::string path(kPath);
    const float result =
        call(settings.afterExport ? VekPostExport : VekPreImport, path.data(), 0, nullptr, nullptr);
    const std::string after = file.read();
    if (result != 0.0f) return expect(result == -1.0f && after == bytes);
    expect(sameButForNaNs(after, referenceTransform(bytes, settings)));
}

struct Block {
    std::uint32_t id, size, count;
    float param;
};

// The name in the first block of the kind; empty where there is none.
std::string slowMapName(const std::string& bytes, std::uint32_t kind, Block& block) {
    if (bytes.size() < 32 || bytes.compare(0, 4, "Vekb") != 0) return "";
    for (std::uint64_t at = 32; at + 16 <= bytes.size(); at += block.size) {
        std::memcpy(&block, bytes.data() + at, sizeof block);
        if (block.id == 0 || block.size < 16) return "";
        if (block.id != kind) continue;
        if (at + block.size > bytes.size()) return "";
        std::string name = bytes.substr(static_cast<std::size_t>(at) + 16, block.size - 16).c_str();
        std::replace(name.begin(), name.end(), '\\', '/');
        return name;
    }
    return "";
}

void readMapName(const std::string& bytes, int map) {
    static const std::uint32_t kinds[] = {45001, 50001, 55001};
    Block block;
    const std::string expected = slowMapName(bytes, kinds[map], block);
    std::vector<char> name(bytes.size() + 1, '?');
    char number[64] = "?";
    const float result = call(GetFirstObjectTextureFileName, nullptr, map, name.data(), number);
    expect(result == (expected.empty() ? -1.0f : 0.0f));
    if (expected.empty()) return;
    expect(name.data() == expected);
    char text[64] = "?";
    if (map == 2) std::snprintf(text, sizeof text, "%f", static_cast<double>(block.param));
    expect(std::strcmp(number, text) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isMade = (makeTree(), true);
    static const FuzzFile file(kPath);
    if (!isMade || size == 0) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    file.write(bytes);
    readMapName(bytes, static_cast<int>(size % 3));
    turn(file, bytes, data[0]);
    return 0;
}
