#include "bridge/bx_vek_app_parser.h"

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

#include "foundation/bx_array.h"
#include "tests/support/temp_folder.h"

namespace {

struct Switch {
    const char* key;
    unsigned int bit;
    void (*callback)(const char*, void*);
};

const Switch kSwitches[] = {
    {"IMPORT_FLIP_X", 0x1, BXVekAppParser::parseIFlipX},
    {"IMPORT_FLIP_Y", 0x2, BXVekAppParser::parseIFlipY},
    {"IMPORT_FLIP_Z", 0x4, BXVekAppParser::parseIFlipZ},
    {"EXPORT_FLIP_X", 0x8, BXVekAppParser::parseEFlipX},
    {"EXPORT_FLIP_Y", 0x10, BXVekAppParser::parseEFlipY},
    {"EXPORT_FLIP_Z", 0x20, BXVekAppParser::parseEFlipZ},
    {"IMPORT_SWITCH_YZ", 0x40, BXVekAppParser::parseISwitchYZ},
    {"EXPORT_SWITCH_YZ", 0x80, BXVekAppParser::parseESwitchYZ},
    {"IMPORT_FLIP_NORMALS", 0x100, BXVekAppParser::parseIFlipN},
    {"EXPORT_FLIP_NORMALS", 0x200, BXVekAppParser::parseEFlipN},
    {"IMPORT_POLYGROUPS", 0x400, BXVekAppParser::parseIPolyGroups},
    {"IMPORT_MAT_AS_GROUPS", 0x800, BXVekAppParser::parseIMatAsGroups},
    {"GROUP_NSIDED_POLYS", 0x1000, BXVekAppParser::parseGroupNSidedPolys},
    {"NORMAL_MAP_FLIP_X", 0x2000, BXVekAppParser::parseNFlipX},
    {"NORMAL_MAP_FLIP_Y", 0x4000, BXVekAppParser::parseNFlipY},
    {"NORMAL_MAP_FLIP_Z", 0x8000, BXVekAppParser::parseNFlipZ},
    {"NORMAL_MAP_FLIP_XY", 0x10000, BXVekAppParser::parseNFlipXY},
    {"NORMAL_MAP_FLIP_VERT", 0x20000, BXVekAppParser::parseNFlipVert},
    {"IMPORT_MFLIP_X", 0x40000, BXVekAppParser::parseIMFlipX},
    {"IMPORT_MFLIP_Y", 0x80000, BXVekAppParser::parseIMFlipY},
    {"IMPORT_MFLIP_Z", 0x100000, BXVekAppParser::parseIMFlipZ},
    {"IMPORT_MSWITCH_YZ", 0x200000, BXVekAppParser::parseIMSwitchYZ},
    {"EXPORT_MFLIP_X", 0x400000, BXVekAppParser::parseEMFlipX},
    {"EXPORT_MFLIP_Y", 0x800000, BXVekAppParser::parseEMFlipY},
    {"EXPORT_MFLIP_Z", 0x1000000, BXVekAppParser::parseEMFlipZ},
    {"EXPORT_MSWITCH_YZ", 0x2000000, BXVekAppParser::parseEMSwitchYZ},
};

class VekAppParser : public testing::Test {
protected:
    bool parse(const std::string& descriptor) {
        const std::string path = m_folder / "Vek_Info.txt";
        writeFile(path, descriptor);
        return m_parser.parseFile(path.c_str());
    }

    TempFolder m_folder;
    BXVekAppParser m_parser;
};

void expectDefaults(const BXVekApp& app) {
    for (const BXString& text : {app.id, app.name, app.ext, app.tamplate, app.locateCommand,
                                 app.initCommand, app.editCommand}) {
        EXPECT_TRUE(text.isEmpty()) << text.c_str();
    }
    EXPECT_EQ(app.version, 1);
    EXPECT_EQ(app.ioPrefs, 0u);
}

}  // namespace

TEST(VekApp, BeginsWithItsDefaultsAndClearsToThem) {
    BXVekApp app;
    expectDefaults(app);
    app.id = app.name = app.ext = app.tamplate = "text";
    app.locateCommand = app.initCommand = app.editCommand = "text";
    app.version = 7;
    app.ioPrefs = 0x3FFFFFF;
    app.clear();
    expectDefaults(app);
}

void fill(BXVekApp& app, const std::string& mark) {
    int i = 0;
    for (BXString* text : {&app.id, &app.name, &app.ext, &app.tamplate, &app.locateCommand,
                           &app.initCommand, &app.editCommand}) {
        *text = (mark + std::to_string(i++)).c_str();
    }
    app.version = 3;
    app.ioPrefs = 5;
}

