// The drawings opened or saved last, newest first, for the File menu; kept in a small text file
// of their paths, one a line, so that the next start offers them again.
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "files/filestatus.h"

class RecentDrawings final {
public:
    static constexpr std::size_t kKept = 8;

    // Read from `store` when it exists; with no store they live as long as the object.
    explicit RecentDrawings(std::filesystem::path store = {});

    const std::vector<std::filesystem::path>& paths() const { return m_paths; }
    // Puts the drawing first and writes the store (its folder made when missing); the message
    // says why it could not be written.
    [[nodiscard]] FileStatus add(const std::filesystem::path& drawing);

private:
    std::filesystem::path m_store;
    std::vector<std::filesystem::path> m_paths;
};
