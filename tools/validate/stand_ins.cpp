#include "tools/validate/stand_ins.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tools/validate/tree.h"

namespace {

std::string folderIn(const std::string& scratch) {
    return scratch + "/stand-ins";
}

std::string choiceIn(const std::string& scratch) {
    return scratch + "/choice";
}

std::string askedIn(const std::string& scratch) {
    return scratch + "/asked";
}

// Each writes down what it was called with.
void add(const std::string& scratch, const std::string& name, const std::string& script) {
    const std::string path = folderIn(scratch) + "/" + name;
    tree::write(path, "#!/bin/sh\nprintf '%s\\n' " + name + " \"$@\" 2>/dev/null >'" +
                          askedIn(scratch) + "'\n" + script);
    chmod(path.c_str(), 0755);
}

}  // namespace

void makeStandIns(const std::string& scratch) {
    tree::makeFolder(folderIn(scratch));
    add(scratch, "xattr", "exit 0\n");
    // It does without another program, since many checks call it.
    add(scratch, "zenity",
        "{ read -r choice <'" + choiceIn(scratch) +
            "'; } 2>/dev/null && printf '%s\\n' \"$choice\"\n");
    // Of AppleScript it knows one sentence, and runs what it asks for.
    add(scratch, "osascript",
        "command=${2#'do shell script \"'}\n"
        "eval \"${command%'\" with administrator privileges'}\"\n");
}

void useStandIns(const std::string& scratch) {
    const char* const path = getenv("PATH");
    setenv("PATH", (folderIn(scratch) + ":" + (path ? path : "/usr/bin:/bin")).c_str(), 1);
    tree::write(choiceIn(scratch), std::string(kChosenPath) + "\n");
}

std::string takeAsked(const std::string& scratch) {
    const std::string asked = tree::read(askedIn(scratch));
    unlink(askedIn(scratch).c_str());
    return asked;
}

void chooseNothing(const std::string& scratch) {
    unlink(choiceIn(scratch).c_str());
}
