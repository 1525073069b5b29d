// Whatever bytes as the object list, under a sequence of the exports that read and change it, held
// against texts in memory. The input's first line has a letter for each call, the second one is the
// object to add, the rest is the list.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "exports/vek.h"
#include "fuzz/support.h"

namespace {

constexpr std::size_t kMostCalls = 12;

const char kHub[] = "/Users/Shared/Kelvaro/VekHub";
const char kList[] = "/Users/Shared/Kelvaro/VekHub/Vek_ObjectList.txt";
const char kObject[] = "/Users/Shared/Kelvaro/VekHub/Vek_ObjectPath.txt";

float call(VekExport name, char* text = nullptr, double value = 0, char* out = nullptr) {
    return name(text, value, out, 0, nullptr, 0, nullptr);
}

std::vector<std::string> objectsOf(const std::string& list) {
    std::vector<std::string> objects;
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t end = std::min(list.find_first_of("\r\n", at), list.size());
        std::string line = list.substr(at, end - at);
        at = end + 1;
        line.erase(0, line.find_first_not_of(" \t"));
        line.erase(line.find_last_not_of(" \t") + 1);
        if (!line.empty()) objects.push_back(line.c_str());
    }
    return objects;
}

// The first object, without which `list` then is; false where there is none. One break in front of
// it is passed over, and what follows that belongs to the object whatever it is.
bool takeFirst(std::string& list, std::string& object) {
    const std::string rest =
        !list.empty() && (list[0] == '\n' || list[0] == '\r') ? list.substr(1) : list;
    if (rest.empty()) return false;
    const bool isPassedOver = rest.size() < list.size();
    const std::size_t end = std::min(rest.find_first_of("\r\n", isPassedOver ? 1 : 0), rest.size());
    object = rest.substr(0, end);
    list = rest.substr(std::min(end + 1, rest.size()));
    return true;
}

class Session {
public:
    explicit Session(const std::string& list) : m_list(list) { m_file.write(list); }

    void step(char letter, const std::string& text) {
        std::string copy(text);
        switch (letter) {
            case 'a':
                expect(call(AddVekObject, copy.data()) == 1.0f);
                m_list = text + "\n" + m_list;
                break;
            case 'b':
                expect(call(AddVekObjectToList, copy.data()) == 0.0f);
                m_list += text + "\n";
                break;
            case 'c':
                expect(call(ClearVekObjectList) == 1.0f);
                m_list.clear();
                break;
            case 'x':
                extract();
                break;
            case 'f':
                call(ReleaseVekObjectList);
                m_objects.clear();
                break;
            case 'r':
                m_objects = objectsOf(m_list);
                expect(call(ReadVekObjectList) == static_cast<float>(m_objects.size()));
                break;
            default:
                return;
        }
        expect(copy == text && m_file.read() == m_list);
        compareObjects();
    }

private:
    void extract() {
        std::string object;
        const bool isThere = takeFirst(m_list, object);
        expect(call(ExtractVekObject) == (isThere ? 1.0f : 0.0f));
        if (isThere) expect(FuzzFile(kObject).read() == object);
    }

    void compareObjects() const {
        std::size_t longest = 0;
        for (const std::string& object : m_objects) longest = std::max(longest, object.size());
        std::vector<char> path(longest + 1);
        for (std::size_t i = 0; i <= m_objects.size(); ++i) {
            path[0] = '?';
            expect(call(GetVekObjectPath, nullptr, static_cast<double>(i), path.data()) == 0.0f);
            if (i < m_objects.size()) expect(m_objects[i] == path.data());
            if (i == m_objects.size()) expect(path[0] == '?');
        }
    }

    const FuzzFile m_file{kList};
    std::string m_list;
    std::vector<std::string> m_objects;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int made = mkdir("/Users/Shared/Kelvaro", 0777) + mkdir(kHub, 0777);
    (void)made;
    call(ReleaseVekObjectList);
    FuzzInput input(data, size);
    const std::string letters = input.line().substr(0, kMostCalls);
    const std::string text = std::string(input.line().c_str()).substr(0, 1000);
    Session session(input.rest());
    for (const char letter : letters) session.step(letter, text);
    return 0;
}
