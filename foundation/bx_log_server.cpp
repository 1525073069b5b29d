#include "foundation/bx_log_server.h"

#include <algorithm>
#include <climits>

timeval s_startTimeVal = {};

bool BXLogServer::m_initialized = false;
int BXLogServer::m_curMarginOffset = 0;
BXString BXLogServer::m_curMarginOffsetString;
timeval& BXLogServer::s_startTimeVal = ::s_startTimeVal;

namespace {

void moveToLevel(long long level) {
    level = std::clamp<long long>(level, INT_MIN, INT_MAX);
    const long long blanks = 2 * level;
    BXString indentation;
    indentation.create(blanks < INT_MAX ? static_cast<int>(blanks) : 0, ' ');
    BXLogServer::m_curMarginOffset = static_cast<int>(level);
    BXLogServer::m_curMarginOffsetString.swap(indentation);
}

}  // namespace

void BXLogServer::init(bool /*flag*/) {
    m_initialized = true;
    gettimeofday(&s_startTimeVal, nullptr);
}

// Required(R13): the log has no output.
// NOLINTNEXTLINE(performance-unnecessary-value-param): callers are built for a copy.
void BXLogServer::setLogFile(BXString /*path*/) {}

void BXLogServer::showLogWindow(bool /*show*/) {}

void BXLogServer::enableLogWindow(bool /*enable*/) {}

void BXLogServer::clear() {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): variable arguments follow no reference.
void BXLogServer::printLine(BXString /*format*/, ...) {}

// Required(R11): this alone goes below zero, and a later increase starts from there.
void BXLogServer::incrMarginOffset(int n) {
    moveToLevel(static_cast<long long>(m_curMarginOffset) + n);
}

void BXLogServer::decrMarginOffset(int n) {
    moveToLevel(std::max(0LL, static_cast<long long>(m_curMarginOffset) - n));
}

void BXLogServer::setMarginOffset(int n) {
    moveToLevel(std::max(0, n));
}