void expectFilled(const BXVekApp& app, const std::string& mark) {
    int i = 0;
    for (const BXString& text : {app.id, app.name, app.ext, app.tamplate, app.locateCommand,
                                 app.initCommand, app.editCommand}) {
        EXPECT_EQ(text, BXString((mark + std::to_string(i++)).c_str()));
    }
    EXPECT_EQ(app.version, 3);
    EXPECT_EQ(app.ioPrefs, 5u);
}

TEST(VekApp, CopiesDeeply) {
    BXVekApp app;
    fill(app, "first");
    BXVekApp copy(app), assigned;
    assigned = app;
    fill(app, "changed");
    expectFilled(copy, "first");
    expectFilled(assigned, "first");
}

TEST(VekApp, TableIsMadeAnewWithDefaults) {
    BXArray<BXVekApp> table(3);
    for (BXVekApp& app : table) fill(app, "old");
    table.reinit(5);
    ASSERT_EQ(table.size(), 5u);
    for (const BXVekApp& app : table) expectDefaults(app);
    table.reinit(0);
    EXPECT_TRUE(table.empty());
}

TEST_F(VekAppParser, CopiesTheWholeRecordAlsoOntoItself) {
    fill(m_parser, "one");
    const BXVekAppParser copy(m_parser);
    expectFilled(copy, "one");
    BXVekAppParser assigned;
    assigned = m_parser;
    expectFilled(assigned, "one");
    const BXVekAppParser& itself = assigned;
    assigned = itself;
    expectFilled(assigned, "one");
}

TEST_F(VekAppParser, ForgetsTheIdToo) {
    m_parser.id = "old";
    EXPECT_TRUE(parse("NAME a\n"));
    EXPECT_TRUE(m_parser.id.isEmpty());
}

TEST_F(VekAppParser, SetsAllTwentySixSwitchesTogether) {
    std::string descriptor;
    for (const Switch& entry : kSwitches) descriptor += std::string(entry.key) + " Yes\n";
    EXPECT_TRUE(parse(descriptor));
    EXPECT_EQ(m_parser.ioPrefs, 0x3FFFFFFu);
}

TEST_F(VekAppParser, KeepsWhatAKeyWithSeparatorsAloneDoesNotSet) {
    EXPECT_TRUE(parse("NAME a\nNAME =\nIMPORT_FLIP_X =\nEXPORT_FLIP_X No\nEXPORT_FLIP_X :\n"));
    EXPECT_EQ(m_parser.name, BXString("a"));
    EXPECT_EQ(m_parser.ioPrefs, 0u);
    EXPECT_TRUE(parse("IMPORT_FLIP_X\n"));
    EXPECT_EQ(m_parser.ioPrefs, 1u);
}

TEST_F(VekAppParser, CutsTheVersionTowardZero) {
    const auto versionOf = [&](const char* text) {
        EXPECT_TRUE(parse(std::string("VEK_VERSION ") + text + "\n"));
        return m_parser.version;
    };
    EXPECT_EQ(versionOf("1e1"), 10);
    EXPECT_EQ(versionOf("-2.9"), -2);
    EXPECT_EQ(versionOf("x"), 0);
}

TEST_F(VekAppParser, RejectsAnEmptyDescriptorAndKeepsTheDefaults) {
    m_parser.name = "from before";
    EXPECT_FALSE(parse(""));
    expectDefaults(m_parser);
}

TEST_F(VekAppParser, RejectsAMissingDescriptorAndKeepsTheDefaults) {
    m_parser.ioPrefs = 1;
    EXPECT_FALSE(m_parser.parseFile("/no/such/Vek_Info.txt"));
    expectDefaults(m_parser);
}

TEST_F(VekAppParser, ReadsNameExtensionAndASwitch) {
    EXPECT_TRUE(parse("NAME \"Maya\"\nEXTENSION \".ma\"\nIMPORT_FLIP_X TRUE\n"));
    EXPECT_EQ(m_parser.name, BXString("Maya"));
    EXPECT_EQ(m_parser.ext, BXString(".ma"));
    EXPECT_EQ(m_parser.ioPrefs, 0x1u);
}

TEST_F(VekAppParser, TakesTheLastLineOfAKey) {
    EXPECT_TRUE(parse("EXPORT_MSWITCH_YZ Yes\nEXPORT_MSWITCH_YZ No\nNAME one\nNAME two\n"));
    EXPECT_EQ(m_parser.ioPrefs & 0x2000000u, 0u);
    EXPECT_EQ(m_parser.name, BXString("two"));
}

TEST_F(VekAppParser, TellsNormalMapFlipXyFromFlipX) {
    EXPECT_TRUE(parse("NORMAL_MAP_FLIP_XY Yes\n"));
    EXPECT_EQ(m_parser.ioPrefs, 0x10000u);
    EXPECT_TRUE(parse("NORMAL_MAP_FLIP_X Yes\n"));
    EXPECT_EQ(m_parser.ioPrefs, 0x2000u);
}

