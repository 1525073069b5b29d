// BXLogServer and BXLogBloc.

#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include <climits>
#include <filesystem>
#include <new>

#include "foundation/bx_log_bloc.h"
#include "foundation/bx_log_server.h"
#include "os/bx_disk_server.h"
#include "tests/support/allocation_record.h"
#include "tests/support/temp_folder.h"

namespace {

const bool initializedAtLoad = BXLogServer::m_initialized;
const int levelAtLoad = BXLogServer::m_curMarginOffset;
const bool indentationIsNullAtLoad = BXLogServer::m_curMarginOffsetString.isNull();

// Each test begins at level 0.
class BXLog : public testing::Test {
protected:
    void SetUp() override { BXLogServer::setMarginOffset(0); }
    void TearDown() override { BXLogServer::setMarginOffset(0); }

    static int level() { return BXLogServer::m_curMarginOffset; }
    static const BXString& indentation() { return BXLogServer::m_curMarginOffsetString; }
};

using BXLogServerTest = BXLog;
using BXLogBlocTest = BXLog;

}  // namespace

TEST_F(BXLogServerTest, IsNotInitialisedAndNotIndentedAtLoad) {
    EXPECT_FALSE(initializedAtLoad);
    EXPECT_EQ(levelAtLoad, 0);
    EXPECT_TRUE(indentationIsNullAtLoad);
}

TEST_F(BXLogServerTest, RecordsTheWallClockTimeAtInit) {
    for (const bool flag : {false, true}) {
        BXLogServer::m_initialized = false;
        s_startTimeVal = {};
        timeval before;
        gettimeofday(&before, nullptr);
        BXLogServer::init(flag);
        timeval after;
        gettimeofday(&after, nullptr);
        EXPECT_TRUE(BXLogServer::m_initialized);
        EXPECT_FALSE(timercmp(&s_startTimeVal, &before, <));
        EXPECT_FALSE(timercmp(&s_startTimeVal, &after, >));
    }
}

TEST_F(BXLogServerTest, SharesItsStartTimeWithTheExportedSymbol) {
    EXPECT_EQ(&s_startTimeVal, &BXLogServer::s_startTimeVal);
}

// Required(R13)
TEST_F(BXLogServerTest, AcceptsOutputAndDoesNothing) {
    const TempFolder folder;
    const BXString before = BXDiskServer::getCurrentPath();
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    BXLogServer::setMarginOffset(2);
    BXLogServer::init(true);
    const timeval start = s_startTimeVal;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    BXLogServer::setLogFile("log.txt");
    BXLogServer::showLogWindow(true);
    BXLogServer::enableLogWindow(true);
    BXLogServer::clear();
    BXLogServer::printLine("%d %s", 1, "a");
    BXLogServer::printLine("%s%s%n");  // the arguments that are missing are not looked for
    BXLogServer::printLine(BXString());
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    ASSERT_EQ(chdir(before.c_str()), 0);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_EQ(2, level());
    EXPECT_STREQ("    ", indentation().c_str());
    EXPECT_TRUE(BXLogServer::m_initialized);
    EXPECT_EQ(start.tv_sec, s_startTimeVal.tv_sec);
    EXPECT_EQ(start.tv_usec, s_startTimeVal.tv_usec);
}

TEST_F(BXLogServerTest, IndentsByTwoBlanksForEachLevel) {
    BXLogServer::setMarginOffset(3);
    EXPECT_EQ(3, level());
    EXPECT_STREQ("      ", indentation().c_str());
    BXLogServer::incrMarginOffset(1);
    EXPECT_STREQ("        ", indentation().c_str());
    BXLogServer::decrMarginOffset(3);
    EXPECT_EQ(1, level());
    EXPECT_STREQ("  ", indentation().c_str());
    BXLogServer::setMarginOffset(0);
    EXPECT_TRUE(indentation().isNull());
    BXLogServer::setMarginOffset(1000000);
    EXPECT_EQ(2000000, indentation().length());
}

TEST_F(BXLogServerTest, StopsAtZeroWhenSetBelow) {
    BXLogServer::setMarginOffset(5);
    BXLogServer::setMarginOffset(-3);
    EXPECT_EQ(0, level());
    EXPECT_TRUE(indentation().isEmpty());
}

TEST_F(BXLogServerTest, StopsAtZeroWhenDecreasedBelow) {
    BXLogServer::setMarginOffset(2);
    BXLogServer::decrMarginOffset(3);
    EXPECT_EQ(0, level());
    EXPECT_TRUE(indentation().isEmpty());
    BXLogServer::decrMarginOffset(-2);
    EXPECT_EQ(2, level());
}

// Required(R11)
TEST_F(BXLogServerTest, GoesBelowZeroWhenIncreasedByANegativeNumber) {
    BXLogServer::incrMarginOffset(-3);
    EXPECT_EQ(-3, level());
    EXPECT_TRUE(indentation().isEmpty());
    BXLogServer::incrMarginOffset(4);
    EXPECT_EQ(1, level());
    EXPECT_STREQ("  ", indentation().c_str());
    BXLogServer::incrMarginOffset(-3);
    BXLogServer::decrMarginOffset(0);
    EXPECT_EQ(0, level());
}

