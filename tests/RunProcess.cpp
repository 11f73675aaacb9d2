// Running programs from tests, output captured through temporary files.
#include "tests/RunProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/TempFolder.h"

extern char** environ;

namespace {

// Limits need a shell: `sh -c 'LIMITS && exec "$0" "$@"' PROGRAM ARGUMENTS...`.
std::vector<std::string> commandLine(const std::string& program,
                                     const std::vector<std::string>& arguments,
                                     const std::string& limits) {
    std::vector<std::string> all;
    if (!limits.empty()) all = {"/bin/sh", "-c", limits + " && exec \"$0\" \"$@\""};
    all.push_back(program);
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

}  // namespace

struct StartedProcess::Files {
    TempFolder folder;
};

StartedProcess::StartedProcess(const std::string& program,
                               const std::vector<std::string>& arguments, const ProcessSetup& setup)
    : m_files(std::make_unique<Files>()) {
    const std::string outPath = m_files->folder.path("out");
    const std::string errPath = m_files->folder.path("err");

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    int pipeEnds[2] = {-1, -1};
    switch (setup.output) {
        case ProcessSetup::Output::Captured:
            posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath.c_str(),
                                             O_WRONLY | O_CREAT | O_TRUNC, 0600);
            break;
        case ProcessSetup::Output::ClosedPipe:
            // A pipe no one reads: the reading end is closed before the program starts.
            if (pipe(pipeEnds) == 0) {
                close(pipeEnds[0]);
                posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
                posix_spawn_file_actions_addclose(&actions, pipeEnds[1]);
            }
            break;
        case ProcessSetup::Output::File:
            posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, setup.outputFile.c_str(),
                                             O_WRONLY | O_CREAT | O_TRUNC, 0600);
            break;
    }
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errPath.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    std::vector<std::string> all = commandLine(program, arguments, setup.limits);
    std::vector<char*> argv;
    for (auto& argument : all) argv.push_back(argument.data());
    argv.push_back(nullptr);

    // The test runner may ignore SIGPIPE; the program must meet a closed pipe as a user's would.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    if (posix_spawn(&m_pid, all.front().c_str(), &actions, &attributes, argv.data(), environ) !=
        0) {
        m_pid = -1;
        m_startError = "cannot start " + program;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (pipeEnds[1] >= 0) close(pipeEnds[1]);
}

StartedProcess::~StartedProcess() {
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
}

void StartedProcess::signal(int number) const {
    if (m_pid > 0) kill(m_pid, number);
}

ProcessResult StartedProcess::wait() {
    ProcessResult result;
    if (m_pid <= 0) {
        result.err = m_startError;
        return result;
    }
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = -1;
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.termSignal = WTERMSIG(status);
    result.out = m_files->folder.read("out");
    result.err = m_files->folder.read("err");
    return result;
}

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup) {
    return StartedProcess(program, arguments, setup).wait();
}
