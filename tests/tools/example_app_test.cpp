#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <random>

#include "config/bx_generic_config_file_parser.h"
#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"
#include "tests/tools/program.h"

// The target application is another program: it is started, and its files and its words are looked
// at. In its space, left-handed with z up, the right way out is a positive signed volume.

namespace {

const std::vector<float> kCube = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0,
                                  0, 0, 1, 1, 0, 1, 0, 1, 1, 1, 1, 1};
const std::vector<std::int32_t> kOutwards = {0, 4, 6, 2, 1, 3, 7, 5, 0, 1, 5, 4,
                                             2, 6, 7, 3, 0, 2, 3, 1, 4, 5, 7, 6};
const std::vector<std::int32_t> kInwards = {0, 2, 6, 4, 1, 5, 7, 3, 0, 4, 5, 1,
                                            2, 3, 7, 6, 0, 1, 3, 2, 4, 6, 7, 5};

ExchangeFile cubeOf(const std::vector<std::int32_t>& faces) {
    ExchangeFile file;
    file.vertices(kCube).faces(20001, faces);
    return file;
}

class ExampleApp : public testing::Test {
protected:
    ExampleApp() {
        makeFolders(m_tree / "VekHub");
        writeFile(m_tree / "VekHub/Vek_Application.txt", "Example");
        give("cube", cubeOf(kOutwards).end().bytes());
        list({"cube"});
    }

    std::string object(const std::string& name) const { return m_tree / name; }
    std::string edited(const std::string& name) const { return object(name) + "_edited.vek"; }
    std::string listText() const { return readFile(m_tree / "VekHub/Vek_ObjectList.txt"); }

    void give(const std::string& name, const std::string& bytes) const {
        writeFile(object(name) + ".vek", bytes);
    }
    void list(const std::vector<std::string>& names) const {
        std::string lines;
        for (const std::string& name : names) lines += object(name) + "\n";
        writeFile(m_tree / "VekHub/Vek_ObjectList.txt", lines);
    }

    // The exit code; what was said, on either stream, is in m_said.
    int run(const std::string& arguments) {
        const std::string program =
            VEK_BUILD_DIR "/apps/Example/Example.app/Contents/MacOS/Example";
        return start(shellWord(program) + " " + arguments);
    }
    int start(const std::string& command) { return runProgram(command, m_said); }
    int edit(const std::string& options = "") {
        return run("--tree " + shellWord(m_tree.path()) + " " + options + " edit");
    }

    // Refused with a sentence that holds these words, and nothing was changed.
    void expectRefused(const std::string& words, const std::string& options = "") {
        const std::string before = listText();
        EXPECT_EQ(edit(options), 1) << m_said;
        EXPECT_NE(m_said.find(words), std::string::npos) << m_said;
        EXPECT_EQ(listText(), before);
        EXPECT_FALSE(fileIsThere(edited("cube")));
    }
    bool says(const std::string& line) const {
        return ("\n" + m_said).find("\n" + line + "\n") != std::string::npos;
    }

    TempFolder m_tree;
    std::string m_said;
};

}  // namespace

TEST_F(ExampleApp, TwistsTheMeshAboutItsUpAxis) {
    ASSERT_EQ(edit(), 0) << m_said;
    const std::vector<float> positions = floatsAt(readFile(edited("cube")), 48, 24);
    // The bottom stays; a quarter turn from x to y moves each corner of the top to the next one.
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(positions[i], kCube[i]) << i;
    const std::vector<float> top = {1, 0, 1, 1, 1, 1, 0, 0, 1, 0, 1, 1};
    for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(positions[12 + i], top[i], 1e-6) << i;
}

TEST_F(ExampleApp, KeepsEveryOtherByte) {
    const std::string odd("\0\1\2\3\4\5\6\7\10", 9);
    std::string bytes = cubeOf(kOutwards)
                            .corners(25001, std::vector<std::int32_t>(24, 5))
                            .block(99999, 7, odd, 1.5f)
                            .block(3, 0, "")
                            .end()
                            .bytes();
    bytes[20] = 'x';  // in the part of the file header that readers skip
    give("cube", bytes);
    ASSERT_EQ(edit(), 0) << m_said;
    const std::string back = readFile(edited("cube"));
    ASSERT_EQ(back.size(), bytes.size());
    EXPECT_EQ(back.substr(0, 48), bytes.substr(0, 48));
    EXPECT_EQ(back.substr(48 + 96), bytes.substr(48 + 96));
    EXPECT_TRUE(says("kept_block: 99999")) << m_said;
}

