#include "cli/RemovedOnSignal.h"

#include <signal.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <mutex>

namespace pemlo::cli {

namespace {

// One slot per file written at once (one per worker thread at most). A file that
// finds every slot taken is written without this protection.
constexpr std::size_t Slots = 256;
std::array<std::atomic<const char*>, Slots> registered{};
static_assert(std::atomic<const char*>::is_always_lock_free, "the handler may only touch lock-free atomics");

constexpr int Stopping[] = {SIGINT, SIGTERM, SIGHUP};

// Async-signal-safe: atomic exchanges, unlink and raise. Each path is taken out of
// its slot, so that its owner, finding the slot empty, leaves the text alone.
extern "C" void RemoveAndStop(int signal)
{
    for (std::atomic<const char*>& slot : registered)
        if (const char* path = slot.exchange(nullptr)) ::unlink(path);
    ::raise(signal);  // the action is the default again (SA_RESETHAND): the program ends by the signal
}

void InstallHandlersOnce()
{
    static std::once_flag once;
    std::call_once(once, [] {
        struct sigaction action {};
        action.sa_handler = RemoveAndStop;
        action.sa_flags = SA_RESETHAND;
        sigemptyset(&action.sa_mask);
        for (const int s : Stopping) sigaddset(&action.sa_mask, s);
        for (const int s : Stopping) {
            struct sigaction old {};
            if (::sigaction(s, nullptr, &old) == 0 && old.sa_handler == SIG_DFL && (old.sa_flags & SA_SIGINFO) == 0)
                ::sigaction(s, &action, nullptr);
        }
    });
}

}  // namespace

RemovedOnSignal::RemovedOnSignal(const std::string& path) : path_(std::make_unique<char[]>(path.size() + 1))
{
    std::memcpy(path_.get(), path.c_str(), path.size() + 1);
    InstallHandlersOnce();
    for (std::atomic<const char*>& slot : registered) {
        const char* empty = nullptr;
        if (slot.compare_exchange_strong(empty, path_.get())) {
            slot_ = &slot;
            return;
        }
    }
}

RemovedOnSignal::~RemovedOnSignal()
{
    // An empty slot means the handler holds the path and the program is ending: the
    // text must stay where the handler reads it.
    if (slot_ && slot_->exchange(nullptr) == nullptr) static_cast<void>(path_.release());
}

}  // namespace pemlo::cli
