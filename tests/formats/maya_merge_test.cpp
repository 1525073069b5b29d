// Maya scenes as the host writes them, merged: the text that comes out, to the byte.

#include <gtest/gtest.h>

#include <string>

#include "tests/formats/maya_fixture.h"

namespace {

class MayaMerge : public MayaFixture {};

const std::string kSquareUVs = uvCount(6) + uvRange("0:5", " 0 0 1 0 0 1 1 0 1 1 0 1");

const std::string kSquareFaces =
    faceCount(2) + faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5");

std::string ints(int first, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += " " + std::to_string(first + i);
    return text;
}

}  // namespace

TEST_F(MayaMerge, SharesEqualUVsOfAVertexAndMarksTheEdges) {
    EXPECT_EQ(
        merged(kSquareUVs + squareVertices() + squareEdges() + kSquareFaces),
        // Vertices in their order: 0, then 1 from its last corner, 2, 3.
        uvCount(4) +
            uvRange("0:3", " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 1.00000") +
            squareVertices() +
            // The edge between the faces is flat, so it is smooth; borders are hard.
            squareEdges("01000") + faceCount(2) +
            faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 1 3 2"));
}

TEST_F(MayaMerge, KeepsDifferentUVsOfAVertexApart) {
    const std::string uvs = uvCount(6) + uvRange("0:5", " 0 0 1 0 0 1 0.5 0 1 1 0 1");
    EXPECT_EQ(merged(uvs + squareVertices() + squareEdges() + kSquareFaces),
              uvCount(5) +
                  uvRange("0:4",
                          " 0.00000 0.00000 0.50000 0.00000 1.00000 0.00000 0.00000 1.00000"
                          " 1.00000 1.00000") +
                  squareVertices() + squareEdges("01000") + faceCount(2) +
                  faceRange("0:1", " f 3 0 1 2 mu 0 3 0 2 3 f 3 3 4 -2 mu 0 3 1 4 3"));
}

TEST_F(MayaMerge, RewindsTheFacesWhenTheExportMirrors) {
    BXVek::s_exportReverse = true;
    const std::string faces =
        faceCount(2) + faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5");
    EXPECT_EQ(
        merged(kSquareUVs + squareVertices() + squareEdges() + faces),
        uvCount(4) +
            uvRange("0:3", " 0.00000 0.00000 1.00000 0.00000 0.00000 1.00000 1.00000 1.00000") +
            squareVertices() + squareEdges("01000") + faceCount(2) +
            faceRange("0:1", " f 3 -3 -2 -1 mu 0 3 0 2 1 f 3 1 -5 -4 mu 0 3 1 2 3"));
}

TEST_F(MayaMerge, RewindsQuadsFromTheirFirstCornerOn) {
    BXVek::s_exportReverse = true;
    const std::string rest = vertexCount(4) + vertexRange("0:3", " 0 0 0 1 0 0 1 1 0 0 1 0");
    const std::string edges = edgeCount(4) + edgeRange("0:3", " 0 1 0 1 2 0 2 3 0 3 0 0");
    EXPECT_EQ(
        merged(uvCount(4) + uvRange("0:3", " 0 0 1 0 1 1 0 1") + rest + edges + faceCount(1) +
               faceRange("0:0", " f 4 0 1 2 3 mu 0 4 0 1 2 3")),
        uvCount(4) +
            uvRange("0:3", " 0.00000 0.00000 1.00000 0.00000 1.00000 1.00000 0.00000 1.00000") +
            rest + edges + faceCount(1) + faceRange("0:0", " f 4 -4 -3 -2 -1 mu 0 4 0 3 2 1"));
}

TEST_F(MayaMerge, WritesFacesWithoutUVsInTheirShortForm) {
    const std::string faces = faceCount(2) + faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2");
    const std::string scene = squareVertices() + squareEdges("01000") + faces;
    EXPECT_EQ(merged(squareVertices() + squareEdges() + faces), scene);
}

TEST_F(MayaMerge, LeavesUVsAloneThatNoFaceUses) {
    const std::string uvs = uvCount(1) + uvRange("0:0", "  .5   .25 ");
    const std::string faces = faceCount(2) + faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2");
    EXPECT_EQ(merged(uvs + squareVertices() + squareEdges() + faces),
              uvs + squareVertices() + squareEdges("01000") + faces);
}

TEST_F(MayaMerge, GivesACornerWithoutAUVThePointZero) {
    const std::string faces = faceCount(2) + faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5");
    EXPECT_EQ(merged(kSquareUVs + squareVertices() + squareEdges() + faces),
              uvCount(6) +
                  uvRange("0:5",
                          " 0.00000 0.00000 1.00000 0.00000 0.00000 0.00000 0.00000 1.00000"
                          " 0.00000 0.00000 1.00000 1.00000") +
                  squareVertices() + squareEdges("01000") + faceCount(2) +
                  faceRange("0:1", " f 3 0 1 2 mu 0 3 0 2 4 f 3 3 4 -2 mu 0 3 1 5 3"));
}

TEST_F(MayaMerge, CutsTheUVsIntoRangesOf250) {
    // 200 triangles that share nothing.
    std::string uvs, vertices, edges, faces;
    for (int i = 0; i < 200; ++i) {
        uvs += " 0 0 1 0 0 1";
        vertices += " 0 0 0 1 0 0 0 1 0";
        edges += " " + std::to_string(3 * i) + " " + std::to_string(3 * i + 1) + " 0 " +
                 std::to_string(3 * i + 1) + " " + std::to_string(3 * i + 2) + " 0 " +
                 std::to_string(3 * i + 2) + " " + std::to_string(3 * i) + " 0";
        faces += " f 3" + ints(3 * i, 3) + " mu 0 3" + ints(3 * i, 3);
    }
    const std::string text = merged(
        uvCount(600) + uvRange("0:599", uvs) + vertexCount(600) + vertexRange("0:599", vertices) +
        edgeCount(600) + edgeRange("0:599", edges) + faceCount(200) + faceRange("0:199", faces));
    std::string headers;
    for (std::size_t at = 0; (at = text.find("\tsetAttr", at)) != std::string::npos; ++at) {
        headers += text.substr(at, text.find('\n', at) - at + 1);
    }
    EXPECT_EQ(headers, uvCount(600) +
                           "\tsetAttr \".uvst[0].uvsp[0:249]\" -type \"float2\"\n"
                           "\tsetAttr \".uvst[0].uvsp[250:499]\" -type \"float2\"\n"
                           "\tsetAttr \".uvst[0].uvsp[500:599]\" -type \"float2\"\n" +
                           vertexCount(600) + "\tsetAttr \".vt[0:599]\"\n" + edgeCount(600) +
                           "\tsetAttr \".ed[0:164]\"\n\tsetAttr \".ed[165:329]\"\n"
                           "\tsetAttr \".ed[330:494]\"\n\tsetAttr \".ed[495:599]\"\n" +
                           faceCount(200) + "\tsetAttr \".fc[0:199]\" -type \"polyFaces\"\n");
}

TEST_F(MayaMerge, CutsTheFacesIntoRangesOf500) {
    std::string vertices = " 0 0 0 1 0 0 0 1 0", edges = " 0 1 0 1 2 0 2 0 0", faces;
    for (int i = 0; i < 1001; ++i) faces += " f 3 0 1 2";
    const std::string text =
        merged(vertexCount(3) + vertexRange("0:2", vertices) + edgeCount(3) +
               edgeRange("0:2", edges) + faceCount(1001) + faceRange("0:1000", faces));
    EXPECT_NE(text.find(".fc[0:499]\" -type"), std::string::npos);
    EXPECT_NE(text.find(" f 3 0 1 2;\n\tsetAttr \".fc[500:999]\" -type"), std::string::npos);
    EXPECT_NE(
        text.find(" f 3 0 1 2;\n\tsetAttr \".fc[1000:1000]\" -type \"polyFaces\"\n f 3 0 1 2;\n"),
        std::string::npos);
}

TEST_F(MayaMerge, WritesAThingOnceAtTheFirstPlaceThatHasIt) {
    // Edges, text, the rest of the edges and the faces.
    EXPECT_EQ(merged(edgeCount(5) + edgeRange("0:1", " 0 1 0 1 2 0") + "\tfirst\n" +
                     edgeRange("2:4", " 2 0 0 1 3 0 3 2 0") + faceCount(2) + "\tsecond\n" +
                     squareVertices() + faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2") + "third"),
              squareEdges("01000") + "\tfirst\n" + faceCount(2) +
                  faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2") + "\tsecond\n" + squareVertices() +
                  "third");
}

TEST_F(MayaMerge, WritesUVsEdgesAndFacesInThisOrderAtOnePlace) {
    const std::string faces =
        faceCount(2) + faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5");
    const std::string text = merged(squareVertices() + faces + squareEdges() + kSquareUVs);
    const std::size_t uvs = text.find("uvsn"), edges = text.find("\".ed\""),
                      at = text.find("\".fc\"");
    EXPECT_LT(uvs, edges);
    EXPECT_LT(edges, at);
    EXPECT_EQ(text.find("\".vt\""), squareVertices().find("\".vt\""));
}

TEST_F(MayaMerge, KeepsABlankLineBetweenStatements) {
    EXPECT_EQ(merged(edgeCount(5) + "\n" + edgeRange("0:4", " 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0")),
              squareEdges() + "\n");
}

TEST_F(MayaMerge, CopiesWhatItDoesNotRecognise) {
    const std::string text =
        "//Maya ASCII 8.5 scene\r\nrequires maya \"8.5\";\n\n"
        "createNode transform -n \"a\";\n\tsetAttr \".t\" -type \"double3\" 1 2 3 ;\n"
        "\tsetAttr \".r\" -type \"double3\" 1 2 3 ;\n\tsetAttr \".s\" -type \"double3\" 1 2 3 ;\n"
        "createNode mesh -n \"b\";\n\tsetAttr \".n[0:1]\" -type \"float3\" 1e+20 0 0 1 0 0;\n"
        "\tsetAttr -s 2 \".pt[0:1]\" -type \"float3\" 1e-05 2 3 1 2 3;\n"
        "\tsetAttr \".uvst[1].uvsp[0:1]\" -type \"float2\" 0 0 1 1;\n no line end";
    EXPECT_EQ(merged(text), text);
}

// Required(R63)
TEST_F(MayaMerge, EndsTheTextAtItsEndLine) {
    EXPECT_EQ(merged("a\nb\n// End of scene.ma\nc\n"), "a\nb\n");
    EXPECT_EQ(merged("a\n \t// END OF x"), "a\n");
    EXPECT_EQ(merged("a // End of \n// End ofx\n//End of \n"),
              "a // End of \n// End ofx\n//End of \n");
    // What follows it is not even looked at.
    EXPECT_EQ(merged("a\n// End of x\n" + edgeCount(99)), "a\n");
}

TEST_F(MayaMerge, ReadsNumbersUpToTheirExponent) {
    const std::string uvs = uvCount(6) + uvRange("0:5", " 0 0 1e-05 0 0 1 2e+10 0 3E5 1 0 1");
    EXPECT_EQ(merged(uvs + squareVertices() + squareEdges() + kSquareFaces),
              uvCount(5) +
                  uvRange("0:4",
                          " 0.00000 0.00000 2.00000 0.00000 1.00000 0.00000 0.00000 1.00000"
                          " 3.00000 1.00000") +
                  squareVertices() + squareEdges("01000") + faceCount(2) +
                  faceRange("0:1", " f 3 0 1 2 mu 0 3 0 2 3 f 3 3 4 -2 mu 0 3 1 4 3"));
}

TEST_F(MayaMerge, RecognisesStatementsInAnyLetterCaseAndIndentation) {
    const std::string edges =
        "  \tSETATTR -s 5 \".ED\";\nsetattr \".Ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;\n";
    EXPECT_EQ(merged(edges), squareEdges());
}

TEST_F(MayaMerge, SeparatesValuesByBlanksTabsAndLineEnds) {
    EXPECT_EQ(merged(edgeCount(5) +
                     "\tsetAttr \".ed[0:4]\"  0\t1 \r\n\r\n 0 1\n2 0\t\t2 0 0 1\n3 0 3 2 0 ;\r\n"),
              squareEdges());
    EXPECT_EQ(merged(edgeCount(5) + "\tsetAttr \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0"
                                    "\n\n;  \t\n"),
              squareEdges());
}

TEST_F(MayaMerge, TakesRangesInAnyOrder) {
    EXPECT_EQ(merged(edgeCount(5) + edgeRange("3:4", " 1 3 0 3 2 0") + edgeRange("0", " 0 1 0") +
                     edgeRange("1:2", " 1 2 0 2 0 0")),
              squareEdges());
    const std::string faces = faceCount(3) + faceRange("2", " f 3 0 1 2 mu 0 3 0 1 2") +
                              faceRange("0:1", " f 3 3 4 -2 mu 0 3 3 4 5 f 3 1 2 0 mu 0 3 1 2 0");
    const std::string text = merged(kSquareUVs + squareVertices() + squareEdges() + faces);
    EXPECT_NE(text.find("]\" -type \"polyFaces\"\n f 3 3 4 -2 mu 0 3 1 3 2 f 3 1 2 0 mu 0 3 1 2 0"
                        " f 3 0 1 2 mu 0 3 0 1 2;\n"),
              std::string::npos)
        << text;
}

TEST_F(MayaMerge, PutsVerticesThatComeInAnotherOrderInTheirPlaces) {
    // Folded at the edge between the two faces, so that another order would make it smooth.
    const std::string faces = faceCount(2) + faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2");
    const std::string inOrder = merged(squareVertices("9") + squareEdges() + faces);
    const std::string text = merged(vertexCount(4) + vertexRange("2:3", " 0 1 0 1 1 9") +
                                    vertexRange("0:1", " 0 0 0 1 0 0") + squareEdges() + faces);
    EXPECT_EQ(text.substr(text.find(".ed")), inOrder.substr(inOrder.find(".ed")));
    EXPECT_EQ(inOrder.find(" 1 2 1"), std::string::npos) << "hard";
    EXPECT_NE(merged(squareVertices("0") + squareEdges() + faces).find(" 1 2 1"),
              std::string::npos);
}

TEST_F(MayaMerge, MarksEveryEdgeHardWithoutVertices) {
    const std::string faces = faceCount(2) + faceRange("0:1", " f 3 0 1 2 f 3 3 4 -2");
    EXPECT_EQ(merged(squareEdges("11111") + faces), squareEdges("00000") + faces);
}

TEST_F(MayaMerge, GoesOnBehindASemicolonOnTheSameLine) {
    EXPECT_EQ(merged("\tsetAttr -s 5 \".ed\";setAttr \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0; "
                     "text\nmore"),
              squareEdges() + " text\nmore");
    EXPECT_EQ(
        merged("\tsetAttr -s 5 \".ed\"; \tsetAttr \".ed[0:4]\" 0 1 0 1 2 0 2 0 0 1 3 0 3 2 0;"),
        squareEdges());
}

// Required(R64)
TEST_F(MayaMerge, DoesNotRecogniseWhatOnlyMayaWrites) {
    // A count with its range, and a count with the number of corners.
    const std::string text =
        "createNode mesh -n \"a\";\n"
        "\tsetAttr \".uvst[0].uvsn\" -type \"string\" \"map1\";\n"
        "\tsetAttr -s 4 \".uvst[0].uvsp[0:3]\" -type \"float2\" 0 0 1 0 0 1 1 1;\n"
        "\tsetAttr -s 4 \".vt[0:3]\"  0 0 0 1 0 0 0 1 0 1 1 0;\n"
        "\tsetAttr -s 4 \".ed[0:3]\"  0 1 0 1 2 0 2 3 0 3 0 0;\n"
        "\tsetAttr -ch 4 \".fc[0]\" -type \"polyFaces\" \n\t\tf 4 0 1 2 3\n\t\tmu 0 4 0 1 2 3;\n"
        "\tsetAttr -s 9 -ch 36 \".fc\";\n";
    EXPECT_EQ(merged(text.substr(0, text.find("\tsetAttr -ch"))),
              text.substr(0, text.find("\tsetAttr -ch")));
    EXPECT_EQ(merged(text), text);
}

TEST_F(MayaMerge, TakesTheEndLineOnlyAtALinesBeginning) {
    const std::string text =
        vertexCount(0).substr(0, vertexCount(0).size() - 1) + " // End of x\nmore\n";
    EXPECT_EQ(merged(text), text);
}

TEST_F(MayaMerge, CopiesWhatOnlyLooksLikeAStatement) {
    for (const char* text :
         {"\tsetAttr -s -5 \".ed\";\n", "\tsetAttr -s \".ed\";\n",
          "\tsetAttr \".fc[0]\" foo 3 0 1 2;\n", "\tsetAttr \".fc[-1]\" f 3 0 1 2;\n"}) {
        EXPECT_EQ(merged(text), text);
        EXPECT_EQ(split(text), text);
    }
    const std::string withoutCorners =
        "\tsetAttr -s 1 -ch \".fc[0]\" -type \"polyFaces\" f 3 0 1 2;\n";
    EXPECT_EQ(split(withoutCorners), withoutCorners);
}

TEST_F(MayaMerge, LooksIntoMeshNodesAlone) {
    const std::string edges = edgeCount(1) + edgeRange("0:0", "  0  1  1");
    const std::string written = edgeCount(1) + edgeRange("0:0", " 0 1 0");
    const std::string text =
        "createNode transform -n \"a\";\n" + edges + "createNode mesh -n \"b\" -p \"a\";\n" +
        edges + "createNode meshVarGroup;\n" + edges + "createNode subdiv -n \"mesh\";\n" + edges +
        "CREATENODE Mesh;\n" + edges;
    EXPECT_EQ(merged(text),
              "createNode transform -n \"a\";\n" + edges + "createNode mesh -n \"b\" -p \"a\";\n" +
                  written + "createNode meshVarGroup;\n" + edges +
                  "createNode subdiv -n \"mesh\";\n" + edges + "CREATENODE Mesh;\n" + written);
}

TEST_F(MayaMerge, TreatsEachMeshByItself) {
    const std::string mesh = kSquareUVs + squareVertices() + squareEdges() + kSquareFaces;
    const std::string once = merged(mesh);
    EXPECT_EQ(merged("createNode mesh;\n" + mesh + "createNode mesh;\n" + mesh),
              "createNode mesh;\n" + once + "createNode mesh;\n" + once);
    EXPECT_EQ(merged(mesh + "createNode mesh;\n" + mesh), once + "createNode mesh;\n" + once);
}

TEST_F(MayaMerge, TakesAFaceRangeOfFaceDataAlone) {
    const std::string field = "\tsetAttr \".fc[0]\"  0;\n";
    EXPECT_EQ(merged(field), field);
    const std::string typed = "\tsetAttr \".fc[0]\" -type \"float2\" 0 1;\n";
    EXPECT_EQ(merged(typed), typed);
    const std::string broken = "\tsetAttr \".fc[0]\"\n\t\t0;\n";
    EXPECT_EQ(merged(broken), broken);
    const std::string text =
        merged(squareEdges() + faceCount(1) + "\tsetAttr \".fc[0]\"\n\t\tf 3 0 1 2;\n");
    EXPECT_EQ(text, squareEdges() + faceCount(1) + faceRange("0:0", " f 3 0 1 2"));
}

TEST_F(MayaMerge, RecognisesTheLineBehindARangeThatIsNone) {
    const std::string field = "\tsetAttr \".fc[0]\"\n";
    EXPECT_EQ(merged(field + "\tsetAttr -s 0 \".ed\";\n"), field + edgeCount(0));
}

TEST_F(MayaMerge, RecognisesTheLineBehindATypeThatIsCutOff) {
    for (const char* range : {"\tsetAttr \".fc[0]\" -type\n", "\tsetAttr \".fc[0]\"\n -type \r\n",
                              "\tsetAttr \".uvst[0].uvsp[0]\" -type\n"}) {
        const std::string field = range;
        EXPECT_EQ(merged(field + "\tsetAttr -s 0 \".ed\"  ;\n"), field + edgeCount(0));
        EXPECT_EQ(merged(field + "// End of x\nafter\n"), field);
    }
    // What stands behind the word on its line begins none.
    const std::string inside =
        "\tsetAttr \".fc[0]\"\n-type // End of x\n-type setAttr -s 0 \".ed\"  ;\n";
    EXPECT_EQ(merged(inside), inside);
    EXPECT_EQ(merged(squareEdges() + "\tsetAttr \".fc[0]\" -type\n\"polyFaces\"\n f 3 0 1 2;\n"),
              squareEdges() + faceCount(1) + faceRange("0:0", " f 3 0 1 2"));
}

TEST_F(MayaMerge, WritesAnEmptyThingAsItsCountAlone) {
    EXPECT_EQ(merged("\tsetAttr -s 0 \".ed\"  ;\n\tsetAttr -s 0 \".fc\";\nx"),
              edgeCount(0) + faceCount(0) + "x");
}

TEST_F(MayaMerge, RejectsWhatItCannotOpen) {
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInMayaFile((m_folder / "missing.ma").c_str()));
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInMayaFile(m_folder.path().c_str()));
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInMayaFile(BXString()));
    EXPECT_TRUE(mergeRefuses(""));
}

TEST_F(MayaMerge, DropsTheVolumeOfAPath) {
    writeFile(path(), "a\n// End of a\n");
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVsInMayaFile(("Disk:" + path()).c_str()));
    EXPECT_EQ(readFile(path()), "a\n");
}
