// The lines that the exports write to the log. The log itself keeps nothing, so this program puts a
// recording one in its place: linked first, it is found before the library's own.

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>
#include <vector>

#include "exports/library_state.h"
#include "exports/vek.h"
#include "foundation/bx_log_server.h"
#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {
std::vector<std::string> s_lines;
}

extern "C" {
timeval s_startTimeVal;
}

bool BXLogServer::m_initialized = false;
int BXLogServer::m_curMarginOffset = 0;
BXString BXLogServer::m_curMarginOffsetString;
timeval& BXLogServer::s_startTimeVal = ::s_startTimeVal;

void BXLogServer::printLine(BXString format, ...) {
    char line[1024];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(line, sizeof line, format.c_str(), arguments);
    va_end(arguments);
    s_lines.emplace_back(line);
}

namespace {

std::vector<std::string> linesOf(double kind) {
    s_lines.clear();
    GetFirstObjectTextureFileName(nullptr, kind, nullptr, 0, nullptr, 0, nullptr);
    return s_lines;
}

using Lines = std::vector<std::string>;

}  // namespace

TEST(LogLines, TellWhichFileIsReadAndWhichMapIsFound) {
    const Tree tree;
    writeFile(Tree::objectList(), Tree::project("mesh") + "\n");
    writeFile(Tree::project("mesh.vek"), ExchangeFile().map(45001, "a\\b.tif").end().bytes());
    const std::string reading = "  reading " + Tree::project("mesh") + ".vek";
    EXPECT_EQ(linesOf(0.0),
              (Lines{"GetFirstObjectTextureFileName called", reading, "  tex: a\\b.tif"}));
    EXPECT_EQ(linesOf(3.0),
              (Lines{"GetFirstObjectTextureFileName called", reading, "  no texture found"}));
}

TEST(LogLines, EndWhereThereIsNoObject) {
    const Tree tree;
    EXPECT_EQ(linesOf(0.0), Lines{"GetFirstObjectTextureFileName called"});
}

TEST(LogLines, EndWhereTheFileIsMissingOrForeign) {
    const Tree tree;
    writeFile(Tree::objectList(), Tree::project("mesh") + "\n");
    const Lines lines = {"GetFirstObjectTextureFileName called",
                         "  reading " + Tree::project("mesh") + ".vek"};
    EXPECT_EQ(linesOf(0.0), lines);
    writeFile(Tree::project("mesh.vek"), "no exchange file, but longer than a header is");
    EXPECT_EQ(linesOf(0.0), lines);
}

TEST(LogLines, AreNotWrittenByOtherExports) {
    const Tree tree;
    tree.addApp("App", "EXTENSION .vek\nEXPORT_FLIP_X 1\n");
    std::string mesh = Tree::project("mesh.vek"), scene = Tree::project("scene.ma"),
                list = Tree::objectList(), object = "object", host = "/Applications";
    writeFile(mesh, ExchangeFile().vertices({1, 2, 3}).end().bytes());
    writeFile(scene, "text\n");
    s_lines.clear();
    char block[4096] = {};
    const auto call = [&](VekExport function, char* text) {
        return function(text, 0.0, block, 0, block, 0, nullptr);
    };
    EXPECT_EQ(call(InitializeVek, host.data()), 1.0f);
    call(GetVekAppIOPrefs, nullptr);
    call(PrintInLog, host.data());
    call(DeclareMacroActivated, host.data());
    call(AddVekObject, object.data());
    call(AddVekObjectToList, object.data());
    EXPECT_GE(call(ReadVekObjectList, nullptr), 1.0f);
    EXPECT_EQ(call(GetVekObjectPath, nullptr), 0.0f);
    call(ReleaseVekObjectList, nullptr);
    EXPECT_EQ(call(ExtractVekObject, nullptr), 1.0f);
    EXPECT_EQ(call(VekPostExport, mesh.data()), 0.0f);
    EXPECT_EQ(call(VekPreImport, mesh.data()), 0.0f);
    EXPECT_EQ(call(VekPostExport, scene.data()), 0.0f);
    EXPECT_EQ(call(VekPreImport, scene.data()), 0.0f);
    EXPECT_EQ(call(VekPostExport, list.data()), -1.0f);
    EXPECT_EQ(call(IsVekFilePathValid, mesh.data()), 1.0f);
    call(ReadVekProjectPath, nullptr);
    EXPECT_EQ(call(VekClearFile, scene.data()), 1.0f);
    EXPECT_EQ(call(VekDeleteFile, scene.data()), 1.0f);
    call(VekCleanCaches, nullptr);
    call(ClearVekObjectList, nullptr);
    EXPECT_EQ(s_lines, Lines{});
}

TEST(Storage, OfTheObjectListIsGivenBackByItsReleaseAlone) {
    const Tree tree;
    std::string lines;
    for (int i = 0; i < 1000; ++i) lines += "object\n";
    writeFile(Tree::objectList(), lines);
    ReadVekObjectList(nullptr, 0, nullptr, 0, nullptr, 0, nullptr);
    const std::size_t room = s_objectList.capacity();
    EXPECT_GE(room, 1000u);
    writeFile(Tree::objectList(), "");
    ReadVekObjectList(nullptr, 0, nullptr, 0, nullptr, 0, nullptr);
    EXPECT_TRUE(s_objectList.empty());
    EXPECT_EQ(s_objectList.capacity(), room);
    ReleaseVekObjectList(nullptr, 0, nullptr, 0, nullptr, 0, nullptr);
    EXPECT_EQ(s_objectList.capacity(), 0u);
}
