#include "hub.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

std::string readText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::string trimmed(const std::string& text) {
    const char* blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string inUpperCase(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

}  // namespace

std::string Hub::selectedApplication() const {
    return trimmed(readText(m_folder + "Vek_Application.txt"));
}

// A line ends at a line feed or at a carriage return.
std::vector<std::string> Hub::objects() const {
    const std::string text = readText(m_folder + "Vek_ObjectList.txt");
    std::vector<std::string> objects;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        const std::string line = trimmed(text.substr(start, end - start));
        if (!line.empty()) objects.push_back(line);
        start = end + 1;
    }
    return objects;
}

std::string Hub::setting(const std::string& application, const std::string& key) const {
    std::ifstream file(m_apps + application + "/" + application + "_Settings.txt");
    for (std::string line; std::getline(file, line);) {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos) continue;
        if (inUpperCase(trimmed(line.substr(0, equals))) == key) {
            return trimmed(line.substr(equals + 1));
        }
    }
    return "";
}

std::string Hub::writeObjects(const std::vector<std::string>& objects) const {
    const std::string path = m_folder + "Vek_ObjectList.txt";
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    for (const std::string& object : objects) file << object << '\n';
    file.close();
    return file ? "" : "The object list cannot be written: " + path;
}
