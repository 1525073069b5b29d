// Maya scenes as the target application and the merge write them, split: the text that comes out,
// to the byte.

#include <gtest/gtest.h>

#include <string>

#include "tests/formats/maya_fixture.h"

namespace {

class MayaSplit : public MayaFixture {};

const std::string kFourPoints = " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 1.00000";

}  // namespace

TEST_F(MayaSplit, GivesEachCornerAPointOfItsOwn) {
    const std::string rest = squareVertices() + squareEdges("01000");
    EXPECT_EQ(split(uvCount(4) + uvRange("0:3", kFourPoints) + rest + faceCount(2) +
                    faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 1 3 2")),
              uvCount(6) +
                  uvRange("0:5",
                          " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 0.00000"
                          " 1.00000 1.00000 0.00000 1.00000") +
                  rest + faceCount(2) +
                  faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5"));
}

TEST_F(MayaSplit, ReadsWhatMayaWritesForSmallMeshes) {
    const std::string head =
        "createNode mesh -n \"a\";\n\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n";
    const std::string middle =
        "\tsetAttr \".cuvs\" -type \"string\" \"map1\";\n"
        "\tsetAttr -s 4 \".vt[0:3]\"  0 0 0 1 0 0 \n\t\t0 1 0 1 1 0;\n"
        "\tsetAttr -s 5 \".ed[0:4]\"  0 1 0 1 2 0 2 0 0 \n\t\t1 3 0 3 2 0;\n";
    EXPECT_EQ(
        split(head +
              "\tsetAttr -s 4 \".uvst[0].uvsp[0:3]\" -type \"float2\" 0 0 1 0 0 1 1\n\t\t 1;\n" +
              middle +
              "\tsetAttr -s 2 -ch 6 \".fc[0:1]\" -type \"polyFaces\" \n\t\tf 3 0 1 2\n"
              "\t\tmu 0 3 0 1 2\n\t\tf 3 3 4 -2\n\t\tmu 0 3 1 3 2;\n"
              "\tsetAttr \".cd\" -type \"dataPolyComponent\" Index_Data Edge 0 ;\n"),
        head + uvCount(6) +
            uvRange("0:5",
                    " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 0.00000"
                    " 1.00000 1.00000 0.00000 1.00000") +
            middle + faceCount(2) +
            faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5") +
            "\tsetAttr \".cd\" -type \"dataPolyComponent\" Index_Data Edge 0 ;\n");
}

TEST_F(MayaSplit, ReadsWhatMayaWritesForLargerMeshes) {
    // Counts alone, then ranges, of which the first has a type and the later ones have none.
    const std::string text = split(
        "\tsetAttr -s 4 \".uvst[0].uvsp\";\n\tsetAttr \".uvst[0].uvsp[0:2]\" -type \"float2\" 0 0 "
        "1 0 0 1;\n"
        "\tsetAttr \".uvst[0].uvsp[3]\" 1 1;\n\tsetAttr -s 5 \".ed\";\n\tsetAttr \".ed[0:4]\" 0 1 "
        "0;\n"
        "\tsetAttr -s 2 -ch 6 \".fc\";\n\tsetAttr \".fc[0]\" -type \"polyFaces\" \n\t\tf 3 0 1 2\n"
        "\t\tmu 0 3 0 1 2;\n\tsetAttr \".fc[1]\"\n\t\tf 3 3 4 -2\n\t\tmu 0 3 1 3 2;\n");
    EXPECT_EQ(text, uvCount(6) +
                        uvRange("0:5",
                                " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 0.00000"
                                " 1.00000 1.00000 0.00000 1.00000") +
                        "\tsetAttr -s 5 \".ed\";\n\tsetAttr \".ed[0:4]\" 0 1 0;\n" + faceCount(2) +
                        faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5"));
}

TEST_F(MayaSplit, ReadsMeshesOfOneFaceWithAndWithoutTheirCornerCount) {
    const std::string uvs = "\tsetAttr -s 3 \".uvst[0].uvsp[0:2]\" -type \"float2\" 0 0 1 0 0 1;\n";
    const std::string result = uvCount(3) +
                               uvRange("0:2", " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000") +
                               faceCount(1) + faceRange("0:0", " f 3 0 1 2 mu 0 3 0 1 2");
    const std::string data = " -type \"polyFaces\" \n\t\tf 3 0 1 2\n\t\tmu 0 3 0 1 2;\n";
    EXPECT_EQ(split(uvs + "\tsetAttr -ch 3 \".fc[0]\"" + data), result);
    EXPECT_EQ(split(uvs + "\tsetAttr \".fc[0]\"" + data), result);
    EXPECT_EQ(split(uvs + "\tsetAttr -s 1 \".fc[0:0]\"" + data), result);
    EXPECT_EQ(split(uvs + "\tsetAttr -s 1 -ch 3 \".fc[0:0]\"" + data), result);
}

TEST_F(MayaSplit, PutsUVsAndFacesThatComeInAnotherOrderInTheirPlaces) {
    const std::string faces = faceCount(2) + faceRange("1:1", " f 3 3 4 -2 mu 0 3 1 3 2") +
                              faceRange("0:0", " f 3 0 1 2 mu 0 3 0 1 2");
    const std::string text = split(uvRange("2:3", " 0 1 1 1") + uvRange("0:1", " 0 0 1 0") + faces);
    EXPECT_NE(text.find(" 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 0.00000"
                        " 1.00000 1.00000 0.00000 1.00000;"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find(" f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5;"), std::string::npos);
}

TEST_F(MayaSplit, TakesACountedRangeOfUVsOnlyWithItsType) {
    const std::string untyped = "\tsetAttr -s 1 \".uvst[0].uvsp[0:0]\" 0 0;\n";
    EXPECT_EQ(split(untyped), untyped);
}

TEST_F(MayaSplit, RewindsTheFacesWhenTheImportMirrors) {
    BXVek::s_importReverse = true;
    EXPECT_EQ(split(uvCount(4) + uvRange("0:3", kFourPoints) + faceCount(2) +
                    faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 4 3 4 -2 5 mu 0 4 3 2 1 0")),
              uvCount(7) +
                  uvRange("0:6",
                          " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 1.00000"
                          " 0.00000 1.00000 1.00000 0.00000 0.00000 0.00000") +
                  faceCount(2) +
                  faceRange("0:1", " f 3 -3 -2 -1 mu 0 3 0 2 1 f 4 -6 1 -5 -4 mu 0 4 3 6 5 4"));
}

TEST_F(MayaSplit, WritesFacesOfAnyNumberOfCorners) {
    EXPECT_EQ(split(uvCount(1) + uvRange("0:0", " 0.5 0.25") + faceCount(2) +
                    faceRange("0:1", " f 5 0 1 2 3 4 mu 0 5 0 0 0 0 0 f 1 7 mu 0 1 0")),
              uvCount(6) +
                  uvRange("0:5",
                          " 0.50000 0.25000 0.50000 0.25000 0.50000 0.25000 0.50000 0.25000"
                          " 0.50000 0.25000 0.50000 0.25000") +
                  faceCount(2) +
                  faceRange("0:1", " f 5 0 1 2 3 4 mu 0 5 0 1 2 3 4 f 1 7 mu 0 1 5"));
    BXVek::s_importReverse = true;
    EXPECT_EQ(split(faceCount(1) + faceRange("0:0", " f 5 0 1 2 3 4")),
              faceCount(1) + faceRange("0:0", " f 5 -5 -4 -3 -2 -1"));
}

TEST_F(MayaSplit, CarriesHolesAlongEachLoopWithItsLists) {
    const std::string uvs = uvCount(2) + uvRange("0:1", " 0 0 1 1");
    const std::string points = uvRange("0:6",
                                       " 0.00000 0.00000 1.00000 1.00000 0.00000 0.00000 1.00000"
                                       " 1.00000 0.00000 0.00000 1.00000 1.00000 1.00000 1.00000");
    const std::string face = " f 4 0 1 2 3 mu 0 4 0 1 0 1 h 3 4 5 6 mu 0 3 0 1 1 mc 0 3 7 8 9";
    EXPECT_EQ(
        split(uvs + faceCount(1) + faceRange("0:0", face)),
        uvCount(7) + points + faceCount(1) +
            faceRange("0:0", " f 4 0 1 2 3 mu 0 4 0 1 2 3 h 3 4 5 6 mu 0 3 4 5 6 mc 0 3 7 8 9"));
    BXVek::s_importReverse = true;
    EXPECT_EQ(split(uvs + faceCount(1) + faceRange("0:0", face)),
              uvCount(7) + points + faceCount(1) +
                  faceRange("0:0",
                            " f 4 -4 -3 -2 -1 mu 0 4 0 3 2 1"
                            " h 3 -7 -6 -5 mu 0 3 4 6 5 mc 0 3 7 9 8"));
}

TEST_F(MayaSplit, CarriesFurtherListsAlongInTheirOrder) {
    EXPECT_EQ(
        split(uvCount(1) + uvRange("0:0", " 0 0") + faceCount(1) +
              faceRange("0:0", " f 3 0 1 2 mc 1 3 9 8 7 mu 2 3 4 5 6 mu 0 3 0 0 0 mu 1 3 3 2 1")),
        uvCount(3) + uvRange("0:2", " 0.00000 0.00000 0.00000 0.00000 0.00000 0.00000") +
            faceCount(1) +
            faceRange("0:0", " f 3 0 1 2 mc 1 3 9 8 7 mu 2 3 4 5 6 mu 0 3 0 1 2 mu 1 3 3 2 1"));
}

TEST_F(MayaSplit, GivesACornerWithoutAUVAPointOfItsOwnAtZero) {
    EXPECT_EQ(split(uvCount(1) + uvRange("0:0", " 0.5 0.25") + faceCount(2) +
                    faceRange("0:1", " f 3 0 1 2 mc 0 3 1 2 3 f 3 3 4 -2 mu 0 3 0 0 0")),
              uvCount(6) +
                  uvRange("0:5",
                          " 0.00000 0.00000 0.00000 0.00000 0.00000 0.00000 0.50000 0.25000"
                          " 0.50000 0.25000 0.50000 0.25000") +
                  faceCount(2) +
                  faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 mc 0 3 1 2 3 f 3 3 4 -2 mu 0 3 3 4 5"));
}

TEST_F(MayaSplit, KeepsTheUVTextOfAMeshThatUsesNone) {
    const std::string uvs =
        "\tsetAttr -s 2 \".uvst[0].uvsp[0:1]\" -type \"float2\"  .5 0 1e-05 1;\n";
    EXPECT_EQ(split(uvs + faceCount(1) + faceRange("0:0", "\n\t\tf 3 0 1 2\n\t\tmu 1 3 0 1 2")),
              uvs + faceCount(1) + faceRange("0:0", " f 3 0 1 2 mu 1 3 0 1 2"));
}

TEST_F(MayaSplit, DoesNotChangeASceneThatWasSplit) {
    const std::string scene =
        uvCount(4) + uvRange("0:3", kFourPoints) + faceCount(2) +
        faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 4 3 4 -2 5 mu 0 4 3 2 1 0");
    const std::string once = split(scene);
    EXPECT_EQ(split(once), once);
    BXVek::s_importReverse = true;
    const std::string rewound = split(scene);
    EXPECT_NE(rewound, once);
    EXPECT_EQ(split(once), rewound);
    EXPECT_EQ(split(rewound), once) << "rewound twice";
    BXVek::s_importReverse = false;
    EXPECT_EQ(split(rewound), rewound);
}

TEST_F(MayaSplit, NumbersPointsAnewWhereOneFaceHasNone) {
    const std::string text =
        split(uvCount(6) + uvRange("0:5", " 0 0 1 0 0 1 1 0 1 1 0 1") + faceCount(2) +
              faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5"));
    EXPECT_NE(text.find("\n 0.00000 0.00000 0.00000 0.00000 0.00000 0.00000 1.00000 0.00000"
                        " 1.00000 1.00000 0.00000 1.00000;"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find(" f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5;"), std::string::npos);
}

TEST_F(MayaSplit, NumbersPointsAnewThatAreUsedInAnotherOrder) {
    EXPECT_EQ(split(uvCount(3) + uvRange("0:2", " 0 0 1 0 0 1") + faceCount(1) +
                    faceRange("0:0", " f 3 0 1 2 mu 0 3 1 2 0")),
              uvCount(3) + uvRange("0:2", " 1.00000 0.00000 0.00000 1.00000 0.00000 0.00000") +
                  faceCount(1) + faceRange("0:0", " f 3 0 1 2 mu 0 3 0 1 2"));
}

TEST_F(MayaSplit, ReadsItsOwnOutputAndThatOfTheMerge) {
    const std::string scene = uvCount(6) + uvRange("0:5", " 0 0 1 0 0 1 1 0 1 1 0 1") +
                              squareVertices() + squareEdges() + faceCount(2) +
                              faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5");
    const std::string once = merged(scene);
    EXPECT_EQ(merged(split(once)), once);
}

// The merge leaves the count that Maya writes in a line of its own, and says another one beside it.
TEST_F(MayaSplit, GoesByTheOneOfSeveralCountsOfUVsThatIsRight) {
    const std::string scene = asMayaWritesIt(
        uvCount(6) + uvRange("0:5", " 0 0 1 0 0 1 1 0 1 1 0 1") + squareVertices() + squareEdges() +
        faceCount(2) + faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5"));
    const std::string once = merged(scene);
    EXPECT_NE(once.find("\tsetAttr -s 6 \".uvst"), std::string::npos);
    EXPECT_NE(once.find(";setAttr -s 4 \".uvst"), std::string::npos);
    const std::string apart = split(once);
    EXPECT_EQ(apart.find("\tsetAttr -s 6 \".uvst"), std::string::npos);
    EXPECT_NE(apart.find(";setAttr -s 6 \".uvst"), std::string::npos);
    EXPECT_EQ(split(apart), apart);
    EXPECT_EQ(merged(split(merged(apart))), merged(apart));
}

TEST_F(MayaSplit, ReadsTheMergesOutputOfACountBehindItsRange) {
    const std::string count = "\tsetAttr -s 6 \".uvst[0].uvsp\";\n";
    const std::string once =
        merged(uvRange("0:5", " 0 0 1 0 0 1 1 0 1 1 0 1") + count + squareEdges() + faceCount(2) +
               faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5"));
    EXPECT_LT(once.find(";setAttr -s 4 "), once.find(count)) << once;
    const std::string apart = split(once);
    EXPECT_EQ(apart.find(count), std::string::npos);
    EXPECT_EQ(split(apart), apart);
}

TEST_F(MayaSplit, KeepsCarriageReturnsOfTheTextItCopies) {
    EXPECT_EQ(split("createNode mesh;\r\n\tsetAttr -s 1 \".fc[0:0]\" -type \"polyFaces\" \r\n\t\tf "
                    "3 0 1 2;\r\n\tend\r\n"),
              "createNode mesh;\r\n" + faceCount(1) + faceRange("0:0", " f 3 0 1 2") + "\tend\r\n");
}

TEST_F(MayaSplit, LeavesEdgesAndVerticesWhereTheyAre) {
    const std::string text =
        "\tsetAttr -s 3 \".ed\";\n\tsetAttr \".ed[0:2]\"  0 1\n\t\t1 1 2 0 2 0 0;\n" +
        vertexCount(3) + vertexRange("0:2", " 0 0 0 1 0 0 1e-05 1 0");
    EXPECT_EQ(split(text), text);
}

TEST_F(MayaSplit, EndsTheTextAtItsEndLine) {
    EXPECT_EQ(split("a\n// End of scene.ma\nc\n"), "a\n");
}

TEST_F(MayaSplit, LooksIntoMeshNodesAlone) {
    const std::string text = "createNode gravityField -n \"g\";\n\tsetAttr \".fc[0]\"  0;\n" +
                             faceCount(1) + "createNode subdiv;\n" + uvCount(9);
    EXPECT_EQ(split(text), text);
}

TEST_F(MayaSplit, RejectsWhatItCannotOpen) {
    EXPECT_FALSE(BXUVMergeAlgo::splitUVsInMayaFile((m_folder / "missing.ma").c_str()));
    EXPECT_FALSE(BXUVMergeAlgo::splitUVsInMayaFile(m_folder.path().c_str()));
    EXPECT_FALSE(BXUVMergeAlgo::splitUVsInMayaFile(BXString()));
    EXPECT_TRUE(splitRefuses(""));
}
