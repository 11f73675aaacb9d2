// Keeping the list of recent drawings and its file.
#include "host/desktop/session/recentdrawings.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

#include "files/atomicfile.h"

RecentDrawings::RecentDrawings(std::filesystem::path store) : m_store(std::move(store)) {
    if (m_store.empty()) return;
    std::ifstream file(m_store);
    for (std::string line; std::getline(file, line) && m_paths.size() < kKept;) {
        if (!line.empty()) m_paths.emplace_back(line);
    }
}

FileStatus RecentDrawings::add(const std::filesystem::path& drawing) {
    if (!m_paths.empty() && m_paths.front() == drawing) return {};
    std::erase(m_paths, drawing);
    m_paths.insert(m_paths.begin(), drawing);
    if (m_paths.size() > kKept) m_paths.resize(kKept);
    if (m_store.empty()) return {};
    std::error_code ignored;  // a folder that cannot be made is told by the write
    std::filesystem::create_directories(m_store.parent_path(), ignored);
    std::string text;
    for (const std::filesystem::path& path : m_paths) text += path.string() + '\n';
    return replaceFile(m_store, text);
}
