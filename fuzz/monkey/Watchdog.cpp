#include "fuzz/monkey/Watchdog.h"

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace blockhouse {

Watchdog::Watchdog(Seconds busiest, Seconds longest) : busiest_(busiest), longest_(longest) {
    pthread_getcpuclockid(watched_, &clock_);
    busyAtBeat_ = busySeconds();
    thread_ = std::thread([this] { watch(); });
}

Watchdog::~Watchdog() {
    {
        const std::scoped_lock lock(mutex_);
        end_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

double Watchdog::busySeconds() const {
    timespec time{};
    clock_gettime(clock_, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void Watchdog::beat(const std::string& doing) {
    const std::scoped_lock lock(mutex_);
    const double busy = busySeconds();
    longestGap_ = std::max(longestGap_, busy - busyAtBeat_);
    busyAtBeat_ = busy;
    beat_ = std::chrono::steady_clock::now();
    doing_ = doing;
}

void Watchdog::watch() {
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, std::chrono::milliseconds(50), [this] { return end_; })) {
        const double busy = busySeconds() - busyAtBeat_;
        const Seconds passed = std::chrono::steady_clock::now() - beat_;
        if (busy < busiest_.count() && passed < longest_)
            continue;
        std::fprintf(stderr, "Watchdog: no event served for %.2f s (%.2f s busy) after: %s\n", passed.count(), busy,
                     doing_.c_str());
        // Where the thread is now is what whoever reads this wants to know.
        pthread_kill(watched_, SIGABRT);
        return;
    }
}

} // namespace blockhouse
