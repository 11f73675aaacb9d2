// Removal of registered names from a signal handler: fixed slots, so that the handler neither locks
// nor allocates, and only calls what is safe there (unlink, signal, raise).
#include "files/interruptcleanup.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <climits>
#include <cstring>
#include <mutex>

namespace {

constexpr int kSlots = 32;
constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

struct Slot {
    std::atomic<bool> taken{false};
    std::atomic<bool> armed{false};  // the path is complete and may be removed
    char path[PATH_MAX] = {};
};

std::array<Slot, kSlots> g_slots;

extern "C" void removeAndResignal(int signal) {
    for (Slot& slot : g_slots) {
        if (slot.armed.load(std::memory_order_acquire)) ::unlink(slot.path);
    }
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

void installHandlers() {
    static std::once_flag once;
    std::call_once(once, [] {
        for (const int signal : kSignals) {
            struct sigaction current {};
            if (::sigaction(signal, nullptr, &current) != 0 || current.sa_handler != SIG_DFL) continue;
            struct sigaction action {};
            action.sa_handler = removeAndResignal;
            ::sigemptyset(&action.sa_mask);
            ::sigaction(signal, &action, nullptr);
        }
    });
}

}  // namespace

InterruptCleanup::InterruptCleanup(const std::string& path) {
    if (path.size() >= PATH_MAX) return;
    installHandlers();
    for (int i = 0; i < kSlots; ++i) {
        bool expected = false;
        if (!g_slots[i].taken.compare_exchange_strong(expected, true)) continue;
        std::memcpy(g_slots[i].path, path.c_str(), path.size() + 1);
        g_slots[i].armed.store(true, std::memory_order_release);
        m_slot = i;
        return;
    }
}

InterruptCleanup::~InterruptCleanup() {
    if (m_slot < 0) return;
    g_slots[m_slot].armed.store(false, std::memory_order_release);
    g_slots[m_slot].taken.store(false, std::memory_order_release);
}
