#include "os/bundle_folder.h"

#include <sys/stat.h>

#include <string>

#include "os/bx_file.h"
#include "os/property_list.h"

namespace {

constexpr std::int64_t kLargestInfo = 16 << 20;

BXString withoutSeparatorsBehind(const BXString& path) {
    int end = path.length();
    while (end > 1 && path[end - 1] == '/') --end;
    return path.subString(0, end);
}

bool readInfo(const BXString& bundle, std::string& info) {
    return BXFile::readWhole((bundle + "/Contents/Info.plist").c_str(), info, kLargestInfo);
}

bool isFile(const BXString& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// Only a name: an executable outside its bundle would be one that the bundle does not bring along.
bool isPlainName(const std::string& name) {
    return !name.empty() && name.find('/') == name.npos && name.find('\0') == name.npos;
}

}  // namespace

BXString bxExecutableOfBundle(const BXString& bundle) {
    const BXString path = withoutSeparatorsBehind(bundle);
    std::string info;
    if (!readInfo(path, info)) return BXString();
    std::string name;
    if (!bxPropertyListText(info.data(), info.size(), "CFBundleExecutable", name)) {
        name = path.getFileName().c_str();
    }
    if (!isPlainName(name)) return BXString();
    const BXString executable = path + "/Contents/MacOS/" + name.c_str();
    return isFile(executable) ? executable : BXString();
}

BXString bxVersionOfBundle(const BXString& path) {
    std::string info;
    std::string version;
    if (!readInfo(path, info)) return BXString();
    bxPropertyListText(info.data(), info.size(), "CFBundleVersion", version);
    return BXString(version.c_str());
}

BXString bxBundleOfExecutable(const BXString& path) {
    const std::string whole = path.c_str();
    const std::string inside = "/Contents/MacOS/";
    const std::size_t at = whole.rfind(inside);
    if (at == whole.npos) return BXString();
    const bool isDeeper = whole.find('/', at + inside.size()) != whole.npos;
    const BXString bundle(whole.substr(0, at).c_str());
    return !isDeeper && bundle.endsWith(".app", true) ? bundle : BXString();
}
