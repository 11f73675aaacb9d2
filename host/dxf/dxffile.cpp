// POSIX file access for drawings.
#include "host/dxf/dxffile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>

namespace {

class UniqueFd {
public:
    explicit UniqueFd(int fd) : m_fd(fd) {}
    ~UniqueFd() {
        if (m_fd >= 0) ::close(m_fd);
    }
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;

    int get() const { return m_fd; }
    bool isValid() const { return m_fd >= 0; }
    // Closes now, so that an error of the last write-back is seen.
    bool close() {
        const int fd = m_fd;
        m_fd = -1;
        return ::close(fd) == 0;
    }

private:
    int m_fd;
};

DxfError systemError(const std::filesystem::path& path, const std::string& what, int error) {
    return DxfError(path.string() + ": " + what + ": " + std::strerror(error));
}

}  // namespace

DxfResult<DxfFileBytes> readWholeFile(const std::filesystem::path& path,
                                      const DxfProgress& progress) {
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.isValid()) return systemError(path, "cannot open the file", errno);
    struct stat info {};
    if (::fstat(fd.get(), &info) != 0) return systemError(path, "cannot read the file", errno);
    if (!S_ISREG(info.st_mode)) return DxfError(path.string() + ": not a regular file");
    const auto size = static_cast<std::size_t>(info.st_size);
    DxfFileBytes bytes{std::make_unique_for_overwrite<char[]>(size + 1), size};
    std::size_t done = 0;
    while (done < size) {
        // Pieces of 16 MiB, so that progress can be told between them.
        const std::size_t piece = std::min<std::size_t>(size - done, std::size_t{1} << 24);
        const ssize_t n = ::read(fd.get(), bytes.data.get() + done, piece);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return systemError(path, "cannot read the file", errno);
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
        if (progress) progress(done, 4 * std::uint64_t{size});
    }
    bytes.size = done;
    return bytes;
}
