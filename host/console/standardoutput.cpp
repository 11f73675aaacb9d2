// Checked writes to standard output.
#include "host/console/standardoutput.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <string>

#include "host/console/messages.h"

namespace {

int g_outputError = 0;  // errno of the first failed write

void noteFailure() {
    if (g_outputError == 0) g_outputError = errno != 0 ? errno : EIO;
}

}  // namespace

void writeStandardOutput(std::string_view text) {
    if (g_outputError != 0 || text.empty()) return;
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) noteFailure();
}

void printStandardOutput(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    if (length > 0) {
        std::string text(static_cast<std::size_t>(length) + 1, '\0');
        std::vsnprintf(text.data(), text.size(), format, again);
        text.pop_back();
        writeStandardOutput(text);
    }
    va_end(again);
}

int finishStandardOutput(int status) {
    errno = 0;
    if (g_outputError == 0 && std::fflush(stdout) != 0) noteFailure();
    errno = 0;
    if (std::fclose(stdout) != 0) noteFailure();
    if (g_outputError == 0) return status;
    if (g_outputError == EPIPE) {
        std::signal(SIGPIPE, SIG_DFL);
        std::raise(SIGPIPE);
        return status;
    }
    return fail("standard output", systemReason(g_outputError));
}
