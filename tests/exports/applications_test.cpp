#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

class Applications : public testing::Test {
protected:
    void addApps() {
        m_tree.addApp("Maya",
                      "NAME \"Maya 8\"\nEXTENSION .ma\nTAMPLATE \"t.mel\"\nIMPORT_FLIP_X 1\n"
                      "EXPORT_FLIP_Z 1\nEXPORT_SWITCH_YZ 1\n");
        m_tree.addApp("Other",
                      "EXTENSION .VEK\nIMPORT_FLIP_X 1\nEXPORT_FLIP_Z 1\n"
                      "EXPORT_SWITCH_YZ 1\n");
        m_tree.addApp("Third", "EXTENSION .x\nIMPORT_FLIP_NORMALS 1\nNORMAL_MAP_FLIP_VERT 1\n");
        ASSERT_EQ(m_library.call("InitializeVek", "/Applications"), 3.0f);
    }

    double index(const char* id) { return static_cast<double>(m_library.call("FindVekApp", id)); }

    std::string field(const char* getter, double at) {
        OutText out;
        EXPECT_EQ(m_library.call(getter, at, out.block()), 0.0f);
        return out.untouched() ? "untouched" : out.text();
    }

    struct Prefs {
        std::int32_t low, between, high;
    };
    Prefs prefs(double at) {
        Prefs prefs = {};
        char block[16];
        std::memset(block, 0x5A, sizeof block);
        EXPECT_EQ(m_library.call("GetVekAppIOPrefs", at, block), 0.0f);
        std::memcpy(&prefs, block, sizeof prefs);
        EXPECT_EQ(block[12], 0x5A);
        return prefs;
    }

    // How the exports turn the face (0, 1, 2, 3): both directions, as "export import".
    std::string winding() {
        const TempFolder folder;
        const std::string file = folder / "m.vek";
        std::string seen;
        for (const char* name : {"VekPostExport", "VekPreImport"}) {
            writeFile(file, ExchangeFile().faces(20001, {0, 1, 2, 3}).end().bytes());
            EXPECT_EQ(m_library.call(name, file), 0.0f);
            seen += intsAt(readFile(file), 48, 4)[1] == 1 ? "kept " : "reversed ";
        }
        return seen;
    }

    Tree m_tree;
    LoadedLibrary m_library;
};

}  // namespace

TEST_F(Applications, GiveTheirTexts) {
    addApps();
    const double maya = index("Maya");
    EXPECT_EQ(field("GetVekAppId", maya), "Maya");
    EXPECT_EQ(field("GetVekAppName", maya), "Maya 8");
    EXPECT_EQ(field("GetVekAppExt", maya), ".ma");
    EXPECT_EQ(field("GetVekAppTamplate", maya), "t.mel");
}

TEST_F(Applications, GiveASingleNulForATextThatIsNotThere) {
    addApps();
    char block[2] = {'z', 'z'};
    EXPECT_EQ(m_library.call("GetVekAppName", index("Other"), block), 0.0f);
    EXPECT_EQ(block[0], '\0');
    EXPECT_EQ(block[1], 'z');
}

TEST_F(Applications, GiveNothingForAnIndexOutsideTheTable) {
    addApps();
    for (const char* getter :
         {"GetVekAppId", "GetVekAppName", "GetVekAppExt", "GetVekAppTamplate"}) {
        EXPECT_EQ(field(getter, 7.0), "untouched");
        EXPECT_EQ(field(getter, -1.0), "untouched");
        EXPECT_EQ(field(getter, 3.0), "untouched");
        EXPECT_EQ(m_library.call(getter, 0.0), 0.0f);
    }
}

TEST_F(Applications, ReportTheirSwitchesInTwoNumbers) {
    addApps();
    const Prefs maya = prefs(index("Maya"));
    EXPECT_EQ(maya.low, 161);
    EXPECT_EQ(maya.high, 0);
    EXPECT_EQ(maya.between, 0x5A5A5A5A);
    const Prefs third = prefs(index("Third"));  // 0x20100
    EXPECT_EQ(third.low, 256);
    EXPECT_EQ(third.high, 2);
}

