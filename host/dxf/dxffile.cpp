// POSIX file access for drawings.
#include "host/dxf/dxffile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <string>

#include "files/filestatus.h"
#include "host/dxf/dxftagfile.h"

namespace {

// Enough for the sentinel of a binary file or the first line of an ASCII one.
constexpr std::size_t kHeadSize = 4096;

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

private:
    int m_fd;
};

DxfError systemError(const std::filesystem::path& path, const std::string& what, int error) {
    return DxfError(path.string() + ": " + what + ": " + systemReason(error));
}

// Reads from `offset` until `length` bytes are in or the file ends; -1 (errno set) on an error.
ssize_t readAt(int fd, char* into, std::size_t length, std::size_t offset) {
    std::size_t done = 0;
    while (done < length) {
        const ssize_t n =
            ::pread(fd, into + done, length - done, static_cast<off_t>(offset + done));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return -1;
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
    }
    return static_cast<ssize_t>(done);
}

// The scanner's own message for the first line of a file that cannot be a drawing.
DxfError notADrawing(const std::filesystem::path& path, std::string_view head) {
    DxfResult<DxfTagFile> parsed = DxfTagFile::parse(path.string(), head);
    return DxfError(parsed.isOk() ? path.string() + ": not a drawing" : parsed.errorString());
}

}  // namespace

DxfError dxfNotEnoughMemory(const std::filesystem::path& path, std::uint64_t size) {
    constexpr std::uint64_t kMegabyte = 1000 * 1000;
    return DxfError(path.string() + ": not enough memory to read it (" +
                    std::to_string((size + kMegabyte - 1) / kMegabyte) + " MB)");
}

bool mayBeDrawingFile(const std::filesystem::path& path) {
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.isValid()) return true;
    struct stat info {};
    if (::fstat(fd.get(), &info) != 0 || !S_ISREG(info.st_mode)) return true;
    char head[kHeadSize];
    const ssize_t length = readAt(fd.get(), head, kHeadSize, 0);
    return length < 0 ||
           DxfTagFile::mayBeDxf(std::string_view(head, static_cast<std::size_t>(length)));
}

DxfResult<DxfBytes> readWholeFile(const std::filesystem::path& path, const DxfProgress& progress,
                                  DxfFileAccess access) {
    UniqueFd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!fd.isValid()) return systemError(path, "cannot open the file", errno);
    struct stat info {};
    if (::fstat(fd.get(), &info) != 0) return systemError(path, "cannot read the file", errno);
    if (!S_ISREG(info.st_mode)) return DxfError(path.string() + ": not a regular file");
    const auto size = static_cast<std::size_t>(info.st_size);

    char head[kHeadSize];
    const ssize_t headLength = readAt(fd.get(), head, std::min(size, kHeadSize), 0);
    if (headLength < 0) return systemError(path, "cannot read the file", errno);
    const std::string_view headBytes(head, static_cast<std::size_t>(headLength));
    if (!DxfTagFile::mayBeDxf(headBytes)) return notADrawing(path, headBytes);

    if (access == DxfFileAccess::Map && size > 0) {
        // Populated at once: the kernel fills the pages in large steps, not one fault a page.
        void* mapping = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd.get(), 0);
        if (mapping != MAP_FAILED) {
            ::madvise(mapping, size, MADV_SEQUENTIAL);
            if (progress) progress(size, 4 * std::uint64_t{size});
            return DxfBytes::ofMapping(mapping, size);
        }
        if (errno == ENOMEM) return dxfNotEnoughMemory(path, size);
        // A file system that cannot map files is read as any other.
    }

    std::unique_ptr<char[]> buffer;
    try {
        buffer = std::make_unique_for_overwrite<char[]>(size);
    } catch (const std::bad_alloc&) {
        return dxfNotEnoughMemory(path, size);
    }
    std::size_t done = 0;
    while (done < size) {
        // Pieces of 16 MiB, so that progress can be told between them.
        const std::size_t piece = std::min<std::size_t>(size - done, std::size_t{1} << 24);
        const ssize_t n = readAt(fd.get(), buffer.get() + done, piece, done);
        if (n < 0) return systemError(path, "cannot read the file", errno);
        if (n == 0) break;
        done += static_cast<std::size_t>(n);
        if (progress) progress(done, 4 * std::uint64_t{size});
    }
    return DxfBytes::ofBuffer(std::move(buffer), done);
}
