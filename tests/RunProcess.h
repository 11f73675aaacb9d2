// Runs a program with arguments and collects its exit status and its two output streams; or starts
// it, so that a test can signal it while it works.
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

struct ProcessResult {
    int exitCode = -1;   // -1 when it did not exit normally
    int termSignal = 0;  // the signal that ended it, if one did
    std::string out;
    std::string err;
};

// Where the program's standard output goes and what it runs under; the default captures it.
struct ProcessSetup {
    enum class Output { Captured, ClosedPipe, File };
    Output output = Output::Captured;
    std::string outputFile;  // for Output::File, e.g. "/dev/full"
    std::string limits;      // shell commands run first, e.g. "ulimit -s 1024"

    static ProcessSetup writingTo(std::string file) { return {Output::File, std::move(file), {}}; }
    static ProcessSetup intoAClosedPipe() { return {Output::ClosedPipe, {}, {}}; }
    static ProcessSetup limitedBy(std::string limits) {
        return {Output::Captured, {}, std::move(limits)};
    }
};

class StartedProcess {
public:
    StartedProcess(const std::string& program, const std::vector<std::string>& arguments,
                   const ProcessSetup& setup = {});
    ~StartedProcess();
    StartedProcess(const StartedProcess&) = delete;
    StartedProcess& operator=(const StartedProcess&) = delete;

    void signal(int number) const;
    ProcessResult wait();

private:
    struct Files;
    std::unique_ptr<Files> m_files;
    pid_t m_pid = -1;
    std::string m_startError;
};

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments,
                         const ProcessSetup& setup = {});