TEST_F(ExampleApp, WritesTexturePathsWithBackslashes) {
    const auto texture = [](const std::string& a, const std::string& b, const std::string& c) {
        return cubeOf(kOutwards).map(45001, a).map(50001, b).map(55001, c, 0.5f).end().bytes();
    };
    give("cube", texture("/a/b c.png", "d/e", "/"));
    ASSERT_EQ(edit("--twist 0"), 0) << m_said;
    EXPECT_EQ(readFile(edited("cube")), texture("\\a\\b c.png", "d\\e", "\\"));
    EXPECT_TRUE(says("texture: \\a\\b c.png")) << m_said;
}

TEST_F(ExampleApp, RewritesTheListWithTheNewObjects) {
    give("other 'one'", cubeOf(kOutwards).end().bytes());
    writeFile(m_tree / "VekHub/Vek_ObjectList.txt",
              " " + object("cube") + "\t\r\n\r\n" + object("other 'one'"));
    ASSERT_EQ(edit(), 0) << m_said;
    EXPECT_EQ(listText(), object("cube") + "_edited\n" + object("other 'one'") + "_edited\n");
    EXPECT_TRUE(fileIsThere(edited("other 'one'")));
    EXPECT_TRUE(says("objects: 2")) << m_said;
}

TEST_F(ExampleApp, LeavesTheObjectItWasGiven) {
    ASSERT_EQ(edit(), 0) << m_said;
    EXPECT_EQ(readFile(object("cube") + ".vek"), cubeOf(kOutwards).end().bytes());
}

TEST_F(ExampleApp, ReportsWhatItWasGiven) {
    ASSERT_EQ(edit(), 0) << m_said;
    for (const char* fact :
         {"application: Example", "vertices: 8", "faces: 6", "up: z", "handedness: left",
          "box_min: 0 0 0", "box_max: 1 1 1", "height: 1", "open_edges: 0", "disagreeing_edges: 0",
          "crowded_edges: 0", "closed: yes", "signed_volume: 1", "twist_degrees: 90"}) {
        EXPECT_TRUE(says(fact)) << fact << "\n" << m_said;
    }
}

TEST_F(ExampleApp, RejectsAMirroredMeshThatWasNotRewound) {
    give("cube", cubeOf(kInwards).end().bytes());
    expectRefused("The mesh is inside out");
}

TEST_F(ExampleApp, RejectsAMeshOfWhichOnlyAPartWasRewound) {
    std::vector<std::int32_t> faces = kOutwards;
    std::swap(faces[1], faces[3]);
    give("cube", cubeOf(faces).end().bytes());
    expectRefused("wound against each other at 4 edges");
    expectRefused("wound against each other at 4 edges", "--known-flaws 3");
}

TEST_F(ExampleApp, AcceptsFlawsThatWereAnnounced) {
    std::vector<std::int32_t> faces = kOutwards;
    std::swap(faces[1], faces[3]);
    give("cube", cubeOf(faces).end().bytes());
    EXPECT_EQ(edit("--known-flaws 4"), 0) << m_said;
    EXPECT_TRUE(says("closed: no")) << m_said;
}

TEST_F(ExampleApp, AcceptsAnOpenMeshWoundEitherWay) {
    for (std::vector<std::int32_t> faces : {kOutwards, kInwards}) {
        faces.resize(20);
        give("cube", cubeOf(faces).end().bytes());
        EXPECT_EQ(edit(), 0) << m_said;
        EXPECT_TRUE(says("open_edges: 4")) << m_said;
        list({"cube"});
    }
}