TEST_F(Applications, WithTheExchangeFilesExtensionReportNoFlipsAndSwitches) {
    addApps();
    const Prefs other = prefs(index("Other"));
    EXPECT_EQ(other.low, 0);
    EXPECT_EQ(other.high, 0);
    m_tree.addApp("Fourth",
                  "EXTENSION .vek\nIMPORT_FLIP_X 1\nIMPORT_FLIP_NORMALS 1\n"
                  "EXPORT_SWITCH_YZ 1\nNORMAL_MAP_FLIP_VERT 1\n");
    ASSERT_EQ(m_library.call("InitializeVek", "/Applications"), 4.0f);
    const Prefs fourth = prefs(index("Fourth"));
    EXPECT_EQ(fourth.low, 256) << "only the low eight bits go";
    EXPECT_EQ(fourth.high, 2);
}

TEST_F(Applications, ReverseFacesWhereAnOddNumberOfMirrorsIsSet) {
    addApps();
    prefs(index("Maya"));  // one import flip; an export flip and switch
    EXPECT_EQ(winding(), "kept reversed ");
    prefs(index("Third"));
    EXPECT_EQ(winding(), "kept kept ");
}

TEST_F(Applications, ReverseFacesByTheParityOfEverySetOfMirrors) {
    const char* const exports[] = {"EXPORT_FLIP_X 1\n", "EXPORT_FLIP_Y 1\n", "EXPORT_FLIP_Z 1\n",
                                   "EXPORT_SWITCH_YZ 1\n"};
    const char* const imports[] = {"IMPORT_FLIP_X 1\n", "IMPORT_FLIP_Y 1\n", "IMPORT_FLIP_Z 1\n",
                                   "IMPORT_SWITCH_YZ 1\n"};
    for (int set = 0; set < 256; ++set) {
        std::string descriptor = "EXTENSION .vek\n";
        bool exportOdd = false, importOdd = false;
        for (int i = 0; i < 4; ++i) {
            if (set >> i & 1) descriptor += exports[i], exportOdd = !exportOdd;
            if (set >> (4 + i) & 1) descriptor += imports[i], importOdd = !importOdd;
        }
        m_tree.addApp("App", descriptor);
        ASSERT_EQ(m_library.call("InitializeVek", "/"), 1.0f);
        prefs(0.0);
        ASSERT_EQ(winding(), std::string(exportOdd ? "reversed " : "kept ") +
                                 (importOdd ? "reversed " : "kept "))
            << descriptor;
    }
}

TEST_F(Applications, OutsideTheTableResetTheSwitchesAndReportNone) {
    addApps();
    for (const double outside : {9.0, 3.0, -1.0}) {
        prefs(index("Maya"));
        const Prefs none = prefs(outside);
        EXPECT_EQ(none.low, 0);
        EXPECT_EQ(none.high, 0);
        EXPECT_EQ(winding(), "kept kept ") << outside;
    }
}

TEST_F(Applications, TakeUpTheirSwitchesWithoutABlockToReportTo) {
    addApps();
    EXPECT_EQ(m_library.call("GetVekAppIOPrefs", index("Maya")), 0.0f);
    EXPECT_EQ(winding(), "kept reversed ");
}

TEST_F(Applications, AreFoundByTheirIdInAnyLetterCase) {
    addApps();
    EXPECT_EQ(m_library.call("FindVekApp", "mAYA"), static_cast<float>(index("Maya")));
    EXPECT_GE(index("Maya"), 0.0);
    EXPECT_EQ(m_library.call("FindVekApp", "May"), -1.0f);
    EXPECT_EQ(m_library.call("FindVekApp", "Unknown"), -1.0f);
    EXPECT_EQ(m_library.call("FindVekApp", ""), -1.0f);
}

