// File identity through stat(2), and through the resolved path for names that are not there yet.
#include "files/fileidentity.h"

#include <sys/stat.h>

FileIdentity fileIdentity(const std::filesystem::path& path) {
    FileIdentity identity;
    struct stat info {};
    if (!path.empty() && ::stat(path.c_str(), &info) == 0) {
        identity.exists = true;
        identity.device = info.st_dev;
        identity.inode = info.st_ino;
        return identity;
    }
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(absolute, error);
    identity.path = (error ? absolute : resolved).lexically_normal().string();
    return identity;
}

bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
    return fileIdentity(a) == fileIdentity(b);
}