TEST_F(ExampleApp, ReadsTheOtherTwoKindsOfFaces) {
    ExchangeFile repeated;
    repeated.vertices({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1})
        .faces(20002, {0, 2, 1, 1, 0, 1, 3, 3, 1, 2, 3, 3, 2, 0, 3, 3});
    give("cube", repeated.end().bytes());
    EXPECT_EQ(edit(), 0) << m_said;
    EXPECT_TRUE(says("signed_volume: 0.166666667")) << m_said;

    ExchangeFile triangles;
    triangles.vertices({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1})
        .faces(20003, {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3});
    give("cube", triangles.end().bytes());
    list({"cube"});
    EXPECT_EQ(edit(), 0) << m_said;
    EXPECT_TRUE(says("closed: yes")) << m_said;
}

TEST_F(ExampleApp, RejectsToWorkWhenAnotherApplicationIsSelected) {
    writeFile(m_tree / "VekHub/Vek_Application.txt", "Other\n");
    expectRefused("The selected application is \"Other\"");
}

TEST_F(ExampleApp, TakesItsIdInAnyLetterCase) {
    writeFile(m_tree / "VekHub/Vek_Application.txt", "EXAMPLE\n");
    EXPECT_EQ(edit(), 0) << m_said;
}

TEST_F(ExampleApp, RejectsAnEmptyList) {
    list({});
    expectRefused("names no object");
}

TEST_F(ExampleApp, RejectsAMissingTree) {
    EXPECT_EQ(run("--tree " + shellWord(m_tree / "none") + " edit"), 1);
    EXPECT_NE(m_said.find("The selected application is \"\""), std::string::npos) << m_said;
}

TEST_F(ExampleApp, RejectsAnObjectThatIsNotThere) {
    list({"none"});
    expectRefused("cannot be read");
}

TEST_F(ExampleApp, RejectsAFolderInPlaceOfAnObject) {
    makeFolders(object("folder") + ".vek");
    list({"folder"});
    expectRefused("cannot be read");
}

TEST_F(ExampleApp, RejectsAFileWithAnotherMagic) {
    std::string bytes = cubeOf(kOutwards).end().bytes();
    bytes[3] = 'B';
    give("cube", bytes);
    expectRefused("not a mesh exchange file");
}

TEST_F(ExampleApp, RejectsAVertexThatIsNotThere) {
    for (const std::int32_t vertex : {8, -2}) {
        std::vector<std::int32_t> faces = kOutwards;
        faces[5] = vertex;
        give("cube", cubeOf(faces).end().bytes());
        expectRefused("Face 1 of the mesh uses a vertex that is not there");
    }
}

TEST_F(ExampleApp, RejectsCountsThatTheBlocksDoNotHold) {
    ExchangeFile vertices;
    vertices.block(10001, 9, bytesOf(kCube)).faces(20001, kOutwards);
    give("cube", vertices.end().bytes());
    expectRefused("claims more vertices than it holds");

    ExchangeFile faces;
    faces.vertices(kCube).block(20001, 0x40000000, bytesOf(kOutwards));
    give("cube", faces.end().bytes());
    expectRefused("claims more faces than it holds");
}

TEST_F(ExampleApp, RejectsAPositionThatIsNotANumber) {
    std::vector<float> positions = kCube;
    positions[7] = std::nanf("");
    ExchangeFile file;
    file.vertices(positions).faces(20001, kOutwards);
    give("cube", file.end().bytes());
    expectRefused("not a number");
}

TEST_F(ExampleApp, RejectsEveryPrefixOfAFile) {
    const std::string whole = cubeOf(kOutwards).end().bytes();
    for (std::size_t size = 0; size < whole.size(); size += 3) {
        give("cube", whole.substr(0, size));
        ASSERT_EQ(edit(), 1) << size << " bytes: " << m_said;
    }
    EXPECT_FALSE(fileIsThere(edited("cube")));
}

TEST_F(ExampleApp, SurvivesMutatedFiles) {
    const std::string whole = cubeOf(kOutwards).map(45001, "a/b.png").end().bytes();
    std::mt19937 random(11);
    int refused = 0;
    for (int round = 0; round < 150; ++round) {
        std::string bytes = whole;
        for (int change = 0; change < 2; ++change) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        give("cube", bytes);
        list({"cube"});
        const int code = edit();
        ASSERT_TRUE(code == 0 || code == 1) << code << ": " << m_said;
        refused += code;
    }
    EXPECT_GT(refused, 10);
    EXPECT_LT(refused, 150);
}

