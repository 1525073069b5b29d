#include "tests/support/stand_in.h"

#include <sys/stat.h>

#include <cstdlib>

StandIns::StandIns() : m_path(std::getenv("PATH")) {
    setenv("PATH", (m_folder.path() + ":" + m_path).c_str(), 1);
}

StandIns::~StandIns() {
    setenv("PATH", m_path.c_str(), 1);
}

void StandIns::add(const std::string& name, const std::string& script) const {
    writeFile(m_folder / name, "#!/bin/sh\n" + script + "\n");
    chmod((m_folder / name).c_str(), 0755);
}

void StandIns::addOsascript() const {
    add("osascript", "exec '" VEK_SOURCE_DIR "/demo/stand-ins/osascript' \"$@\"");
}