TEST_F(Applications, AreFoundByTheFirstIdThatMatches) {
    m_tree.addApp("maya", "NAME a\n");
    m_tree.addApp("MAYA", "NAME b\n");
    ASSERT_EQ(m_library.call("InitializeVek", "/Applications"), 2.0f);
    EXPECT_EQ(m_library.call("FindVekApp", "Maya"), 0.0f);
    writeFile(Tree::hub("Vek_Application.txt"), "Maya");
    EXPECT_EQ(m_library.call("GetVekAppIndex"), 0.0f);
}

TEST_F(Applications, AreSelectedInTheHubsFile) {
    addApps();
    EXPECT_EQ(m_library.call("SetVekAppIndex", index("Third")), 0.0f);
    EXPECT_EQ(readFile(Tree::hub("Vek_Application.txt")), "Third");
    EXPECT_EQ(m_library.call("GetVekAppIndex"), static_cast<float>(index("Third")));
}

TEST_F(Applications, AreNotSelectedByAnIndexOutsideTheTable) {
    addApps();
    for (const double outside : {-1.0, 3.0, 1e300, std::nan("")}) {
        m_library.call("SetVekAppIndex", 0.0);
        EXPECT_EQ(m_library.call("SetVekAppIndex", outside), 0.0f);
        EXPECT_EQ(readFile(Tree::hub("Vek_Application.txt")), "") << outside;
        EXPECT_EQ(m_library.call("GetVekAppIndex"), -1.0f);
    }
}

TEST_F(Applications, AreSelectedByWhatTheFileHoldsNow) {
    addApps();
    const float maya = m_library.call("FindVekApp", "Maya");
    const struct {
        std::string file;
        float index;
    } cases[] = {{"maya\r\n", maya},
                 {"MAYA\n\n\t", maya},
                 {"Maya ", -1.0f},
                 {"Gone", -1.0f},
                 {"Maya" + std::string(4092, '\n'), maya},
                 {"Maya" + std::string(4093, '\n'), -1.0f},
                 {std::string("Maya\0x", 6), maya}};
    for (const auto& it : cases) {
        writeFile(Tree::hub("Vek_Application.txt"), it.file);
        EXPECT_EQ(m_library.call("GetVekAppIndex"), it.index) << it.file.substr(0, 20);
    }
    ASSERT_EQ(unlink(Tree::hub("Vek_Application.txt").c_str()), 0);
    EXPECT_EQ(m_library.call("GetVekAppIndex"), -1.0f);
}

TEST_F(Applications, KeepTheirRecordedPath) {
    addApps();
    OutText out;
    EXPECT_EQ(m_library.call("ReadVekAppPath", index("Maya"), out.block()), 0.0f);
    EXPECT_TRUE(out.untouched());
    EXPECT_EQ(m_library.call("WriteVekAppPath", "/Applications/My Maya.app", index("Maya")), 0.0f);
    EXPECT_EQ(m_library.call("ReadVekAppPath", index("Maya"), out.block()), 1.0f);
    EXPECT_EQ(out.text(), "/Applications/My Maya.app");
    EXPECT_EQ(m_library.call("ReadVekAppPath", index("Maya")), 1.0f);
}

TEST_F(Applications, WithAnEmptyRecordedPathLeaveTheBlock) {
    addApps();
    writeFile(Tree::app("Maya", "Vek_Config.txt"), "PATH = \"\"\n");
    OutText out;
    EXPECT_EQ(m_library.call("ReadVekAppPath", index("Maya"), out.block()), 1.0f);
    EXPECT_TRUE(out.untouched());
}

