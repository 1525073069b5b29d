#include "tools/validate/report.h"

#include <unistd.h>

void Report::finds(const std::string& what) {
    // What is wrong in one call is often wrong in a hundred.
    constexpr int kMost = 20;
    if (m_findings++ < kMost) write(Finding, what);
}

void Report::cannotTry(const std::string& why) {
    if (m_reasons.insert(why).second) write(NotTried, why);
}

void Report::write(Kind kind, const std::string& text) {
    // Short enough that the pipe takes the line as one.
    constexpr std::size_t kLongest = 500;
    std::string line(1, kind);
    for (const char letter : text.substr(0, kLongest)) {
        line += static_cast<unsigned char>(letter) < ' ' ? ' ' : letter;
    }
    line += '\n';
    const ssize_t written = ::write(m_pipe, line.data(), line.size());
    // Where nobody listens any more, there is nobody to tell.
    static_cast<void>(written);
}
