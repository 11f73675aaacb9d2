// Names of files that must not outlive the process: removed when SIGINT, SIGTERM or SIGHUP ends it.
#pragma once

#include <string>

// While an object lives, its name is removed by a signal that ends the process, before the signal
// takes its usual course. The handlers are installed for signals whose action is the default one,
// so a program's own handling stays its own. Nothing can be done for SIGKILL.
class InterruptCleanup final {
public:
    explicit InterruptCleanup(const std::string& path);
    ~InterruptCleanup();
    InterruptCleanup(const InterruptCleanup&) = delete;
    InterruptCleanup& operator=(const InterruptCleanup&) = delete;

    // False when every slot was taken: the name is then not removed on a signal.
    bool isGuarded() const { return m_slot >= 0; }

private:
    int m_slot = -1;
};
