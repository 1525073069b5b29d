// Scenes that contradict themselves, or that the operation cannot do justice to: refused, and left
// as they were.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/formats/maya_fixture.h"
#include "tests/support/allocation_record.h"

namespace {

class MayaRefusal : public MayaFixture {
protected:
    // Refused by both, in a mesh that is sound without it.
    void expectRefused(const std::string& text) const {
        EXPECT_TRUE(mergeRefuses(text)) << text;
        EXPECT_TRUE(splitRefuses(text)) << text;
    }
    void expectTaken(const std::string& text) const {
        EXPECT_FALSE(mergeRefuses(text)) << text;
        EXPECT_FALSE(splitRefuses(text)) << text;
    }
};

// Faces over the square's edges, and three UV points.
std::string withFaces(const std::string& faces, const std::string& range = "0:0") {
    return uvCount(3) + uvRange("0:2", " 0 0 1 0 0 1") + squareEdges() + faceRange(range, faces);
}

}  // namespace

TEST_F(MayaRefusal, OfACountThatDiffersFromItsEntries) {
    expectRefused(uvCount(2) + uvRange("0:2", " 0 0 1 0 0 1"));
    expectRefused(uvCount(4) + uvRange("0:2", " 0 0 1 0 0 1"));
    expectRefused(uvCount(4));
    expectRefused(faceCount(1));
    expectRefused(faceCount(2) + withFaces(" f 3 0 1 2"));
    EXPECT_TRUE(mergeRefuses(edgeCount(2) + edgeRange("0:0", " 0 1 0")));
    EXPECT_TRUE(mergeRefuses(edgeCount(1)));
    EXPECT_TRUE(mergeRefuses(vertexCount(2) + vertexRange("0:0", " 0 1 0")));
    expectTaken(withFaces(" f 3 0 1 2"));
}

TEST_F(MayaRefusal, OfTwoCountsThatDiffer) {
    expectRefused(faceCount(2) + withFaces(" f 3 0 1 2") + faceCount(1));
    expectRefused(edgeCount(4) + squareEdges());
    expectRefused(uvCount(4) + uvCount(1) + uvRange("0:1", " 0 0 1 0"));
    EXPECT_TRUE(mergeRefuses(uvCount(1) + uvCount(2) + uvRange("0:1", " 0 0 1 0")));
    EXPECT_TRUE(mergeRefuses(vertexCount(3) + squareVertices()));
    expectTaken(uvCount(2) + uvCount(2) + uvRange("0:1", " 0 0 1 0"));
}

TEST_F(MayaRefusal, OfGapsAndOverlaps) {
    expectRefused(uvRange("1:1", " 0 0"));
    expectRefused(uvRange("0:0", " 0 0") + uvRange("2:2", " 0 0"));
    expectRefused(uvRange("0:1", " 0 0 1 1") + uvRange("1:2", " 0 0 1 1"));
    expectRefused(uvRange("0:0", " 0 0") + uvRange("0:0", " 0 0"));
    expectTaken(uvRange("1:1", " 0 0") + uvRange("0:0", " 0 0"));
}

TEST_F(MayaRefusal, OfTheWrongNumberOfValues) {
    expectRefused(uvRange("0:1", " 0 0 1"));
    expectRefused(uvRange("0:1", " 0 0 1 1 2"));
    expectRefused(uvRange("0:1", ""));
    expectRefused(uvRange("2:1", " 0 0"));
    EXPECT_TRUE(mergeRefuses(edgeRange("0:0", " 0 1")));
    EXPECT_TRUE(mergeRefuses(vertexRange("0:0", " 0 1 2 3")));
    expectRefused(withFaces(" f 3 0 1 2 f 3 0 1 2"));
    expectRefused(withFaces(" f 3 0 1 2", "0:1"));
    expectRefused(withFaces(" f 3 0 1"));
    expectRefused(withFaces(" f 3 0 1 2 0"));
    expectRefused("\tsetAttr -s 0 \".fc\" 7;\n");
}

TEST_F(MayaRefusal, OfValuesThatAreNoNumbers) {
    for (const char* value : {"x", "-", ".", "\"0\"", "nan", "inf", "//", "e5"}) {
        expectRefused(uvRange("0:0", std::string(" 0 ") + value));
    }
    expectRefused(uvRange("0:0", " 0 1" + std::string(60, '0')));
    expectRefused(uvRange("0:0", " 0 " + std::string(10000, '1')));
    expectTaken(uvRange("0:0", " 0 0." + std::string(3000, '1')));
    expectTaken(uvRange("0:0", " 0x 1.5f"));
}

TEST_F(MayaRefusal, OfAQuoteInAValue) {
    expectRefused(uvRange("0:0", " 0 0\";\""));
    expectRefused(withFaces(" f 3 0 1 2\"x;"));
    // Behind the ';' it is text like any other.
    expectTaken(withFaces(" f 3 0 1 2 mu 0 3 0 1 2;\";\""));
}

TEST_F(MayaRefusal, OfANumberBeyondAPieceOfTheText) {
    expectRefused(uvRange("0:0", " 0 0." + std::string(300000, '0')));
    expectTaken(uvRange("0:0", " 0 0." + std::string(3000, '0')));
}

