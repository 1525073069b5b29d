#include "tests/support/bundle.h"

#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/temp_folder.h"

void makeBundle(const std::string& path, const std::string& version, const std::string& program) {
    makeFolders(path + "/Contents/MacOS");
    const std::string key =
        version.empty() ? "" : "<key>CFBundleVersion</key><string>" + version + "</string>";
    writeFile(path + "/Contents/Info.plist",
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>"
              "<key>CFBundleExecutable</key><string>program</string>" +
                  key + "</dict>\n</plist>\n");
    writeFile(path + "/Contents/MacOS/program", program);
    chmod((path + "/Contents/MacOS/program").c_str(), 0755);
}

std::string lastingScript(const std::string& journal, const std::string& stop) {
    return "#!/bin/sh\necho \"started$(printf ' [%s]' \"$@\")\" >> '" + journal +
           "'\n"
           "i=0\nwhile [ ! -e '" +
           stop +
           "' ] && [ $i -lt 1500 ]; do sleep 0.02; i=$((i + 1)); done\n"
           "echo ended >> '" +
           journal + "'\n";
}

bool waitATick() {
    return usleep(10000) == 0;
}
