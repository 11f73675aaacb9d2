// POSIX file access for drawings.
#include "host/dxf/dxffile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
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

// Collects small pieces into large writes.
class BufferedWriter {
public:
    explicit BufferedWriter(int fd) : m_fd(fd) { m_buffer.reserve(kCapacity); }

    void write(std::string_view bytes) {
        if (m_error != 0) return;
        if (m_buffer.size() + bytes.size() > kCapacity) flush();
        if (bytes.size() >= kCapacity) {
            writeAll(bytes);
            return;
        }
        m_buffer += bytes;
    }

    // 0, or the errno of the first failed write.
    int finish() {
        flush();
        return m_error;
    }

private:
    static constexpr std::size_t kCapacity = 1 << 20;

    void flush() {
        writeAll(m_buffer);
        m_buffer.clear();
    }

    void writeAll(std::string_view bytes) {
        while (!bytes.empty() && m_error == 0) {
            const ssize_t n = ::write(m_fd, bytes.data(), bytes.size());
            if (n < 0) {
                if (errno != EINTR) m_error = errno;
                continue;
            }
            bytes.remove_prefix(static_cast<std::size_t>(n));
        }
    }

    int m_fd;
    std::string m_buffer;
    int m_error = 0;
};

// A new file beside the target; the kernel applies the umask to its mode, as for any new file.
DxfResult<std::filesystem::path> createTemporary(const std::filesystem::path& target, int& fd) {
    static std::atomic<unsigned> counter = 0;
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::filesystem::path candidate = target;
        candidate.replace_filename("." + target.filename().string() + ".tmp-" +
                                   std::to_string(::getpid()) + "-" + std::to_string(++counter));
        fd = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0) return candidate;
        if (errno != EEXIST)
            return systemError(target, "cannot create a temporary file beside it", errno);
    }
    return DxfError(target.string() + ": cannot create a temporary file beside it");
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

DxfStatus writeFileAtomically(const std::filesystem::path& path,
                              const std::function<void(const DxfSink&)>& produce) {
    std::error_code ignored;
    const std::filesystem::path target = std::filesystem::is_symlink(path, ignored)
                                             ? std::filesystem::canonical(path, ignored)
                                             : path;
    if (target.empty()) return DxfError(path.string() + ": the link leads nowhere");

    int rawFd = -1;
    DxfResult<std::filesystem::path> temporary = createTemporary(target, rawFd);
    if (!temporary.isOk()) return DxfError(temporary.errorString());
    UniqueFd fd(rawFd);
    const std::filesystem::path temporaryPath = temporary.takeValue();
    auto fail = [&](DxfError error) {
        ::unlink(temporaryPath.c_str());
        return DxfStatus(std::move(error));
    };

    struct stat existing {};
    if (::stat(target.c_str(), &existing) == 0 && ::fchmod(fd.get(), existing.st_mode & 07777) != 0)
        return fail(
            systemError(target, "cannot give the new file the old one's permissions", errno));

    BufferedWriter writer(fd.get());
    produce([&writer](std::string_view bytes) { writer.write(bytes); });
    if (const int error = writer.finish(); error != 0)
        return fail(systemError(target, "cannot write", error));
    if (::fsync(fd.get()) != 0) return fail(systemError(target, "cannot write", errno));
    if (!fd.close()) return fail(systemError(target, "cannot write", errno));
    if (::rename(temporaryPath.c_str(), target.c_str()) != 0)
        return fail(systemError(target, "cannot replace the file", errno));

    UniqueFd folder(::open(target.parent_path().empty() ? "." : target.parent_path().c_str(),
                           O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isValid()) ::fsync(folder.get());
    return {};
}
