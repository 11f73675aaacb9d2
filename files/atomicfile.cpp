// Atomic replacement of files on Linux: O_TMPFILE and linkat where the file system has them.
#include "files/atomicfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <string>

namespace {

constexpr std::size_t kBufferCapacity = std::size_t{1} << 20;
constexpr int kNameAttempts = 100;

std::string descriptorPath(int fd) { return "/proc/self/fd/" + std::to_string(fd); }

bool procfsAvailable() {
    static const bool available = ::access("/proc/self/fd", X_OK) == 0;
    return available;
}

// ".tarnwick-" and six letters or digits: short, so that a target of the longest name the file
// system allows still has a neighbour.
std::filesystem::path hiddenName(const std::filesystem::path& folder) {
    static std::atomic<std::uint64_t> counter{0};
    constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::uint64_t seed = static_cast<std::uint64_t>(
                             std::chrono::steady_clock::now().time_since_epoch().count()) ^
                         (static_cast<std::uint64_t>(::getpid()) << 32) ^ (++counter * 0x9E3779B97F4A7C15ull);
    std::string name = ".tarnwick-";
    for (int i = 0; i < 6; ++i) {
        seed = seed * 6364136223846793005ull + 1442695040888963407ull;
        name += kLetters[(seed >> 33) % (sizeof kLetters - 1)];
    }
    return folder / name;
}

std::filesystem::path folderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

bool writeAll(int fd, std::string_view bytes, int& error) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            error = errno;
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

void syncFolder(const std::filesystem::path& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

}  // namespace

AtomicFile::AtomicFile(std::filesystem::path target) : m_target(std::move(target)) {}

AtomicFile::~AtomicFile() {
    if (m_fd >= 0) ::close(m_fd);
    if (m_mode == Mode::Hidden) ::unlink(m_hiddenName.c_str());
}

FileStatus AtomicFile::failure(const std::string& what, int error) const {
    return FileStatus::failure(m_target.string() + ": " + what + ": " + systemReason(error), error);
}

FileStatus AtomicFile::open() {
    if (m_target.empty()) return FileStatus::failure("cannot write a file without a name", ENOENT);
    if (FileStatus status = prepareTarget(); !status.isOk() || m_mode == Mode::Direct) return status;
    if (FileStatus status = createNew(folderOf(m_file)); !status.isOk()) return status;
    if (m_targetExists && ::fchmod(m_fd, m_targetMode & 07777) != 0)
        return failure("cannot give the new file the old one's permissions", errno);
    // Best effort, as editors do: only the owner's own user and groups can be given back.
    if (m_targetExists) (void)::fchown(m_fd, m_targetOwner, m_targetGroup);
    return {};
}

FileStatus AtomicFile::prepareTarget() {
    struct stat info {};
    if (::stat(m_target.c_str(), &info) != 0) {
        if (errno != ENOENT) return failure("cannot write", errno);
        struct stat link {};
        if (::lstat(m_target.c_str(), &link) == 0 && S_ISLNK(link.st_mode))
            return FileStatus::failure(m_target.string() + ": the link leads nowhere", ENOENT);
        m_file = m_target;
        return {};
    }
    if (S_ISDIR(info.st_mode)) return failure("cannot write", EISDIR);
    if (!S_ISREG(info.st_mode)) {
        // A device or a pipe has no folder to stand in: it takes the bytes as they come.
        m_fd = ::open(m_target.c_str(), O_WRONLY | O_CLOEXEC);
        if (m_fd < 0) return failure("cannot write", errno);
        m_mode = Mode::Direct;
        return {};
    }
    // Replacing would need only the folder's permission; a file its owner made read-only stays as it is.
    if (::access(m_target.c_str(), W_OK) != 0) return failure("cannot write", errno);
    m_targetExists = true;
    m_targetMode = info.st_mode;
    m_targetOwner = info.st_uid;
    m_targetGroup = info.st_gid;
    std::error_code error;
    m_file = std::filesystem::is_symlink(m_target, error) ? std::filesystem::canonical(m_target, error)
                                                          : m_target;
    if (error) return failure("cannot follow the link", error.value());
    return {};
}

FileStatus AtomicFile::createNew(const std::filesystem::path& folder) {
    if (procfsAvailable()) {
        m_fd = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
        if (m_fd >= 0) {
            m_mode = Mode::Unnamed;
            return {};
        }
        if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)
            return failure("cannot create a file in its folder", errno);
    }
    for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
        const std::filesystem::path name = hiddenName(folder);
        auto cleanup = std::make_unique<InterruptCleanup>(name.string());
        m_fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_fd >= 0) {
            m_mode = Mode::Hidden;
            m_hiddenName = name;
            m_cleanup = std::move(cleanup);
            return {};
        }
        if (errno != EEXIST) return failure("cannot create a file in its folder", errno);
    }
    return failure("cannot create a file in its folder", EEXIST);
}

