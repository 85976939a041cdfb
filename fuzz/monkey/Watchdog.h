// Stops the process when the thread that made it has been busy for too long without a sign of life.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <pthread.h>
#include <string>
#include <thread>

namespace blockhouse {

class Watchdog {
public:
    using Seconds = std::chrono::duration<double>;

    // `busiest` is processor time, so that a machine with much else to do makes no hang; a thread that waits for
    // something that never comes uses none, and may do so for `longest`.
    Watchdog(Seconds busiest, Seconds longest);
    ~Watchdog();

    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    // A sign of life; `doing` is what is told if it was the last one. Only from the watched thread.
    void beat(const std::string& doing);

    // The longest time without one so far.
    [[nodiscard]] Seconds longestGap() const { return Seconds(longestGap_); }

private:
    void watch();
    [[nodiscard]] double busySeconds() const;

    const Seconds busiest_;
    const Seconds longest_;
    clockid_t clock_{};
    const pthread_t watched_ = pthread_self();
    std::mutex mutex_;
    std::condition_variable ended_;
    bool end_ = false;
    double busyAtBeat_ = 0;
    double longestGap_ = 0;
    std::chrono::steady_clock::time_point beat_ = std::chrono::steady_clock::now();
    std::string doing_ = "starting";
    std::thread thread_;
};

} // namespace blockhouse