TEST_F(VekAppParser, ReadsEveryTextKeyWithAndWithoutQuotes) {
    EXPECT_TRUE(
        parse("name: Some Name\nVEK_VERSION = 3.7\nExtension\t.Vek\nTAMPLATE \"t.txt\"\n"
              "LOCATE_COMMAND \"locate.sh\"\nINIT_COMMAND init.sh \"an argument\"\n"
              "EDIT_COMMAND=edit.app\r\n"));
    EXPECT_EQ(m_parser.name, BXString("Some Name"));
    EXPECT_EQ(m_parser.version, 3);
    EXPECT_EQ(m_parser.ext, BXString(".Vek"));
    EXPECT_EQ(m_parser.tamplate, BXString("t.txt"));
    EXPECT_EQ(m_parser.locateCommand, BXString("locate.sh"));
    EXPECT_EQ(m_parser.initCommand, BXString("init.sh \"an argument\""));
    EXPECT_EQ(m_parser.editCommand, BXString("edit.app"));
    EXPECT_TRUE(m_parser.id.isEmpty());
}

TEST_F(VekAppParser, SetsAndClearsTheBitOfEachSwitch) {
    unsigned int bit = 1;
    for (const Switch& entry : kSwitches) {
        EXPECT_EQ(entry.bit, bit) << entry.key;
        bit <<= 1;
        EXPECT_TRUE(parse(std::string(entry.key) + " Yes\n"));
        EXPECT_EQ(m_parser.ioPrefs, entry.bit) << entry.key;
        EXPECT_TRUE(parse(std::string(entry.key) + " Yes\n" + entry.key + "=false\n"));
        EXPECT_EQ(m_parser.ioPrefs, 0u) << entry.key;
    }
}

TEST_F(VekAppParser, TakesASwitchWithoutAValueForSet) {
    EXPECT_TRUE(parse("IMPORT_FLIP_Y\nEXPORT_FLIP_Z whatever\n"));
    EXPECT_EQ(m_parser.ioPrefs, 0x22u);
}

TEST_F(VekAppParser, IgnoresUnknownLines) {
    EXPECT_TRUE(parse("# a comment\n\n  NOT_A_KEY 1\n\tNAME x  \n"));
    EXPECT_EQ(m_parser.name, BXString("x"));
}

TEST_F(VekAppParser, ForgetsTheFormerDescriptor) {
    EXPECT_TRUE(parse("NAME a\nIMPORT_FLIP_X 1\nVEK_VERSION 2\n"));
    EXPECT_TRUE(parse("EXTENSION .ma\n"));
    EXPECT_TRUE(m_parser.name.isEmpty());
    EXPECT_EQ(m_parser.ioPrefs, 0u);
    EXPECT_EQ(m_parser.version, 1);
}

TEST_F(VekAppParser, CopiesTheRecordAndCanParseAfterwards) {
    EXPECT_TRUE(parse("NAME a\n"));
    BXVekAppParser copy(m_parser);
    EXPECT_EQ(copy.name, BXString("a"));
    BXVekAppParser assigned;
    assigned.ext = ".old";
    assigned = m_parser;
    EXPECT_EQ(assigned.name, BXString("a"));
    EXPECT_TRUE(assigned.ext.isEmpty());
    m_parser.clear();
    const std::string path = m_folder / "Vek_Info.txt";
    EXPECT_TRUE(copy.parseFile(path.c_str()));
    EXPECT_EQ(copy.name, BXString("a"));
}

TEST(VekAppParserCallbacks, DoNothingWithoutARecord) {
    for (const Switch& entry : kSwitches) entry.callback("Yes", nullptr);
    BXVekAppParser::parseName("x", nullptr);
    BXVekAppParser::parseVekVersion("1", nullptr);
    BXVekAppParser::parseExt("x", nullptr);
    BXVekAppParser::parseTamplate("x", nullptr);
    BXVekAppParser::parseLocateCommand("x", nullptr);
    BXVekAppParser::parseInitCommand("x", nullptr);
    BXVekAppParser::parseEditCommand("x", nullptr);
    // With one, each sets its own bit and no other.
    for (const Switch& entry : kSwitches) {
        BXVekApp app;
        entry.callback("Yes", &app);
        EXPECT_EQ(app.ioPrefs, entry.bit) << entry.key;
    }
}

TEST_F(VekAppParser, SurvivesRandomBytes) {
    std::mt19937 random(11);
    int read = 0;
    unsigned int flipped = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string bytes(1 + random() % 200, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        if (i % 2) bytes.insert(random() % bytes.size(), "\nIMPORT_FLIP_X\n");
        read += parse(bytes);
        EXPECT_LE(m_parser.ioPrefs, 0x3FFFFFFu);
        flipped += m_parser.ioPrefs & 1u;
    }
    EXPECT_EQ(read, 2000);
    EXPECT_GT(flipped, 0u);
}