TEST_F(MayaRefusal, OfUnknownWordsInFaces) {
    for (const char* word : {"g", "fc", "mf", "mh", "m", "mux", "f4", "F", "MU", "hh", "0", "f"}) {
        expectRefused(withFaces(std::string(" f 3 0 1 2 ") + word + " 0 3 0 1 2"));
    }
    expectRefused(withFaces(" 3 0 1 2"));
}

TEST_F(MayaRefusal, OfAListThatIsNotAsLongAsItsLoop) {
    expectRefused(withFaces(" f 3 0 1 2 mu 0 2 0 1"));
    expectRefused(withFaces(" f 3 0 1 2 mu 0 4 0 1 2 0"));
    expectRefused(withFaces(" f 3 0 1 2 mu 0 0"));
    EXPECT_TRUE(splitRefuses(withFaces(" f 3 0 1 2 mu 1 2 0 1")));
    EXPECT_TRUE(splitRefuses(withFaces(" f 3 0 1 2 mc 0 4 0 1 2 3")));
    EXPECT_TRUE(splitRefuses(withFaces(" f 4 0 1 2 3 h 3 0 1 2 mu 0 4 0 1 2 0")));
}

TEST_F(MayaRefusal, OfAListThatClaimsAnotherLengthThanItHas) {
    expectRefused(withFaces(" f 3 0 1 2 mu 0 2 0 1 2"));
    expectRefused(withFaces(" f 3 0 1 2 mu 0 4 0 1 2"));
    for (const char* list : {" mc 0 2 0 1 2", " mu 1 4 0 1 2", " h 3 0 1 2 mu 0 2 0 1 2"}) {
        EXPECT_TRUE(splitRefuses(withFaces(std::string(" f 3 0 1 2") + list))) << list;
    }
    EXPECT_TRUE(splitRefuses(withFaces(" f 3 0 1 2 mu -1 3 0 1 2")));
}

TEST_F(MayaRefusal, OfAnEdgeBeyondTheCountInMayasSmallForm) {
    const std::string edges = "\tsetAttr -s 3 \".ed[0:2]\" 0 1 0 1 2 0 2 0 0;\n";
    EXPECT_TRUE(splitRefuses(edges + faceRange("0:0", " f 3 0 1 9")));
    EXPECT_FALSE(splitRefuses(edges + faceRange("0:0", " f 3 0 1 2")));
}

TEST_F(MayaRefusal, OfAVertexBelowZero) {
    EXPECT_TRUE(mergeRefuses(edgeCount(1) + edgeRange("0:0", " 0 -1 0")));
    EXPECT_TRUE(mergeRefuses(edgeCount(1) + edgeRange("0:0", " -1 0 0")));
}

TEST_F(MayaRefusal, OfTwoListsOfUVs) {
    expectRefused(withFaces(" f 3 0 1 2 mu 0 3 0 1 2 mu 0 3 0 1 2"));
}

TEST_F(MayaRefusal, OfIndicesOutOfRange) {
    for (const char* uv : {"3", "-1", "2147483647", "-2147483648", "99999999999999"}) {
        expectRefused(withFaces(std::string(" f 3 0 1 2 mu 0 3 0 1 ") + uv));
    }
    for (const char* edge : {"5", "-6", "2147483647", "-2147483648", "99999999999999"}) {
        expectRefused(withFaces(std::string(" f 3 0 1 ") + edge));
        expectRefused(withFaces(std::string(" f 4 0 1 2 ") + edge));
    }
    expectTaken(withFaces(" f 3 -5 4 -1 mu 0 3 0 1 2"));
    expectRefused(faceRange("0:0", " f 3 0 0 0 mu 0 3 0 0 0"));
    EXPECT_TRUE(mergeRefuses(edgeRange("0:0", " 0 -1 0")));
    EXPECT_TRUE(mergeRefuses(faceRange("0:0", " f 3 0 0 0")));
    EXPECT_FALSE(splitRefuses(faceRange("0:0", " f 3 0 0 0"))) << "its edges are not known";
}

TEST_F(MayaRefusal, OfAMissingSemicolon) {
    expectRefused("\tsetAttr \".uvst[0].uvsp[0:0]\" -type \"float2\" 0 0");
    expectRefused("\tsetAttr \".uvst[0].uvsp[0:0]\" -type \"float2\" 0 0\n// End of x\n");
    expectRefused("\tsetAttr -s 0 \".fc\"");
    expectRefused(squareEdges() + "\tsetAttr \".fc[0:0]\" -type \"polyFaces\" f 3 0 1 2");
    expectRefused(squareEdges() + "\tsetAttr \".fc[0:0]\" -type \"polyFaces\" f 3 0 1 2\n");
    expectRefused("\tsetAttr -s 0 \".fc\"\n\tsetAttr \".x\" 1;\n");
    EXPECT_TRUE(mergeRefuses("\tsetAttr \".ed[0:0]\" 0 1 0\n\tsetAttr \".x\" 1;\n"));
}

