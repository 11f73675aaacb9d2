// Runs a program with arguments and collects its exit status and its two output streams.
#pragma once

#include <string>
#include <vector>

struct ProcessResult {
    int exitCode = -1;  // -1 when it did not exit normally
    std::string out;
    std::string err;
};

ProcessResult runProcess(const std::string& program, const std::vector<std::string>& arguments);
