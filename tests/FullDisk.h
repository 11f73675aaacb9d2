// A full disk for tests of writers: while one lives, no file of this process may grow past a few
// bytes, for every user including root, whom file permissions do not stop.
#pragma once

#include <sys/resource.h>

#include <csignal>

class FullDisk {
public:
    explicit FullDisk(rlim_t room = 8) {
        getrlimit(RLIMIT_FSIZE, &m_saved);
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limited = m_saved;
        limited.rlim_cur = room;
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_saved);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_saved{};
    void (*m_handler)(int) = nullptr;
};
