#include "tests/support/recording_platform.h"

#include <cstdio>
#include <cstring>

namespace {

std::string hex(std::uint64_t number) {
    char text[20];
    std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(number));
    return text;
}

}  // namespace

std::string name(const BXProcessSerialNumber& process) {
    return std::to_string(process.high) + "/" + std::to_string(process.low);
}

RecordingPlatform::Lines RecordingPlatform::takeLines() {
    Lines lines;
    lines.swap(m_lines);
    return lines;
}

bool RecordingPlatform::note(const std::string& call, const std::string& rest) {
    m_lines.push_back(call + " " + rest);
    return refused.count(call) == 0;
}

void RecordingPlatform::runShellCommand(const BXString& command) {
    note("shell", command.c_str());
}

bool RecordingPlatform::findFile(const char* path, BXFileReference& file) {
    const std::string wanted = path ? path : "(null)";
    if (!note("find", wanted) || files.count(wanted) == 0) return false;
    file.path = wanted.c_str();
    return true;
}

bool RecordingPlatform::isSameFile(const BXFileReference& a, const BXFileReference& b) {
    return a.path == b.path || a.path.equalsNoCase(b.path);
}

void RecordingPlatform::readBundle(const char* path, BXBundleFacts& read) {
    note("bundle", path);
    read = facts;
}

bool RecordingPlatform::launch(const BXFileReference& application, std::uint32_t flags,
                               const BXArray<BXString>* arguments, BXProcessSerialNumber* process) {
    std::string line = std::string(application.path.c_str()) + " " + hex(flags);
    if (!arguments) line += " no arguments";
    for (std::size_t i = 0; arguments && i < arguments->size(); ++i) {
        line += " [" + std::string((*arguments)[i].c_str()) + "]";
    }
    if (process) *process = {7, 42};
    return note("launch", line);
}

bool RecordingPlatform::nextProcess(BXProcessSerialNumber& process) {
    if (!note("next", name(process))) return false;
    std::size_t next = 0;
    while (!process.isNone() && next < processes.size()) {
        const Process& at = processes[next++];
        if (at.high == process.high && at.low == process.low) break;
    }
    if (next == processes.size()) return false;
    process.high = processes[next].high;
    process.low = processes[next].low;
    return true;
}

bool RecordingPlatform::findBundleOf(const BXProcessSerialNumber& process,
                                     BXFileReference& bundle) {
    for (const Process& at : processes) {
        if (at.high != process.high || at.low != process.low || at.bundle.empty()) continue;
        bundle.path = at.bundle.c_str();
        return true;
    }
    return false;
}

void RecordingPlatform::bringToFront(const BXProcessSerialNumber& process) {
    note("front", name(process));
}

bool RecordingPlatform::sendDocument(const BXProcessSerialNumber& process,
                                     const BXFileReference& application,
                                     const BXFileReference& document) {
    return note("document",
                name(process) + " " + application.path.c_str() + " " + document.path.c_str());
}

bool RecordingPlatform::sendText(const BXProcessSerialNumber& process, std::uint32_t eventID,
                                 const BXString& text) {
    return note("text", name(process) + " " + hex(eventID) + " [" + text.c_str() + "]");
}

bool RecordingPlatform::typeKeys(const BXProcessSerialNumber& process,
                                 const BXArray<BXKeyEvent>& events) {
    std::string line = name(process);
    for (const BXKeyEvent& event : events) {
        line += std::string(event.down ? " +" : " -") + std::to_string(event.keyCode) + ":" +
                hex(event.flags);
    }
    return note("keys", line);
}

std::unique_ptr<char[]> RecordingPlatform::chooseFile(const char* title) {
    note("panel", title ? title : "(null)");
    if (chosen.empty()) return nullptr;
    std::unique_ptr<char[]> path(new char[chosen.size() + 1]);
    std::memcpy(path.get(), chosen.c_str(), chosen.size() + 1);
    return path;
}