TEST_F(ExampleApp, SurvivesAListOfAnyBytes) {
    std::mt19937 random(13);
    for (int round = 0; round < 50; ++round) {
        std::string bytes(300, ' ');
        for (char& byte : bytes) byte = static_cast<char>(random());
        writeFile(m_tree / "VekHub/Vek_ObjectList.txt", bytes);
        expectRefused("cannot be read");
    }
}

TEST_F(ExampleApp, ExplainsItselfWhenItIsStartedWrongly) {
    for (const char* arguments : {"fold", "--tree", "--twist x edit", "--known-flaws -1 edit",
                                  "--other 1 edit", "edit edit", "--tree '' edit"}) {
        EXPECT_EQ(run(arguments), 2) << arguments;
        EXPECT_EQ(m_said.rfind("usage: ", 0), 0u) << m_said;
    }
    EXPECT_EQ(run("--help"), 0);
}

TEST_F(ExampleApp, TakesItsSettingsFromTheTree) {
    makeFolders(m_tree / "VekApps/Example");
    const std::string settings = m_tree / "VekApps/Example/Example_Settings.txt";
    writeFile(settings, "known_flaws = 0\r\n TWIST = 0\n");
    ASSERT_EQ(edit(), 0) << m_said;
    EXPECT_NE(m_said.find("twist_degrees: 0\n"), std::string::npos);
    list({"cube"});
    ASSERT_EQ(edit("--twist 45"), 0) << m_said;
    EXPECT_NE(m_said.find("twist_degrees: 45\n"), std::string::npos) << "what is given goes first";
    writeFile(settings, "TWIST = a lot\n");
    EXPECT_EQ(edit(), 1);
    EXPECT_NE(m_said.find("TWIST or KNOWN_FLAWS"), std::string::npos);
}

TEST_F(ExampleApp, StaysOpenUntilItIsToldToQuit) {
    makeFolders(m_tree / "VekApps/Example");
    const std::string note = m_tree / "VekApps/Example/Example_Running.txt";
    const std::string tree = "--tree " + shellWord(m_tree.path());
    EXPECT_EQ(run(tree + " quit"), 1);
    EXPECT_EQ(m_said, "Example is not running.\n");
    const std::string program = VEK_BUILD_DIR "/apps/Example/Example.app/Contents/MacOS/Example";
    ASSERT_EQ(start("(" + shellWord(program) + " " + tree + "; echo ended > " +
                    shellWord(m_tree / "ended") + ") >/dev/null 2>&1 &"),
              0);
    for (int i = 0; i < 500 && !fileIsThere(note); ++i) usleep(10000);
    EXPECT_TRUE(fileIsThere(note));
    EXPECT_FALSE(fileIsThere(m_tree / "ended"));
    EXPECT_EQ(run(tree + " quit"), 0) << m_said;
    for (int i = 0; i < 500 && !fileIsThere(m_tree / "ended"); ++i) usleep(10000);
    EXPECT_TRUE(fileIsThere(m_tree / "ended"));
    EXPECT_EQ(run("--tree /no/such/folder"), 1);
}

// The scripts of its descriptor, in a tree of their own.
class ExampleScripts : public ExampleApp {
protected:
    ExampleScripts() {
        makeFolders(m_tree / "VekApps");
        EXPECT_EQ(start("cp -R " + shellWord(VEK_BUILD_DIR "/apps/Example") + " " +
                        shellWord(m_tree / "VekApps/Example")),
                  0);
    }

    std::string file(const std::string& name) const { return m_tree / ("VekApps/Example/" + name); }
    int script(const std::string& name) { return start("sh " + shellWord(file(name))); }
    std::string log() const { return readFile(file("Vek_InstallLog.txt")); }

    // The log of a failure, which ends with a NUL for a host that does not clear its block.
    std::string failure() const {
        const std::string text = log();
        EXPECT_FALSE(text.empty() || text.back() != '\0');
        return text.c_str();
    }
};

