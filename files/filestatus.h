// The result of a file operation that has nothing to return but may fail: the message that says
// what went wrong, and the system's error number behind it.
#pragma once

#include <string>
#include <utility>

class [[nodiscard]] FileStatus {
public:
    FileStatus() = default;
    // `message` in the console's shape: "plan.dxf: cannot write: no space left on device".
    static FileStatus failure(std::string message, int systemError = 0) {
        FileStatus status;
        status.m_message = std::move(message);
        status.m_systemError = systemError;
        status.m_failed = true;
        return status;
    }

    bool isOk() const { return !m_failed; }
    const std::string& errorString() const { return m_message; }
    // errno of the call that failed; 0 when the failure has no system error behind it.
    int systemError() const { return m_systemError; }

private:
    std::string m_message;
    int m_systemError = 0;
    bool m_failed = false;
};

// strerror's text with a lowercase first letter, as the console's messages have it.
std::string systemReason(int error);
