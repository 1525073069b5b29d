#pragma once

#include <gtest/gtest.h>

#include <string>

#include "bridge/bx_vek.h"
#include "formats/bx_uv_merge_algo.h"
#include "tests/formats/maya_random.h"
#include "tests/support/temp_folder.h"

// A Maya scene on the disk that is merged and split; the flags of BXVek are as they were
// afterwards.
class MayaFixture : public testing::Test {
protected:
    ~MayaFixture() override {
        BXVek::s_exportReverse = false;
        BXVek::s_importReverse = false;
    }

    std::string path() const { return m_folder / "scene.ma"; }

    // What the operation makes of the text; it has to succeed.
    std::string merged(const std::string& text) const {
        writeFile(path(), text);
        EXPECT_TRUE(BXUVMergeAlgo::mergeUVsInMayaFile(path().c_str()));
        return readFile(path());
    }
    std::string split(const std::string& text) const {
        writeFile(path(), text);
        EXPECT_TRUE(BXUVMergeAlgo::splitUVsInMayaFile(path().c_str()));
        return readFile(path());
    }

    // Whether the operation refuses the text, and leaves the file as it was.
    bool mergeRefuses(const std::string& text) const {
        writeFile(path(), text);
        const bool refused = !BXUVMergeAlgo::mergeUVsInMayaFile(path().c_str());
        if (refused) {
            EXPECT_EQ(readFile(path()), text);
        }
        return refused;
    }
    bool splitRefuses(const std::string& text) const {
        writeFile(path(), text);
        const bool refused = !BXUVMergeAlgo::splitUVsInMayaFile(path().c_str());
        if (refused) {
            EXPECT_EQ(readFile(path()), text);
        }
        return refused;
    }

    TempFolder m_folder;
};

// The statements of a mesh as the host writes them.
inline std::string uvCount(int count) {
    return "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";setAttr -s " +
           std::to_string(count) + " \".uvst[0].uvsp\";\n";
}
inline std::string uvRange(const std::string& range, const std::string& data) {
    return "\tsetAttr \".uvst[0].uvsp[" + range + "]\" -type \"float2\"\n" + data + ";\n";
}
inline std::string edgeCount(int count) {
    return "\tsetAttr -s " + std::to_string(count) + " \".ed\";\n";
}
inline std::string edgeRange(const std::string& range, const std::string& data) {
    return "\tsetAttr \".ed[" + range + "]\"\n" + data + ";\n";
}
inline std::string vertexCount(int count) {
    return "\tsetAttr -s " + std::to_string(count) + " \".vt\";\n";
}
inline std::string vertexRange(const std::string& range, const std::string& data) {
    return "\tsetAttr \".vt[" + range + "]\"\n" + data + ";\n";
}
inline std::string faceCount(int count) {
    return "\tsetAttr -s " + std::to_string(count) + " \".fc\";\n";
}
inline std::string faceRange(const std::string& range, const std::string& data) {
    return "\tsetAttr \".fc[" + range + "]\" -type \"polyFaces\"\n" + data + ";\n";
}

// Two triangles over a square: vertices 0 1 / 2 3, the edge 1 from vertex 1 to vertex 2 between
// them. Without its faces.
inline std::string squareEdges(const std::string& marks = "00000") {
    const auto mark = [&](std::size_t i) { return std::string(" ") + marks[i]; };
    return edgeCount(5) + edgeRange("0:4", " 0 1" + mark(0) + " 1 2" + mark(1) + " 2 0" + mark(2) +
                                               " 1 3" + mark(3) + " 3 2" + mark(4));
}
inline std::string squareVertices(const std::string& lastHeight = "0") {
    return vertexCount(4) + vertexRange("0:3", " 0 0 0 1 0 0 0 1 0 1 1 " + lastHeight);
}