FileStatus AtomicFile::write(std::string_view bytes) {
    if (!m_error.isOk()) return m_error;
    if (m_fd < 0) return m_error = failure("cannot write", EBADF);
    if (m_buffer.size() + bytes.size() > kBufferCapacity) {
        if (FileStatus status = flush(); !status.isOk()) return status;
    }
    if (bytes.size() >= kBufferCapacity) {
        int error = 0;
        if (!writeAll(m_fd, bytes, error)) m_error = failure("cannot write", error);
        return m_error;
    }
    if (m_buffer.capacity() < kBufferCapacity) m_buffer.reserve(kBufferCapacity);
    m_buffer += bytes;
    return {};
}

FileStatus AtomicFile::flush() {
    int error = 0;
    if (!writeAll(m_fd, m_buffer, error)) m_error = failure("cannot write", error);
    m_buffer.clear();
    return m_error;
}

std::filesystem::path AtomicFile::writablePath() const {
    switch (m_mode) {
        case Mode::Unnamed: return descriptorPath(m_fd);
        case Mode::Hidden: return m_hiddenName;
        case Mode::Direct: return m_target;
        case Mode::Closed: return {};
    }
    return {};
}

FileStatus AtomicFile::commit() {
    if (m_fd < 0) return m_error.isOk() ? failure("cannot write", EBADF) : m_error;
    if (FileStatus status = flush(); !status.isOk()) return status;
    if (m_mode == Mode::Direct) {
        const int fd = m_fd;
        m_fd = -1;
        m_mode = Mode::Closed;
        return ::close(fd) == 0 ? FileStatus() : failure("cannot write", errno);
    }
    // Some file systems cannot sync (EINVAL): their data is as safe as they make it anyway.
    if (::fsync(m_fd) != 0 && errno != EINVAL) return failure("cannot write", errno);
    if (FileStatus status = link(); !status.isOk()) return status;
    syncFolder(folderOf(m_file));
    return {};
}

FileStatus AtomicFile::link() {
    if (m_mode == Mode::Unnamed) {
        const std::string source = descriptorPath(m_fd);
        // A new target gets its name in one step; an existing one is replaced through a hidden name,
        // which a signal removes until the rename has taken it.
        if (!m_targetExists) {
            if (::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, m_file.c_str(), AT_SYMLINK_FOLLOW) == 0) {
                ::close(m_fd);
                m_fd = -1;
                m_mode = Mode::Closed;
                return {};
            }
            if (errno != EEXIST) return failure("cannot put the new file in place", errno);
        }
        const std::filesystem::path folder = folderOf(m_file);
        for (int attempt = 0;; ++attempt) {
            if (attempt == kNameAttempts) return failure("cannot put the new file in place", EEXIST);
            m_hiddenName = hiddenName(folder);
            m_cleanup = std::make_unique<InterruptCleanup>(m_hiddenName.string());
            if (::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, m_hiddenName.c_str(), AT_SYMLINK_FOLLOW) == 0)
                break;
            if (errno != EEXIST) return failure("cannot put the new file in place", errno);
        }
        m_mode = Mode::Hidden;
    }
    const int fd = m_fd;
    m_fd = -1;
    if (::close(fd) != 0) return failure("cannot write", errno);
    if (::rename(m_hiddenName.c_str(), m_file.c_str()) != 0) return failure("cannot replace the file", errno);
    m_mode = Mode::Closed;
    m_cleanup.reset();
    return {};
}

FileStatus replaceFile(const std::filesystem::path& target, std::string_view bytes) {
    AtomicFile file(target);
    if (FileStatus status = file.open(); !status.isOk()) return status;
    if (FileStatus status = file.write(bytes); !status.isOk()) return status;
    return file.commit();
}

FileStatus replaceFile(const std::filesystem::path& target,
                       const std::function<void(const FileSink&)>& produce) {
    AtomicFile file(target);
    if (FileStatus status = file.open(); !status.isOk()) return status;
    FileStatus written;
    produce([&](std::string_view bytes) {
        if (written.isOk()) written = file.write(bytes);
    });
    if (!written.isOk()) return written;
    return file.commit();
}
