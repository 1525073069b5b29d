#pragma once

#include <sys/time.h>

#include "foundation/bx_string.h"

// The time of BXLogServer::init, a symbol of the library under this very name.
extern "C" __attribute__((visibility("default"))) timeval s_startTimeVal;

// The front end of the log. It keeps the indentation and nothing else: no line is written or
// stored anywhere. All static, for one thread.
class BXLogServer {
public:
    BXLogServer() = delete;

    // Marks the log initialised and takes the wall-clock time; the flag is ignored.
    static void init(bool flag);

    // These do nothing; the arguments of printLine are not looked at.
    static void setLogFile(BXString path);
    static void showLogWindow(bool show);
    static void enableLogWindow(bool enable);
    static void clear();
    static void printLine(BXString format, ...);

    // The level moves by n or becomes n. decr and set stop at 0. A level that no int holds becomes
    // the nearest one. An allocation that fails passes its exception on and leaves all as it was.
    static void incrMarginOffset(int n);
    static void decrMarginOffset(int n);
    static void setMarginOffset(int n);

    static bool m_initialized;
    static int m_curMarginOffset;
    // Two blanks for each level; null below level 1, and for more blanks than a string can hold.
    static BXString m_curMarginOffsetString;
    static timeval& s_startTimeVal;
};