TEST_F(ExampleScripts, AreThoseOfTheDescriptor) {
    const std::string descriptor = readFile(file("Vek_Info.txt"));
    for (const char* line : {"LOCATE_COMMAND \"locate.sh\"\n", "INIT_COMMAND \"init.sh\"\n",
                             "EDIT_COMMAND \"edit.sh\"\n"}) {
        EXPECT_NE(descriptor.find(line), std::string::npos) << line;
    }
}

TEST_F(ExampleScripts, NoteWhereTheApplicationIsAndKeepOtherLines) {
    writeFile(file("Vek_Config.txt"), "APPS_UNLOCKED = TRUE\npath = \"/old\"\nX = 1\n");
    ASSERT_EQ(script("locate.sh"), 0) << m_said;
    EXPECT_EQ(readFile(file("Vek_Config.txt")),
              "PATH = \"" + file("Example.app") + "\"\nAPPS_UNLOCKED = TRUE\nX = 1\n");
    ASSERT_EQ(start("rm -r " + shellWord(file("Example.app"))), 0);
    EXPECT_EQ(script("locate.sh"), 1);
    EXPECT_EQ(readFile(file("Vek_Config.txt")), "APPS_UNLOCKED = TRUE\nX = 1\n");
}

TEST_F(ExampleScripts, InstallTheBridgeWhichThenEdits) {
    ASSERT_EQ(script("locate.sh"), 0) << m_said;
    EXPECT_EQ(start(shellWord(file("Example.app/Contents/MacOS/Example")) + " edit"), 1);
    EXPECT_EQ(m_said, "The bridge is not installed in this application.\n");
    ASSERT_EQ(script("init.sh"), 0) << m_said;
    EXPECT_EQ(log(), "");
    EXPECT_EQ(script("edit.sh"), 0) << m_said;
    EXPECT_TRUE(fileIsThere(edited("cube")));
    const std::string report = readFile(file("Example_Report.txt"));
    EXPECT_NE(report.find("faces: 6\n"), std::string::npos) << report;
    EXPECT_EQ(report.substr(report.size() - 13), "exit_code: 0\n");
    list({"missing"});
    EXPECT_EQ(script("edit.sh"), 1);
    EXPECT_NE(readFile(file("Example_Report.txt")).find("exit_code: 1\n"), std::string::npos);
}

TEST_F(ExampleScripts, ReadTheConfigurationAsTheBridgeDoes) {
    const std::string app = file("Example.app");
    for (const std::string& line :
         {"PATH = \"" + app + "\"", "path=\"" + app + "\"", " Path\t= \"" + app + "\"",
          "PATH = " + app, "X = 1\rPATH = \"" + app + "\"\rY = 2", "PATH:\"" + app + "\"",
          "PATH \"" + app + "\"", "PATHS = \"" + app + "\"", std::string("Y = 2")}) {
        writeFile(file("Vek_Config.txt"), "X = 1\n" + line + "\n");
        bool found = false;
        const BXString known = BXGenericConfigFileParser::findTokenInConfigFile(
            file("Vek_Config.txt").c_str(), "PATH", &found);
        EXPECT_EQ(script("init.sh"), 0) << m_said;
        EXPECT_EQ(log().empty(), found && known.unquoted() == BXString(app.c_str())) << line;
    }
}

TEST_F(ExampleScripts, SayInTheLogWhyTheyDidNotInstall) {
    EXPECT_EQ(script("init.sh"), 0);
    EXPECT_EQ(failure(), "It is not known where Example is. Locate it first.");
    writeFile(file("Vek_Config.txt"), "PATH = \"/no/such.app\"\n");
    EXPECT_EQ(script("init.sh"), 0);
    EXPECT_EQ(failure(), "Example is no longer where it was located: /no/such.app");
    ASSERT_EQ(script("locate.sh"), 0);
    writeFile(file("Example.app/Contents/Resources"), "in the way");
    EXPECT_EQ(script("init.sh"), 0);
    EXPECT_EQ(failure(), "The application's folder cannot be written: " +
                             file("Example.app/Contents/Resources"));
}
