#include <cstdint>

#include "tools/validate/tree.h"

// The files that the checks give to the exports, written without the library.

namespace {

template <class Value>
std::string packed(const std::vector<Value>& values) {
    return std::string(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(Value));
}

std::string block(std::uint32_t id, std::uint32_t count, std::string payload, float param = 0.0f) {
    payload.resize((payload.size() + 3) / 4 * 4);
    const auto size = static_cast<std::uint32_t>(16 + payload.size());
    return packed<std::uint32_t>({id, size, count}) + packed<float>({param}) + payload;
}

constexpr std::size_t kHeaderSize = 32, kBlockHeaderSize = 16;
constexpr std::size_t kVertices = 4;

const std::string kSetName = "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";";

// What stands before and behind the three ranges that a merge changes.
std::string sceneAround(const std::string& uvs, const std::string& edges,
                        const std::string& faces) {
    return "//Maya ASCII 8.5 scene\nrequires maya \"8.5\";\n"
           "createNode transform -n \"square\";\n"
           "createNode mesh -n \"squareShape\" -p \"square\";\n\tsetAttr -k off \".v\";\n" +
           uvs +
           "\tsetAttr -s 4 \".vt\";\n\tsetAttr \".vt[0:3]\"\n 0 0 0 1 0 0 0 1 0 1 1 0;\n"
           "\tsetAttr -s 5 \".ed\";\n\tsetAttr \".ed[0:4]\"\n " +
           edges + ";\n\tsetAttr -s 2 \".fc\";\n\tsetAttr \".fc[0:1]\" -type \"polyFaces\"\n " +
           faces + ";\nconnectAttr \"squareShape.iog\" \":initialShadingGroup.dsm\" -na;\n";
}

}  // namespace

std::string tree::exchangeFile(float coordinate, float mapNumber) {
    std::string bytes = "Vekb" + std::string(kHeaderSize - 4, '\0');
    bytes +=
        block(10001, kVertices, packed<float>({coordinate, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    bytes += block(20001, 2, packed<std::int32_t>({0, 1, 2, -1, 0, 1, 2, 3}));
    bytes += block(25001, 2, packed<std::int32_t>({10, 11, 12, 13, 20, 21, 22, 23}));
    bytes += block(45001, 0, std::string("C:\\maps\\zero.png") + '\0');
    bytes += block(50001, 0, std::string("maps/one.png") + '\0');
    bytes += block(55001, 0, std::string("maps\\two.png") + '\0', mapNumber);
    return bytes + std::string(16, '\0');
}

std::vector<tree::Part> tree::partsOf(const std::string& bytes) {
    std::vector<Part> parts;
    const auto add = [&](Part::Kind kind, std::size_t at, std::size_t size) {
        if (at + size <= bytes.size()) parts.push_back({kind, at, size});
    };
    std::size_t at = kHeaderSize + kBlockHeaderSize;
    for (std::size_t i = 0; i < kVertices; ++i, at += 12) add(Part::Vertex, at, 12);
    // The triangle stands in front of the quad, among the faces and among their corners.
    for (int i = 0; i < 2; ++i) {
        at += kBlockHeaderSize;
        add(Part::Triangle, at, 16);
        add(Part::Quad, at + 16, 16);
        at += 32;
    }
    return parts;
}

std::string tree::scene() {
    return sceneAround(
        kSetName +
            "setAttr -s 6 \".uvst[0].uvsp\";\n\tsetAttr \".uvst[0].uvsp[0:5]\" -type \"float2\"\n"
            " 0 0 1 0 0 1 1 0 1 1 0 1;\n",
        "0 1 0 1 2 0 2 0 0 1 3 0 3 2 0", "f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5");
}

std::string tree::mergedScene() {
    return sceneAround(
        kSetName +
            "setAttr -s 4 \".uvst[0].uvsp\";\n\tsetAttr \".uvst[0].uvsp[0:3]\" -type \"float2\"\n"
            " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 1.00000;\n",
        "0 1 0 1 2 1 2 0 0 1 3 0 3 2 0", "f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 1 3 2");
}
