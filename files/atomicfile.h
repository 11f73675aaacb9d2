// A file written whole or not at all: the new content goes to a file that no one sees until it is
// complete, and then takes the target's place in one step.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "files/filestatus.h"
#include "files/interruptcleanup.h"

// The target keeps its permissions; a link is followed and the file it names replaced. The new
// content lives in an unnamed file (O_TMPFILE) until commit(), so that a process killed at any moment
// leaves the old target or the new one and nothing else. Where the file system has no unnamed files,
// a short hidden name in the target's folder stands in, removed on SIGINT, SIGTERM and SIGHUP.
// A target that is a device or a pipe is written to directly.
class AtomicFile final {
public:
    explicit AtomicFile(std::filesystem::path target);
    ~AtomicFile();  // what was not committed is removed
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    [[nodiscard]] FileStatus open();
    // Buffered; the first failure is kept and returned again by every later call.
    [[nodiscard]] FileStatus write(std::string_view bytes);
    // A name under which another library may open the new file to write it (before commit()).
    std::filesystem::path writablePath() const;
    // Makes the new content durable and puts it in the target's place.
    [[nodiscard]] FileStatus commit();

private:
    enum class Mode { Closed, Unnamed, Hidden, Direct };

    FileStatus prepareTarget();
    FileStatus createNew(const std::filesystem::path& folder);
    FileStatus flush();
    FileStatus link();
    FileStatus failure(const std::string& what, int error) const;

    std::filesystem::path m_target;  // as given, for messages
    std::filesystem::path m_file;    // the file replaced: the target with its links followed
    Mode m_mode = Mode::Closed;
    int m_fd = -1;
    bool m_targetExists = false;
    mode_t m_targetMode = 0;
    uid_t m_targetOwner = 0;
    gid_t m_targetGroup = 0;
    std::filesystem::path m_hiddenName;
    std::unique_ptr<InterruptCleanup> m_cleanup;
    std::string m_buffer;
    FileStatus m_error;
};

using FileSink = std::function<void(std::string_view)>;

// The whole content at once, or handed over piece by piece to the sink.
[[nodiscard]] FileStatus replaceFile(const std::filesystem::path& target, std::string_view bytes);
[[nodiscard]] FileStatus replaceFile(const std::filesystem::path& target,
                                     const std::function<void(const FileSink&)>& produce);
