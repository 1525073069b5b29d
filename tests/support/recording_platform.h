#pragma once

#include <set>
#include <string>
#include <vector>

#include "os/platform.h"

// A platform that does nothing and keeps a line for each call, in the place of the real one while
// it lives. What it answers is set by the test.
class RecordingPlatform : public BXPlatform {
public:
    struct Process {
        unsigned int high, low;
        std::string bundle;  // empty: has none
    };
    using Lines = std::vector<std::string>;

    RecordingPlatform() { BXPlatform::replace(this); }
    RecordingPlatform(const RecordingPlatform&) = delete;
    RecordingPlatform& operator=(const RecordingPlatform&) = delete;
    ~RecordingPlatform() override { BXPlatform::replace(nullptr); }

    // What was called since the last time.
    Lines takeLines();

    std::set<std::string> files;     // that are there
    std::vector<Process> processes;  // in the order of the walk
    std::set<std::string> refused;   // the calls that fail, by their first word
    BXBundleFacts facts;
    bool documentsByLaunch = false;
    std::string chosen;  // in the panel; empty: none

    void runShellCommand(const BXString& command) override;
    bool findFile(const char* path, BXFileReference& file) override;
    bool isSameFile(const BXFileReference& a, const BXFileReference& b) override;
    void readBundle(const char* path, BXBundleFacts& read) override;
    bool launch(const BXFileReference& application, std::uint32_t flags,
                const BXArray<BXString>* arguments, BXProcessSerialNumber* process) override;
    bool launchesWithDocument() override { return documentsByLaunch; }
    bool nextProcess(BXProcessSerialNumber& process) override;
    bool findBundleOf(const BXProcessSerialNumber& process, BXFileReference& bundle) override;
    void bringToFront(const BXProcessSerialNumber& process) override;
    bool sendDocument(const BXProcessSerialNumber& process, const BXFileReference& application,
                      const BXFileReference& document) override;
    bool sendText(const BXProcessSerialNumber& process, std::uint32_t eventID,
                  const BXString& text) override;
    bool typeKeys(const BXProcessSerialNumber& process, const BXArray<BXKeyEvent>& events) override;
    std::unique_ptr<char[]> chooseFile(const char* title) override;

private:
    // Keeps the line. Whether the call is to succeed.
    bool note(const std::string& call, const std::string& rest);

    Lines m_lines;
};

// As "high/low".
std::string name(const BXProcessSerialNumber& process);