TEST_F(Applications, KeepAnEmptyPathToo) {
    addApps();
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        m_library.call("WriteVekAppPath", "/A/B.app", index("Maya"));
        m_library.call("WriteVekAppPath", none, index("Maya"));
        OutText out;
        EXPECT_EQ(m_library.call("ReadVekAppPath", index("Maya"), out.block()), 1.0f);
        EXPECT_TRUE(out.untouched());
    }
    EXPECT_EQ(readFile(Tree::app("Maya", "Vek_Config.txt")).find("PATH = \"\""), 0u);
}

TEST_F(Applications, OutsideTheTableKeepNoPath) {
    addApps();
    OutText out;
    EXPECT_EQ(m_library.call("ReadVekAppPath", 9.0, out.block()), 0.0f);
    EXPECT_EQ(m_library.call("WriteVekAppPath", "/x", -1.0), 0.0f);
    EXPECT_TRUE(out.untouched());
    EXPECT_FALSE(fileIsThere(Tree::root() + "/VekApps/Vek_Config.txt"));
}

TEST_F(Applications, AreThereAsBundleFolderOrAsFile) {
    const TempFolder folder;
    makeFolders(folder / "A.APP");
    makeFolders(folder / "plain");
    writeFile(folder / "program", "");
    writeFile(folder / "file.app", "");
    EXPECT_EQ(m_library.call("IsAppPathValid", folder / "A.APP"), 1.0f);
    EXPECT_EQ(m_library.call("IsAppPathValid", "Disk:" + (folder / "A.APP")), 1.0f);
    EXPECT_EQ(m_library.call("IsAppPathValid", folder / "program"), 1.0f);
    EXPECT_EQ(m_library.call("IsAppPathValid", folder / "plain"), 0.0f);
    EXPECT_EQ(m_library.call("IsAppPathValid", folder / "file.app"), 0.0f);
    EXPECT_EQ(m_library.call("IsAppPathValid", folder / "missing"), 0.0f);
    EXPECT_EQ(m_library.call("IsAppPathValid"), 0.0f);
}

TEST_F(Applications, AreInstalledWhereALineOfTheirListBeginsTheLocation) {
    addApps();
    const auto installed = [&](const std::string& list, const std::string& location) {
        writeFile(Tree::app("Maya", "Vek_InstallList.txt"), list);
        return m_library.call("VekAppIsInstalled", location, index("Maya"));
    };
    EXPECT_EQ(installed("/Applications/X\n", "/applications/x/bin/app"), 1.0f);
    EXPECT_EQ(installed("/Applications/X\n", "/Applications/X"), 1.0f);
    EXPECT_EQ(installed("/Applications/X\n", "/Applications/"), 0.0f);
    EXPECT_EQ(installed("/other\r\n \t/Applications/X \r\n", "/Applications/X"), 1.0f);
    EXPECT_EQ(installed("\n\n \n", "/Applications/X"), 0.0f);
    EXPECT_EQ(installed("", "/Applications/X"), 0.0f);
    EXPECT_EQ(installed("/Applications/X\n", ""), 0.0f);
    EXPECT_EQ(installed("/Applications/Xtra", "/Applications/X"), 0.0f);
    EXPECT_EQ(installed("/other\r/Applications/X\r", "/Applications/X"), 1.0f);
}

// Required(R86)
TEST_F(Applications, AreInstalledAlsoWhereTheLineEndsWithinAName) {
    addApps();
    writeFile(Tree::app("Maya", "Vek_InstallList.txt"), "/Applications/X\n");
    EXPECT_EQ(m_library.call("VekAppIsInstalled", "/Applications/Xtra", index("Maya")), 1.0f);
    EXPECT_EQ(m_library.call("VekAppIsInstalled", "/Applications/Y", index("Maya")), 0.0f);
}

TEST_F(Applications, AreNotInstalledWithoutAListOrAnIndex) {
    addApps();
    EXPECT_EQ(m_library.call("VekAppIsInstalled", "/x", index("Maya")), 0.0f);
    EXPECT_EQ(m_library.call("VekAppIsInstalled", "/x", 9.0), 0.0f);
}
