// The console's progress line.
#include "host/console/progressline.h"

#include <unistd.h>

#include <cstdio>

namespace {

constexpr auto kQuietTime = std::chrono::milliseconds(500);

}  // namespace

ProgressLine::ProgressLine(std::string label)
    : m_label(std::move(label)),
      m_start(std::chrono::steady_clock::now()),
      m_terminal(::isatty(STDERR_FILENO) == 1) {}

ProgressLine::~ProgressLine() {
    if (m_width == 0) return;
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(m_width), "");
    std::fflush(stderr);
}

void ProgressLine::update(std::uint64_t done, std::uint64_t total) {
    if (!m_terminal || total == 0) return;
    if (std::chrono::steady_clock::now() - m_start < kQuietTime) return;
    const int percent = static_cast<int>(done >= total ? 100 : done * 100 / total);
    if (percent == m_shownPercent) return;
    m_shownPercent = percent;
    const std::string line = m_label + ": " + std::to_string(percent) + "%";
    std::fprintf(stderr, "\r%s", line.c_str());
    std::fflush(stderr);
    if (line.size() > m_width) m_width = line.size();
}
