// The arrows of docs/connecting-an-application.md point where the exports make them point.

#include <gtest/gtest.h>

#include <cstring>
#include <regex>
#include <string>
#include <vector>

#include "tests/support/exchange_file.h"
#include "tests/support/host.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

class ConnectingPage : public testing::Test {
protected:
    // Where the host's three arrows point after an export, and after an import behind it.
    struct Arrows {
        std::string exported, back;
    };
    Arrows arrows(const std::string& descriptor) {
        m_tree.addApp("App", "EXTENSION .vek\n" + descriptor);
        EXPECT_EQ(m_library.call("InitializeVek", "/"), 1.0f);
        EXPECT_EQ(m_library.call("GetVekAppIOPrefs", 0.0), 0.0f);
        const std::string file = m_folder / "m.vek";
        writeFile(file, ExchangeFile().vertices({1, 0, 0, 0, 1, 0, 0, 0, 1}).end().bytes());
        Arrows seen;
        EXPECT_EQ(m_library.call("VekPostExport", file), 0.0f);
        seen.exported = named(readFile(file));
        EXPECT_EQ(m_library.call("VekPreImport", file), 0.0f);
        seen.back = named(readFile(file));
        return seen;
    }

    static std::string named(const std::string& bytes) {
        std::string names;
        for (int arrow = 0; arrow < 3; ++arrow) {
            for (int axis = 0; axis < 3; ++axis) {
                float part;
                std::memcpy(&part, bytes.data() + 48 + 4 * (3 * arrow + axis), 4);
                if (part == 0.0f) continue;
                names += std::string(names.empty() ? "" : "        ") + (part < 0 ? '-' : '+') +
                         "xyz"[axis];
            }
        }
        return names;
    }

    const Tree m_tree;
    const LoadedLibrary m_library;
    const TempFolder m_folder;
    const std::string m_page = readFile(VEK_SOURCE_DIR "/docs/connecting-an-application.md");
};

}  // namespace

TEST_F(ConnectingPage, ShowsWhereEachKeyTurnsAnArrow) {
    for (const std::string key : {"FLIP_X", "FLIP_Y", "FLIP_Z", "SWITCH_YZ"}) {
        const Arrows seen = arrows("EXPORT_" + key + " 1\nIMPORT_" + key + " 1\n");
        const std::string row = "    EXPORT_" + key + std::string(22 - 7 - key.size(), ' ');
        EXPECT_NE(m_page.find(row + seen.exported + "\n"), std::string::npos)
            << row + seen.exported;
        EXPECT_EQ(seen.back, "+x        +y        +z");
    }
}

TEST_F(ConnectingPage, ShowsWhereASwitchAndAFlipTurnAnArrow) {
    const Arrows seen =
        arrows("EXPORT_SWITCH_YZ 1\nEXPORT_FLIP_Y 1\nIMPORT_SWITCH_YZ 1\nIMPORT_FLIP_Y 1\n");
    EXPECT_EQ(seen.exported, "+x        +z        -y") << "right-handed with z up";
    EXPECT_NE(m_page.find("     and EXPORT_FLIP_Y    " + seen.exported + "\n"), std::string::npos);
    EXPECT_EQ(seen.back, "+x        +y        +z");
}

// Every key that the library knows stands on the page.
TEST_F(ConnectingPage, NamesEveryKeyOfADescriptor) {
    const std::string parser = readFile(VEK_SOURCE_DIR "/bridge/bx_vek_app_parser.cpp");
    const std::string registered = "addToken(\"";
    int keys = 0;
    for (std::size_t at = 0; (at = parser.find(registered, at)) != std::string::npos; ++keys) {
        at += registered.size();
        const std::string key = parser.substr(at, parser.find('"', at) - at);
        // Whole: no other key goes on behind it.
        EXPECT_TRUE(std::regex_search(m_page, std::regex("\\b" + key + "\\b"))) << key;
    }
    EXPECT_EQ(keys, 33);
}
