// A progress line on standard error for long work: shown only on a terminal, and only once the work
// has taken more than half a second; erased when the work is done.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

class ProgressLine {
public:
    explicit ProgressLine(std::string label);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void update(std::uint64_t done, std::uint64_t total);

private:
    std::string m_label;
    std::chrono::steady_clock::time_point m_start;
    bool m_terminal;
    int m_shownPercent = -1;
    std::size_t m_width = 0;
};
