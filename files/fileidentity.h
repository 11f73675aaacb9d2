// Whether two names stand for one file: the same device and inode where the file exists, the same
// absolute path with its links resolved where it does not yet.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>

struct FileIdentity {
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    std::string path;  // only for a file that does not exist
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

FileIdentity fileIdentity(const std::filesystem::path& path);
bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b);
