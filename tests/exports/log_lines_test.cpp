// The lines that the exports write to the log. The log itself keeps nothing, so this program puts a
// recording one in its place: linked first, it is found before the library's own.

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>
#include <vector>

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

TEST(LogLines, AreNotWrittenByOtherExports) {
    const Tree tree;
    s_lines.clear();
    char block[64] = {};
    PrintInLog(block, 1.0, block, 0, block, 0, nullptr);
    ReadVekObjectList(nullptr, 0, nullptr, 0, nullptr, 0, nullptr);
    AddVekObjectToList(block, 0, nullptr, 0, nullptr, 0, nullptr);
    ExtractVekObject(nullptr, 0, nullptr, 0, nullptr, 0, nullptr);
    VekPostExport(block, 0, nullptr, 0, nullptr, 0, nullptr);
    InitializeVek(block, 0, nullptr, 0, nullptr, 0, nullptr);
    EXPECT_EQ(s_lines, Lines{});
}