TEST_F(BXLogServerTest, KeepsTheLevelWithinAnInt) {
    BXLogServer::setMarginOffset(INT_MAX);
    BXLogServer::incrMarginOffset(INT_MAX);
    EXPECT_EQ(INT_MAX, level());
    EXPECT_TRUE(indentation().isNull());
    BXLogServer::decrMarginOffset(INT_MIN);
    EXPECT_EQ(INT_MAX, level());
    BXLogServer::setMarginOffset(0);
    BXLogServer::incrMarginOffset(INT_MIN);
    BXLogServer::incrMarginOffset(INT_MIN);
    EXPECT_EQ(INT_MIN, level());
    EXPECT_TRUE(indentation().isNull());
}

TEST_F(BXLogServerTest, StaysAsItIsWhereAnAllocationFails) {
    BXLogServer::setMarginOffset(2);
    failAllocationAt(1);
    EXPECT_THROW(BXLogServer::incrMarginOffset(4), std::bad_alloc);
    EXPECT_EQ(2, level());
    EXPECT_STREQ("    ", indentation().c_str());
    BXLogBloc bloc;
    failAllocationAt(1);
    EXPECT_THROW(bloc.start(3), std::bad_alloc);
    EXPECT_FALSE(bloc.active());
    EXPECT_EQ(2, level());
    failAllocationAt(0);
}

TEST_F(BXLogBlocTest, EndsItsScopeWhereAnAllocationFails) {
    BXLogServer::setMarginOffset(2);
    {
        BXLogBloc bloc;
        bloc.start(3);
        failAllocationAt(1);
    }
    failAllocationAt(0);
    EXPECT_EQ(5, level()) << "the log stays indented";
}

TEST_F(BXLogBlocTest, StartsOutInactive) {
    const BXLogBloc bloc;
    EXPECT_FALSE(bloc.active());
    EXPECT_EQ(0, bloc.margin());
    EXPECT_TRUE(bloc.title().isNull());
    EXPECT_EQ(0, level());
}

TEST_F(BXLogBlocTest, IndentsFromStartToEnd) {
    BXLogBloc bloc;
    bloc.start(3);
    EXPECT_TRUE(bloc.active());
    EXPECT_EQ(3, bloc.margin());
    EXPECT_EQ(3, level());
    EXPECT_STREQ("      ", indentation().c_str());
    bloc.end();
    EXPECT_FALSE(bloc.active());
    EXPECT_EQ(0, bloc.margin());
    EXPECT_EQ(0, level());
    EXPECT_TRUE(indentation().isEmpty());
}

TEST_F(BXLogBlocTest, IndentsOnlyOnceWhenStartedTwice) {
    BXLogBloc bloc;
    bloc.start(3);
    bloc.start(4);
    bloc.start("header", "title", 5);
    EXPECT_EQ(3, level());
    EXPECT_EQ(3, bloc.margin());
    EXPECT_TRUE(bloc.title().isNull());
    bloc.end();
    EXPECT_EQ(0, level());
}

TEST_F(BXLogBlocTest, StartsAgainAfterItsEnd) {
    BXLogBloc bloc;
    bloc.start(3);
    bloc.end();
    bloc.start(1);
    EXPECT_EQ(1, level());
}

TEST_F(BXLogBlocTest, IgnoresAnEndWithoutAStart) {
    BXLogServer::setMarginOffset(4);
    BXLogBloc bloc;
    bloc.end();
    EXPECT_EQ(4, level());
    bloc.start(1);
    bloc.end();
    bloc.end();
    EXPECT_EQ(4, level());
}

TEST_F(BXLogBlocTest, EndsWithItsScope) {
    {
        BXLogBloc bloc;
        bloc.start(2);
        EXPECT_EQ(2, level());
    }
    EXPECT_EQ(0, level());
}

TEST_F(BXLogBlocTest, KeepsACopyOfTheTitle) {
    BXString title("title");
    BXLogBloc bloc;
    bloc.start("header", title, 2);
    title = "other";
    EXPECT_STREQ("title", bloc.title().c_str());
    bloc.end();
    EXPECT_TRUE(bloc.title().isNull());
}

// Required(R10)
TEST_F(BXLogBlocTest, IndentsByTwoWithATitleAndTakesBackTheMargin) {
    BXLogBloc bloc;
    bloc.start("header", "title", 2);
    EXPECT_EQ(2, level());
    EXPECT_STREQ("    ", indentation().c_str());
    bloc.end();
    EXPECT_EQ(0, level());

    bloc.start("header", "title", 1);
    EXPECT_EQ(2, level());
    EXPECT_EQ(1, bloc.margin());
    bloc.end();
    EXPECT_EQ(1, level());

    BXLogServer::setMarginOffset(10);
    bloc.start("header", "title", 5);
    EXPECT_EQ(12, level());
    bloc.end();
    EXPECT_EQ(7, level());
}

TEST_F(BXLogBlocTest, StopsAtZeroAtItsEnd) {
    BXLogBloc bloc;
    bloc.start("header", "title", 9);
    bloc.end();
    EXPECT_EQ(0, level());
}

TEST_F(BXLogBlocTest, IndentsBelowZeroByANegativeMargin) {
    BXLogBloc bloc;
    bloc.start(-3);
    EXPECT_EQ(-3, level());
    bloc.end();
    EXPECT_EQ(0, level());
}
