// Temporary folders for file tests.
#include "tests/TempFolder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

TempFolder::TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tarnwick-test-XXXXXX").string();
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    if (mkdtemp(buffer.data()) == nullptr) std::abort();
    m_path = buffer.data();
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::wstring TempFolder::wpath(const std::string& name) const {
    const std::string narrow = path(name);
    return std::wstring(narrow.begin(), narrow.end());
}

void TempFolder::write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
}

std::string TempFolder::read(const std::string& name) const {
    std::ifstream in(path(name), std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

std::vector<std::string> TempFolder::entries(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path(folder)))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