// Behind a statement that is written anew it would begin a line, and end the text the next time.
TEST_F(MayaRefusal, OfTheWordsOfTheEndLineBehindAStatement) {
    const auto followed = [](const std::string& statement, const std::string& by) {
        return statement.substr(0, statement.size() - 1) + by;
    };
    expectRefused(followed(faceCount(0), "// End of faces\nmore\n"));
    expectRefused(followed(faceCount(0), " \t// END OF faces"));
    EXPECT_TRUE(mergeRefuses(followed(edgeCount(0), " // End of edges\n")));
    EXPECT_FALSE(splitRefuses(followed(edgeCount(0), " // End of edges\n"))) << "copied";
    expectTaken(followed(vertexCount(0), " // End of vertices\n"));
    expectTaken(followed(faceCount(0), " // Ends faces\n"));
    expectTaken(followed(faceCount(0), "; // End of faces\n"));
}

TEST_F(MayaRefusal, OfTheMergeForFacesThatHaveNoFourSlots) {
    const std::string edges =
        edgeCount(6) + edgeRange("0:5", " 0 1 0 1 2 0 2 3 0 3 4 0 4 5 0 5 0 0");
    const std::string uvs = uvCount(1) + uvRange("0:0", " 0 0");
    for (const char* face :
         {" f 5 0 1 2 3 4", " f 2 0 1", " f 1 0", " f 4 0 1 2 3 h 3 0 1 2",
          " f 3 0 1 2 mu 1 3 0 0 0", " f 3 0 1 2 mc 0 3 0 0 0",
          " f 3 0 1 2 mu 0 3 0 0 0 mc 0 3 0 0 0", " f 3 0 1 2 mu 0 3 0 0 0 mu 1 3 0 0 0"}) {
        const std::string text = uvs + edges + faceRange("0:0", face);
        EXPECT_TRUE(mergeRefuses(text)) << face;
        EXPECT_FALSE(splitRefuses(text)) << face;
    }
    for (const char* face : {" f 0", " f -1", " f 2000000000 0 1 2", " f 3 0 1 2 h 0"}) {
        expectRefused(uvs + edges + faceRange("0:0", face));
    }
}

TEST_F(MayaRefusal, TakesNoMemoryForWhatAStatementClaims) {
    expectRefused(uvCount(2000000000) + uvRange("0:0", " 0 0"));
    expectRefused(uvRange("0:2147483647", " 0 0"));
    expectRefused(faceCount(2147483647));
    expectRefused(faceRange("0:2147483647", " f 3 0 1 2"));
    EXPECT_TRUE(mergeRefuses("\tsetAttr -s 2000000000 \".ed\";\n"));
    EXPECT_TRUE(mergeRefuses("\tsetAttr -s 2000000000 \".vt\";\n"));
    // A vertex with a large number needs no memory for all below it.
    const std::string text =
        merged(uvCount(3) + uvRange("0:2", " 0 0 1 1 0 0") + edgeCount(3) +
               edgeRange("0:2", " 2000000000 7 0 7 2147483647 0 2147483647 2000000000 0") +
               faceCount(1) + faceRange("0:0", " f 3 0 1 2 mu 0 3 0 1 2"));
    EXPECT_NE(text.find(" 1.00000 1.00000 0.00000 0.00000 0.00000 0.00000;"), std::string::npos);
    EXPECT_NE(text.find(" f 3 0 1 2 mu 0 3 1 0 2;"), std::string::npos);
}

TEST_F(MayaRefusal, TakesNoMoreMemoryForTheClaimsOfManyMeshes) {
    for (const char* claim : {".vt", ".ed", ".fc", ".uvst[0].uvsp"}) {
        std::string text;
        for (int i = 0; i < 20000; ++i) {
            text += "createNode mesh;\n\tsetAttr -s 2000000000 \"" + std::string(claim) + "\";\n";
        }
        writeFile(path(), text);
        using Operation = bool (*)(const BXString& path);
        for (const Operation operation :
             {BXUVMergeAlgo::mergeUVsInMayaFile, BXUVMergeAlgo::splitUVsInMayaFile}) {
            const BXString file(path().c_str());
            AllocationRecord record;
            const bool taken = operation(file);
            const std::size_t bytes = record.stopAndSum();
            EXPECT_EQ(readFile(path()), text);
            EXPECT_LT(bytes, 100 * text.size()) << claim;
            // What an operation takes for text it does not refuse.
            const bool isText =
                operation == BXUVMergeAlgo::mergeUVsInMayaFile
                    ? std::strcmp(claim, ".uvst[0].uvsp") == 0
                    : std::strcmp(claim, ".vt") == 0 || std::strcmp(claim, ".ed") == 0;
            EXPECT_EQ(taken, isText) << claim;
        }
    }
}

TEST_F(MayaRefusal, OfOneMeshIsOneOfTheScene) {
    const std::string sound = "createNode mesh;\n" + withFaces(" f 3 0 1 2 mu 0 3 0 1 2");
    const std::string unsound = "createNode mesh;\n" + withFaces(" f 3 0 1 2 mu 0 3 0 1 3");
    expectTaken(sound + sound);
    expectRefused(sound + unsound);
    expectRefused(unsound + sound);
}
