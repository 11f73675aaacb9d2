// Error lines of the console front end.
#include "host/console/messages.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

int fail(const std::string& where, const std::string& what) {
    std::fprintf(stderr, "%s: %s\n", where.c_str(), what.c_str());
    return kExitFailure;
}

int usageError(const std::string& what) {
    std::fprintf(stderr, "tarnwick: %s\nTry 'tarnwick --help'.\n", what.c_str());
    return kExitUsage;
}

std::string unreadableReason(const std::string& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return systemReason(errno);
    if (S_ISDIR(info.st_mode)) return systemReason(EISDIR);
    if (::access(path.c_str(), R_OK) != 0) return systemReason(errno);
    return {};
}
