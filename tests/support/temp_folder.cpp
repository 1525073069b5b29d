#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

TempFolder::TempFolder() : TempFolder(fs::temp_directory_path().string()) {}

TempFolder::TempFolder(const std::string& parent) {
    std::string name = parent + "/vek-test-XXXXXX";
    if (!mkdtemp(name.data())) {
        ADD_FAILURE() << "cannot make a folder below " << parent;
        return;
    }
    m_path = name;
}

TempFolder::~TempFolder() {
    if (m_path.empty()) return;
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

void writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    ASSERT_TRUE(file) << "cannot write " << path;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << "cannot read " << path;
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

void makeFolders(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    ASSERT_FALSE(error) << "cannot make " << path << ": " << error.message();
}

bool fileIsThere(const std::string& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}
